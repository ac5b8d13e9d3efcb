#pragma once

#include <QString>
#include <QStringList>

namespace deskmark {

// The process-wide interface language. It is decided once at start, before any
// text is built, and never changes while the process runs.
class Language {
public:
    static bool isJapanese();
    static void setJapanese(bool japanese);

    // "ja" and "en" decide directly; anything else ("auto", empty, unknown) follows the
    // first preferred language: Japanese when it begins with "ja", English otherwise.
    static bool computeIsJapanese(const QString& appLanguage,
                                  const QStringList& preferredLanguages);

    // The user's preferred languages as the environment states them: every entry of
    // LANGUAGE (colon separated), then LC_ALL, LC_MESSAGES and LANG, skipping empty ones.
    static QStringList preferredLanguagesFromEnvironment();
};

// Picks the Japanese or the English text by the process-wide language.
QString localized(const char* japanese, const char* english);

} // namespace deskmark
