#include "app/AppDelegate.h"
#include "app/ApplicationIdentity.h"
#include "core/app/CommandLine.h"
#include "core/app/DiagnosticsReport.h"
#include "core/app/Language.h"
#include "core/app/QtScheduler.h"
#include "core/model/AppFolders.h"
#include "core/model/StoreFile.h"
#include "core/spaces/DesktopNamer.h"
#include "platform/linux/DBusControlClient.h"
#include "platform/linux/DesktopNotification.h"
#include "platform/linux/InstanceLock.h"
#include "platform/linux/SettingsFile.h"
#include "platform/linux/WindowServerBackend.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QScreen>
#include <QTextStream>

#include <cstdio>

using namespace deskmark;

namespace {

// Prints the displays, their Spaces and the projects they show, then returns. Takes no
// lock and writes nothing, so it is safe beside a running instance.
int diagnose() {
    QtScheduler scheduler;
    WindowServerBackend windowServer(scheduler);
    // The i3 and sway layouts come over their socket; a second is plenty for an answer.
    windowServer.waitForLayout(std::chrono::seconds(1));
    SpaceStore spaces(windowServer.windowServer());
    QHash<QString, QRect> geometries;
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (const auto uuid = spaces.displayUUID(screen->name()))
            geometries.insert(*uuid, screen->geometry());
    }
    ProjectFileCodec::Document projects;
    const StoreFile file(AppFolders::dataFolder() + QStringLiteral("/projects.json"));
    const StoreFile::ReadResult read = file.read();
    if (read.status == StoreFile::ReadStatus::Read)
        projects = ProjectFileCodec::decode(read.data).value_or(ProjectFileCodec::Document{});
    QJsonObject report = DiagnosticsReport::build(spaces.displays(), geometries, projects);
    report.insert(QStringLiteral("backend"), windowServer.name());
    report.insert(QStringLiteral("desktopNames"),
                  QJsonArray::fromStringList(windowServer.namer().desktopNames()));
    QTextStream(stdout) << QJsonDocument(report).toJson(QJsonDocument::Indented);
    return 0;
}

void chooseLanguage() {
    const QJsonValue setting =
        SettingsFile::peek(AppFolders::configFolder() + QStringLiteral("/settings.json"),
                           QStringLiteral("appLanguage"));
    Language::setJapanese(Language::computeIsJapanese(
        setting.toString(), Language::preferredLanguagesFromEnvironment()));
}

void print(std::FILE* stream, const QString& text) {
    const QByteArray bytes = text.toLocal8Bit();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}

// A command for the running agent: one call on the session bus, no windows, no lock.
int sendToAgent(int argc, char* argv[], const CommandLine& command) {
    const QCoreApplication app(argc, argv);
    QString detail;
    const CommandLine::Reply reply = DBusControlClient::send(command, &detail);
    const CommandLine::Report report = command.report(reply, detail);
    print(stderr, report.message);
    return report.exitCode;
}

int runAgent(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Deskmark"));
    QApplication::setApplicationVersion(QStringLiteral(DESKMARK_VERSION));
    ApplicationIdentity::apply(app, Language::isJapanese());
    const QString settingsPath = AppFolders::configFolder() + QStringLiteral("/settings.json");
    const QString dataFolder = AppFolders::dataFolder();
    // Holding the lock, this is the only instance: no one else is writing the stores.
    if (InstanceLock::ensureSingleInstance(dataFolder)) {
        for (const QString& path : {dataFolder + QStringLiteral("/projects.json"),
                                    dataFolder + QStringLiteral("/presets.json"), settingsPath})
            StoreFile::removeStaleTemporaries(path);
    }
    StoreFile::setFailureHandler([](const QString& path, const QString& error) {
        DesktopNotification::show(
            localized("変更を保存できません", "Changes cannot be saved"),
            localized("%1 に保存できません（%2）。変更は Deskmark を終了するまでしか残りません。",
                      "Deskmark cannot save to %1 (%2). Changes last only until Deskmark quits.")
                .arg(path, error));
    });
    QApplication::setQuitOnLastWindowClosed(false);

    AppDelegate delegate;
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &delegate,
                     &AppDelegate::applicationWillTerminate);
    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[]) {
    // The language first: every text below, the command line's included, depends on it.
    chooseLanguage();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const CommandLine command = CommandLine::parse(arguments);
    switch (command.mode()) {
    case CommandLine::Mode::Help:
        print(stdout, CommandLine::helpText());
        return CommandLine::kExitOK;
    case CommandLine::Mode::Version:
        print(stdout, CommandLine::versionText());
        return CommandLine::kExitOK;
    case CommandLine::Mode::Invalid:
        print(stderr, command.usageErrorText());
        return CommandLine::kExitUsage;
    case CommandLine::Mode::Diagnose: {
        const QApplication app(argc, argv);
        return diagnose();
    }
    case CommandLine::Mode::Action:
    case CommandLine::Mode::Switch:
        return sendToAgent(argc, argv, command);
    case CommandLine::Mode::Agent:
        break;
    }
    return runAgent(argc, argv);
}
