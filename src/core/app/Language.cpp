#include "core/app/Language.h"

#include <QtGlobal>

namespace deskmark {

namespace {
bool g_japanese = false;
}

bool Language::isJapanese() { return g_japanese; }

void Language::setJapanese(bool japanese) { g_japanese = japanese; }

bool Language::computeIsJapanese(const QString& appLanguage,
                                 const QStringList& preferredLanguages) {
    if (appLanguage == QLatin1String("ja"))
        return true;
    if (appLanguage == QLatin1String("en"))
        return false;
    return !preferredLanguages.isEmpty() &&
           preferredLanguages.first().startsWith(QLatin1String("ja"));
}

QStringList Language::preferredLanguagesFromEnvironment() {
    QStringList result;
    const QString language = qEnvironmentVariable("LANGUAGE");
    for (const QString& entry : language.split(QLatin1Char(':'), Qt::SkipEmptyParts))
        result << entry;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QString value = qEnvironmentVariable(name);
        if (!value.isEmpty())
            result << value;
    }
    return result;
}

QString localized(const char* japanese, const char* english) {
    return QString::fromUtf8(Language::isJapanese() ? japanese : english);
}

} // namespace deskmark
