// The bookmark popup as a user drives it: the program started in a private X session,
// the popup opened with its hot key and worked with keys alone, against a fake browser
// and a fake terminal that record how they were started.

#include "AgentSession.h"

#include "core/model/ProjectStore.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace deskmark;

namespace {
QString run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

void key(const QString& keys) { run(QStringLiteral("xdotool"), {"key", "--delay", "60", keys}); }

// The visible window with exactly this title, or empty.
QString window(const QString& title) {
    return run(QStringLiteral("xdotool"), {"search", "--onlyvisible", "--name", '^' + title + '$'})
        .section('\n', 0, 0);
}

QRect geometry(const QString& id) {
    const QString shell = run(QStringLiteral("xdotool"), {"getwindowgeometry", "--shell", id});
    const auto value = [&](const char* name) {
        return QRegularExpression(QStringLiteral("%1=(-?\\d+)").arg(name)).match(shell).captured(1).toInt();
    };
    return {value("X"), value("Y"), value("WIDTH"), value("HEIGHT")};
}

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& contents, bool executable = false) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(contents);
    file.close();
    if (executable)
        file.setPermissions(file.permissions() | QFile::ExeOwner);
}
} // namespace

class BookmarkPopupAgentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCOMPARE(QProcess::execute("wmctrl", {"-s", "0"}), 0); }

    void popupWorksFromTheKeyboard() {
        AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
        QTemporaryDir files;
        const QString log = files.filePath("calls.log");
        const QString folder = files.filePath("docs");
        const QString file = files.filePath("docs/readme.txt");
        write(file, "x");

        // A browser and a terminal that only note how they were started.
        const QString apps = QFileInfo(agent.dataFolder()).path() + "/applications/";
        write(files.filePath("browser.sh"), "#!/bin/sh\necho \"browser $*\" >> " + log.toUtf8() + "\n", true);
        write(files.filePath("terminal.sh"), "#!/bin/sh\necho \"terminal $(pwd)\" >> " + log.toUtf8() + "\n", true);
        write(apps + "fakebrowser.desktop",
              "[Desktop Entry]\nType=Application\nName=Fake Browser\nExec=" +
                  files.filePath("browser.sh").toUtf8() +
                  " %u\nMimeType=x-scheme-handler/http;x-scheme-handler/https;\n");
        write(apps + "faketerm.desktop", "[Desktop Entry]\nType=Application\nName=Fake Terminal\nExec=" +
                                             files.filePath("terminal.sh").toUtf8() +
                                             "\nCategories=System;TerminalEmulator;\n");
        write(agent.configFolder() + "/mimeapps.list",
              "[Default Applications]\nx-scheme-handler/https=fakebrowser.desktop\n"
              "x-scheme-handler/http=fakebrowser.desktop\n");
        write(agent.configFolder() + "/Deskmark/settings.json", R"({"terminalBundleID":"faketerm"})");
        {
            ProjectStore store(agent.dataFolder());
            store.set("Work", std::nullopt, "desktop-1");
            const QUuid project = store.projectForSpace("desktop-1")->id;
            const auto add = [&](Bookmark::Kind kind, const QString& target, const QString& group) {
                QVERIFY(store.addBookmark({QUuid::createUuid(), kind, QString(), target,
                                           group.isEmpty() ? std::nullopt : std::optional(group),
                                           std::nullopt},
                                          project));
            };
            add(Bookmark::Kind::File, folder, "Docs");
            add(Bookmark::Kind::Url, "https://example.com/", "");
            add(Bookmark::Kind::File, file, "Docs");
            add(Bookmark::Kind::File, "/nonexistent/missing", "");
        }
        QVERIFY2(agent.start(), agent.standardError().constData());

        // Opened near the pointer, with the keyboard.
        QCOMPARE(QProcess::execute("xdotool", {"mousemove", "200", "150"}), 0);
        key("alt+super+b");
        QTRY_VERIFY_WITH_TIMEOUT(!window("Bookmarks").isEmpty(), 5000);
        const QString popup = window("Bookmarks");
        const QRect placed = geometry(popup);
        QVERIFY2(qAbs(placed.x() - 208) <= 2 && qAbs(placed.y() - 158) <= 2,
                 qPrintable(QStringLiteral("%1,%2").arg(placed.x()).arg(placed.y())));
        QCOMPARE(placed.width(), 720);
        QTRY_COMPARE_WITH_TIMEOUT(run("xdotool", {"getactivewindow"}), popup, 5000);

        // The address is the first row: Enter opens it in the default browser.
        key("Return");
        QTRY_VERIFY_WITH_TIMEOUT(read(log).contains("browser https://example.com/"), 5000);

        // "3" is the folder: it asks which application opens it; Escape leaves the menu.
        const int windows = run("xdotool", {"search", "--onlyvisible", "--pid", QString::number(agent.pid())})
                                .split('\n').size();
        key("3");
        QTRY_VERIFY_WITH_TIMEOUT(run("xdotool", {"search", "--onlyvisible", "--pid", QString::number(agent.pid())})
                                         .split('\n').size() > windows, 5000);
        key("Escape");
        QTest::qWait(300);
        QVERIFY(!window("Bookmarks").isEmpty());

        // Right on the folder starts the terminal there; Left copies its path.
        key("Right");
        QTRY_VERIFY_WITH_TIMEOUT(read(log).contains("terminal " + folder.toUtf8()), 5000);
        key("Left");
        QTRY_COMPARE_WITH_TIMEOUT(QGuiApplication::clipboard()->text(), folder, 5000);

        // Alt+N adds a typed address; the same address again is refused and the form stays.
        key("alt+n");
        QTRY_VERIFY_WITH_TIMEOUT(!window("Add Bookmark").isEmpty(), 5000);
        run("xdotool", {"type", "--delay", "20", "kernel.org"});
        key("Return");
        QTRY_VERIFY_WITH_TIMEOUT(read(agent.dataFolder() + "/projects.json").contains("https://kernel.org"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(window("Add Bookmark").isEmpty(), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(run("xdotool", {"getactivewindow"}), popup, 5000);
        key("alt+n");
        QTRY_VERIFY_WITH_TIMEOUT(!window("Add Bookmark").isEmpty(), 5000);
        run("xdotool", {"type", "--delay", "20", "kernel.org"});
        key("Return");
        QTest::qWait(500);
        QVERIFY(!window("Add Bookmark").isEmpty());
        key("Escape");
        QTRY_VERIFY_WITH_TIMEOUT(window("Add Bookmark").isEmpty(), 5000);

        // Delete asks first, then removes the selected bookmark (the missing path, two up).
        QTRY_COMPARE_WITH_TIMEOUT(run("xdotool", {"getactivewindow"}), popup, 5000);
        key("Up");
        key("Up");
        key("Delete");
        QTRY_VERIFY_WITH_TIMEOUT(!window("Delete Bookmark").isEmpty(), 5000);
        key("Return");
        QTRY_VERIFY_WITH_TIMEOUT(!read(agent.dataFolder() + "/projects.json").contains("/nonexistent/missing"),
                                 5000);

        // Ctrl+Plus grows the popup and keeps the scale for this monitor only.
        QTRY_COMPARE_WITH_TIMEOUT(run("xdotool", {"getactivewindow"}), popup, 5000);
        key("ctrl+plus");
        QTRY_COMPARE_WITH_TIMEOUT(geometry(popup).width(), 864, 5000);
        const QByteArray settings = read(agent.configFolder() + "/Deskmark/settings.json");
        QVERIFY2(QRegularExpression(R"re("bookmarkPopupScaleByDisplay":\s*\{\s*"[0-9A-F-]+":\s*1\.2\s*\})re")
                     .match(QString::fromUtf8(settings)).hasMatch(),
                 settings.constData());

        // The hot key again closes it; so does moving to another desktop.
        key("alt+super+b");
        QTRY_VERIFY_WITH_TIMEOUT(window("Bookmarks").isEmpty(), 5000);
        key("alt+super+b");
        QTRY_VERIFY_WITH_TIMEOUT(!window("Bookmarks").isEmpty(), 5000);
        QCOMPARE(QProcess::execute("wmctrl", {"-s", "1"}), 0);
        QTRY_VERIFY_WITH_TIMEOUT(window("Bookmarks").isEmpty(), 5000);
        QCOMPARE(QProcess::execute("wmctrl", {"-s", "0"}), 0);
        QVERIFY(agent.isRunning());
    }
};

QTEST_MAIN(BookmarkPopupAgentTest)
#include "BookmarkPopupAgentTest.moc"
