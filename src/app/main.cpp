#include "core/app/Language.h"
#include "core/model/AppFolders.h"
#include "platform/linux/SettingsFile.h"

#include <QCoreApplication>
#include <QTextStream>

using namespace deskmark;

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QString settingsPath = AppFolders::configFolder() + QStringLiteral("/settings.json");
    SettingsFile settings(settingsPath);
    Language::setJapanese(Language::computeIsJapanese(
        settings.value(QStringLiteral("appLanguage")).toString(),
        Language::preferredLanguagesFromEnvironment()));

    QTextStream out(stdout);
    out << "Deskmark " << DESKMARK_VERSION << "\n"
        << "data folder: " << AppFolders::dataFolder() << "\n"
        << "settings file: " << settingsPath << "\n";
    return 0;
}
