#include "core/switcher/NameFilter.h"

#include <QLocale>

#include <unicode/ucol.h>
#include <unicode/usearch.h>

namespace deskmark {

namespace {
const UChar* utf16(const QString& text) { return reinterpret_cast<const UChar*>(text.utf16()); }
} // namespace

struct NameFilter::Collator {
    UCollator* handle = nullptr;
    ~Collator() {
        if (handle)
            ucol_close(handle);
    }
};

NameFilter::NameFilter(const QString& localeName) : collator_(std::make_unique<Collator>()) {
    const QByteArray locale =
        (localeName.isEmpty() ? QLocale::system().name() : localeName).toLatin1();
    UErrorCode status = U_ZERO_ERROR;
    collator_->handle = ucol_open(locale.constData(), &status);
    if (U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        collator_->handle = ucol_open("", &status);
    }
    if (!collator_->handle)
        return;
    // Secondary strength: base letters and their accents count; case, width and the
    // kana syllabary are tertiary differences and are ignored.
    ucol_setStrength(collator_->handle, UCOL_SECONDARY);
    ucol_setAttribute(collator_->handle, UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
}

NameFilter::~NameFilter() = default;

bool NameFilter::contains(const QString& name, const QString& query) const {
    if (query.isEmpty())
        return true;
    if (name.isEmpty())
        return false;
    if (!collator_->handle)
        return name.contains(query, Qt::CaseInsensitive);
    UErrorCode status = U_ZERO_ERROR;
    UStringSearch* search = usearch_openFromCollator(utf16(query), int32_t(query.size()),
                                                     utf16(name), int32_t(name.size()),
                                                     collator_->handle, nullptr, &status);
    if (U_FAILURE(status)) {
        if (search)
            usearch_close(search);
        return name.contains(query, Qt::CaseInsensitive);
    }
    const bool found = usearch_first(search, &status) != USEARCH_DONE && U_SUCCESS(status);
    usearch_close(search);
    return found;
}

} // namespace deskmark
