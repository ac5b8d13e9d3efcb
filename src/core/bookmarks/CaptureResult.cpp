#include "core/bookmarks/CaptureResult.h"

#include "core/app/Language.h"

namespace deskmark {

CaptureResult CaptureResult::ofBookmark(deskmark::Bookmark captured) {
    return {Kind::Bookmark, std::move(captured), {}, {}};
}

CaptureResult CaptureResult::unsupported(const QString& name, const QString& hint) {
    return {Kind::Unsupported, std::nullopt, name, hint};
}

CaptureResult CaptureResult::failed() { return {}; }

QString CaptureResult::bannerText() const {
    switch (kind) {
    case Kind::Bookmark:
        return {};
    case Kind::Unsupported:
        if (Language::isJapanese())
            return appName + QStringLiteral(" からは取り込めません（") +
                   (hint.isEmpty() ? QStringLiteral("Firefox・Chromium 系・ファイルマネージャ・端末に対応")
                                   : hint) +
                   QStringLiteral("）");
        return QStringLiteral("Can't capture from ") + appName + QStringLiteral(" (") +
               (hint.isEmpty()
                    ? QStringLiteral("Firefox, Chromium browsers, file managers, and terminals are supported")
                    : hint) +
               QStringLiteral(")");
    case Kind::Failed:
        break;
    }
    return localized("取り込めませんでした（ウインドウの有無を確認してください）",
                     "Capture failed (check that a window is open)");
}

} // namespace deskmark
