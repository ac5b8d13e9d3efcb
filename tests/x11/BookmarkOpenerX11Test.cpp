// The opener against real desktop services in a private X session: GIO application
// lookup and launching (fake desktop entries that record how they were started), xterm,
// Thunar over FileManager1, and a stand-in browser whose new window is moved between the
// two monitors.
#include "core/app/QtScheduler.h"
#include "core/bookmarks/AppCandidateStore.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "core/model/SettingsStore.h"
#include "platform/fake/MemoryDefaults.h"
#include "platform/linux/GioWorkspace.h"
#include "platform/linux/LinuxCaptureSource.h"
#include "platform/linux/X11WindowMover.h"
#include "platform/linux/X11WindowProperties.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace deskmark;

namespace {

constexpr int kTimeout = 20000;
const ScreenInfo kRight{"RIGHT", {1280, 0, 1280, 800}, {1280, 0, 1280, 800}};

Bookmark bookmark(Bookmark::Kind kind, const QString& target, std::optional<QString> app = {}) {
    return Bookmark{QUuid::createUuid(), kind, {}, target, std::nullopt, std::move(app)};
}

void write(const QString& path, const QString& text) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
}

QString entry(const QString& name, const QString& exec, const QString& extra) {
    return QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\n%3\n")
        .arg(name, exec, extra);
}

} // namespace

class BookmarkOpenerX11Test : public QObject {
    Q_OBJECT
    QTemporaryDir root_;
    QString log_;
    std::unique_ptr<GioWorkspace> workspace_;
    std::unique_ptr<X11WindowMover> mover_;
    std::unique_ptr<LinuxCaptureSource> capture_;
    QtScheduler scheduler_;
    X11WindowProperties x11_;
    QList<qint64> started_;

    // What the fake applications recorded, one object per start.
    QList<QJsonObject> records() const {
        QFile file(log_);
        QList<QJsonObject> result;
        if (file.open(QIODevice::ReadOnly)) {
            for (const QByteArray& line : file.readAll().split('\n')) {
                if (!line.isEmpty())
                    result << QJsonDocument::fromJson(line).object();
            }
        }
        return result;
    }
    // The newest managed window of one of the classes, waiting for it to appear after `known`.
    std::optional<quint32> newWindow(const QStringList& classes, const QList<quint32>& known) {
        std::optional<quint32> found;
        (void)QTest::qWaitFor(
            [&] {
                for (const quint32 window : x11_.clientList()) {
                    const QStringList names = x11_.windowClass(window);
                    const bool matches =
                        std::any_of(classes.begin(), classes.end(), [&](const QString& name) {
                            return names.contains(name, Qt::CaseInsensitive);
                        });
                    if (!known.contains(window) && matches)
                        found = window;
                }
                return found.has_value();
            },
            kTimeout);
        return found;
    }

    // A web page with this title in the test folder; its file address.
    QString writePage(const QString& file, const QString& title) {
        write(root_.filePath(file),
              "<html><head><title>" + title + "</title></head><body>x</body></html>");
        return QUrl::fromLocalFile(root_.filePath(file)).toString();
    }
    // Makes the window the active one and returns its application as a capture sees it.
    std::optional<RunningApp> activate(quint32 window) {
        QProcess::execute("xdotool", {"windowactivate", "--sync", QString::number(window)});
        std::optional<RunningApp> app;
        (void)QTest::qWaitFor(
            [&] { return (app = BookmarkOpener::frontmostApp()) && app->window == window; },
            kTimeout);
        return app && app->window == window ? app : std::nullopt;
    }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(root_.isValid());
        const QString data = root_.filePath("data"), config = root_.filePath("config");
        const QString apps = data + "/applications";
        QVERIFY(QDir().mkpath(apps) && QDir().mkpath(config));
        log_ = root_.filePath("launches.jsonl");
        qputenv("DESKMARK_FAKE_APP_LOG", log_.toUtf8());
        qputenv("XDG_DATA_HOME", data.toUtf8());
        qputenv("XDG_CONFIG_HOME", config.toUtf8());
        qputenv("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
        qputenv("XDG_CURRENT_DESKTOP", "Deskmark-test");
        // Browsers keep their profile, the session its settings, in this home.
        qputenv("HOME", root_.filePath("home").toUtf8());
        const QString fake = QStringLiteral(FAKE_DESKTOP_APP);
        write(apps + "/fake-editor.desktop", entry("Fake Editor 10", fake + " --editor %F",
                                                   "MimeType=inode/directory;text/plain;"));
        write(apps + "/fake-editor9.desktop",
              entry("fake editor 9", fake + " %F", "MimeType=inode/directory;"));
        write(apps + "/fake-files.desktop",
              entry("Fake Files", fake + " --files %U", "MimeType=inode/directory;"));
        write(apps + "/fake-term.desktop",
              entry("Fake Terminal", fake + " --terminal", "Categories=System;TerminalEmulator;"));
        write(apps + "/chromium.desktop",
              entry("Fake Chromium", fake + " --window %U",
                    "MimeType=x-scheme-handler/https;x-scheme-handler/http;\n"
                    "StartupWMClass=deskmark_fake_desktop_app"));
        write(apps + "/google-chrome.desktop",
              entry("Fake Chrome", fake + " --window --maximized %U",
                    "MimeType=x-scheme-handler/https;\nStartupWMClass=deskmark_fake_desktop_app"));
        write(config + "/mimeapps.list",
              "[Default Applications]\ninode/directory=fake-files.desktop\n"
              "x-scheme-handler/https=chromium.desktop\n");
        write(config + "/xdg-terminals.list", "# the user's terminal\nfake-term.desktop\n");
        QCOMPARE(QProcess::execute("update-desktop-database", {apps}), 0);
        // The bus was started before the X session: services it starts need its display.
        if (!qEnvironmentVariableIsEmpty("DISPLAY"))
            QCOMPARE(QProcess::execute("dbus-update-activation-environment",
                                       {"DISPLAY", "HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"}),
                     0);

        workspace_ = std::make_unique<GioWorkspace>();
        mover_ = std::make_unique<X11WindowMover>();
        capture_ = std::make_unique<LinuxCaptureSource>(*workspace_, true);
        BookmarkOpener::install(*workspace_, *mover_, *capture_, scheduler_);

        // The first capture attempt switches the session's accessibility on, so that the
        // programs started from now on answer on the accessibility bus.
        if (qEnvironmentVariableIsEmpty("DESKMARK_BARE_SESSION_BUS"))
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression("アクセシビリティを有効にしました"));
        QCOMPARE(BookmarkOpener::captureFrontmost(RunningApp{"thunar", "Thunar", 0, 0, false}).kind,
                 CaptureResult::Kind::Failed);
    }
    void cleanupTestCase() {
        // The programs started here outlive their launch; end every window's process.
        for (const quint32 window : x11_.clientList()) {
            if (const std::optional<quint32> pid = x11_.number(window, "_NET_WM_PID"))
                QProcess::execute("kill", {QString::number(*pid)});
        }
    }
    void init() { QFile::remove(log_); }

    // The lists as the settings and the popup see them, and the session's defaults.
    void candidatesAndDefaults() {
        MemoryDefaults defaults;
        SettingsStore settings(defaults, {});
        AppCandidateStore store(*workspace_, settings);
        store.ensureLoaded();
        QStringList folder;
        for (const AppCandidateStore::App& app : store.folderApps())
            folder << app.bundleID;
        QVERIFY2(folder.indexOf("fake-editor9") >= 0 &&
                     folder.indexOf("fake-editor9") < folder.indexOf("fake-editor"),
                 qPrintable(folder.join(' ')));
        QVERIFY(!folder.contains("fake-files"));
        QCOMPARE(store.finder()->bundleID, "fake-files");
        QCOMPARE(store.finder()->name, "File Manager (default)");
        QStringList browsers;
        for (const AppCandidateStore::App& app : store.browserApps())
            browsers << app.name;
        QVERIFY2(browsers.join(',').startsWith("Fake Chrome,Fake Chromium"),
                 qPrintable(browsers.join(',')));
        settings.setFolderAppOrder({"fake-editor"});
        settings.setFolderAppHidden({"fake-editor9"});
        QCOMPARE(store.visibleFolderApps().first().bundleID, "fake-editor");
        QVERIFY(!store.visibleFolderApps().contains(*store.app("fake-editor9")));

        QCOMPARE(workspace_->applicationID(*workspace_->defaultTerminal()), "fake-term");
        QCOMPARE(workspace_->applicationCommand(*workspace_->applicationLocation("fake-editor")),
                 QStringList({FAKE_DESKTOP_APP, "--editor"}));
        QVERIFY(
            BookmarkOpener::installedTerminals().contains(CandidateApp{"XTerm", "debian-xterm"}));
    }

    void terminalAndEditorLaunches() {
        const QString folder = root_.filePath("work folder");
        QVERIFY(QDir().mkpath(folder));
        write(folder + "/notes.txt", "x");
        const Bookmark file = bookmark(Bookmark::Kind::File, folder + "/notes.txt");
        // An uninstalled terminal falls back to the session's default terminal.
        QElapsedTimer clock;
        clock.start();
        QVERIFY(BookmarkOpener::openInTerminal(file, "no-such-terminal"));
        qInfo("terminal handed over in %lld ms", clock.elapsed());
        QTRY_COMPARE_WITH_TIMEOUT(records().size(), 1, kTimeout);
        QCOMPARE(records()[0]["args"].toArray(), QJsonArray({"--terminal"}));
        QCOMPARE(records()[0]["cwd"].toString(), folder);
        QVERIFY(records()[0]["startupID"].toString().startsWith("deskmark-"));

        clock.restart();
        QVERIFY(BookmarkOpener::openInEditor(file, "fake-editor"));
        qInfo("editor handed over in %lld ms", clock.elapsed());
        QTRY_COMPARE_WITH_TIMEOUT(records().size(), 2, kTimeout);
        QCOMPARE(records()[1]["args"].toArray(), QJsonArray({"--editor", folder + "/notes.txt"}));
        QVERIFY(records()[1]["startupID"].toString().startsWith("deskmark-"));
        for (const QJsonObject& record : records())
            QCOMPARE(record["vfs"].toString(), QString()); // Deskmark's own choice stays its own
        QVERIFY(!BookmarkOpener::openInEditor(file, "not-installed"));
    }

    // Runs on a session bus without any FileManager1 service (a separate CTest entry).
    void revealFallsBackToTheFolder() {
        if (qEnvironmentVariableIsEmpty("DESKMARK_BARE_SESSION_BUS"))
            QSKIP("needs a session bus without a file manager");
        const QString file = root_.filePath("shown.txt");
        write(file, "x");
        QVERIFY(BookmarkOpener::open(bookmark(Bookmark::Kind::File, file)));
        QTRY_COMPARE_WITH_TIMEOUT(records().size(), 1, kTimeout);
        QCOMPARE(records()[0]["args"].toArray(), QJsonArray({"--files", root_.path()}));
    }

    // Thunar (installed for the tests) or Nautilus, whichever the bus starts for
    // FileManager1, shows the file's folder and gives it back to a capture.
    void fileManagerRevealsAndIsCaptured() {
        if (!qEnvironmentVariableIsEmpty("DESKMARK_BARE_SESSION_BUS"))
            QSKIP("the bare session bus offers no file manager");
        if (QStandardPaths::findExecutable("thunar").isEmpty() &&
            QStandardPaths::findExecutable("nautilus").isEmpty())
            QSKIP("neither thunar nor nautilus is installed");
        const QString folder = root_.filePath("revealed");
        QVERIFY(QDir().mkpath(folder));
        write(folder + "/item.txt", "x");
        const QList<quint32> before = x11_.clientList();
        QVERIFY(BookmarkOpener::open(bookmark(Bookmark::Kind::File, folder + "/item.txt")));
        const std::optional<quint32> window = newWindow({"thunar", "org.gnome.Nautilus"}, before);
        QVERIFY(window);
        QTRY_VERIFY_WITH_TIMEOUT(x11_.text(*window, "_NET_WM_NAME").contains("revealed"), kTimeout);
        QVERIFY(records().isEmpty()); // no fallback

        // Its location bar gives the folder back to a capture.
        const std::optional<RunningApp> app = activate(*window);
        QVERIFY(app);
        QVERIFY2(app->bundleID == "thunar" || app->bundleID == "org.gnome.Nautilus",
                 qPrintable(app->bundleID));
        QElapsedTimer clock;
        clock.start();
        const CaptureResult captured = BookmarkOpener::captureFrontmost(app);
        qInfo("%s capture: %lld ms", qPrintable(app->bundleID), clock.elapsed());
        QCOMPARE(captured.kind, CaptureResult::Kind::Bookmark);
        QCOMPARE(captured.bookmark->target, folder);
    }

    void xtermAtAFolderIsCaptured() {
        if (QStandardPaths::findExecutable("xterm").isEmpty())
            QSKIP("xterm is not installed");
        const QString folder = root_.filePath("shell here");
        QVERIFY(QDir().mkpath(folder));
        const QList<quint32> before = x11_.clientList();
        QVERIFY(
            BookmarkOpener::openInTerminal(bookmark(Bookmark::Kind::File, folder), "debian-xterm"));
        const std::optional<quint32> window = newWindow({"xterm"}, before);
        QVERIFY(window);
        const std::optional<RunningApp> app = activate(*window);
        QVERIFY(app);
        QCOMPARE(app->bundleID, "debian-xterm");
        QVERIFY(app->isTerminal);
        QElapsedTimer clock;
        clock.start();
        CaptureResult captured;
        QTRY_VERIFY_WITH_TIMEOUT((captured = BookmarkOpener::captureFrontmost(app)).kind ==
                                     CaptureResult::Kind::Bookmark,
                                 kTimeout);
        qInfo("xterm capture: %lld ms (until the shell runs)", clock.elapsed());
        clock.restart();
        captured = BookmarkOpener::captureFrontmost(app);
        qInfo("xterm capture, shell running: %lld ms", clock.elapsed());
        QCOMPARE(captured.bookmark->target, folder);
        QCOMPARE(captured.bookmark->kind, Bookmark::Kind::File);
    }

    // A browser window opened on the left monitor goes to the right one; a maximized one
    // stays maximized there.
    void newBrowserWindowMovesToTheScreen_data() {
        QTest::addColumn<QString>("browser");
        QTest::addColumn<bool>("maximized");
        QTest::newRow("default browser") << "" << false;
        QTest::newRow("maximized") << "google-chrome" << true;
    }
    void newBrowserWindowMovesToTheScreen() {
        QFETCH(QString, browser);
        QFETCH(bool, maximized);
        QProcess::execute("xdotool", {"mousemove", "200", "200"});
        const QList<quint32> before = x11_.clientList();
        const Bookmark page = bookmark(Bookmark::Kind::Url, "https://example.com/a?b=1",
                                       browser.isEmpty() ? std::nullopt : std::optional(browser));
        QElapsedTimer clock;
        clock.start();
        QVERIFY(BookmarkOpener::openURLInNewWindow(page, kRight));
        QTRY_COMPARE_WITH_TIMEOUT(records().size(), 1, kTimeout);
        QCOMPARE(records()[0]["args"].toArray().last().toString(), "https://example.com/a?b=1");
        QVERIFY(records()[0]["args"].toArray().contains("--new-window"));
        const std::optional<quint32> window = newWindow({"deskmark_fake_desktop_app"}, before);
        QVERIFY(window);
        QTRY_VERIFY_WITH_TIMEOUT(x11_.frame(*window)->center().x() > 1280, kTimeout);
        qInfo("new window on the right monitor after %lld ms", clock.elapsed());
        QVERIFY(records()[0]["startupID"].toString().startsWith("deskmark-"));
        if (maximized) {
            QTRY_VERIFY_WITH_TIMEOUT(
                x11_.atomNames(*window, "_NET_WM_STATE").contains("_NET_WM_STATE_MAXIMIZED_VERT"),
                kTimeout);
            QTRY_COMPARE_WITH_TIMEOUT(x11_.frame(*window)->left(), 1280, kTimeout);
        }
    }

    // Runs when firefox-esr is installed: its new window moves to the right monitor, and its
    // tab is captured over the accessibility bus.
    void firefoxCaptureAndMove() {
        if (QStandardPaths::findExecutable("firefox-esr").isEmpty())
            QSKIP("firefox-esr is not installed (apt-get install firefox-esr runs this test)");
        if (!qEnvironmentVariableIsEmpty("DESKMARK_BARE_SESSION_BUS"))
            QSKIP("the bare session bus offers no accessibility bus");
        const QString address = writePage("page.html", "Deskmark Test Page");
        const QList<quint32> before = x11_.clientList();
        QElapsedTimer clock;
        clock.start();
        QVERIFY(BookmarkOpener::openURLInNewWindow(
            bookmark(Bookmark::Kind::Url, address, QStringLiteral("firefox-esr")), kRight));
        const std::optional<quint32> window = newWindow({"firefox-esr"}, before);
        QVERIFY(window);
        qInfo("Firefox window after %lld ms", clock.elapsed());
        QTRY_VERIFY_WITH_TIMEOUT(x11_.frame(*window)->center().x() > 1280, kTimeout);
        qInfo("Firefox window on the right monitor after %lld ms", clock.elapsed());

        const std::optional<RunningApp> app = activate(*window);
        QVERIFY(app);
        QCOMPARE(app->bundleID, "firefox-esr");
        CaptureResult captured;
        QTRY_VERIFY_WITH_TIMEOUT((captured = BookmarkOpener::captureFrontmost(app)).kind ==
                                     CaptureResult::Kind::Bookmark,
                                 kTimeout);
        clock.restart();
        captured = BookmarkOpener::captureFrontmost(app);
        qInfo("Firefox capture: %lld ms", clock.elapsed());
        QCOMPARE(captured.bookmark->target, address);
        QCOMPARE(captured.bookmark->label, "Deskmark Test Page");

        // Running now: the window comes from the first process, found among the new ones.
        QProcess::execute("xdotool", {"windowmove", QString::number(*window), "0", "40"});
        const QList<quint32> running = x11_.clientList();
        clock.restart();
        QVERIFY(BookmarkOpener::openURLInNewWindow(
            bookmark(Bookmark::Kind::Url, address, QStringLiteral("firefox-esr")), kRight));
        const std::optional<quint32> second = newWindow({"firefox-esr"}, running);
        QVERIFY(second);
        QTRY_VERIFY_WITH_TIMEOUT(x11_.frame(*second)->center().x() > 1280, kTimeout);
        qInfo("second Firefox window on the right monitor after %lld ms", clock.elapsed());
        if (!qEnvironmentVariableIsEmpty("DESKMARK_SHOT"))
            QProcess::execute("import", {"-window", "root", qEnvironmentVariable("DESKMARK_SHOT")});
    }

    // Runs when chromium is installed: its tab is captured over the accessibility bus when
    // it runs with accessibility on.
    void chromiumCapture() {
        if (QStandardPaths::findExecutable("chromium").isEmpty())
            QSKIP("chromium is not installed");
        if (!qEnvironmentVariableIsEmpty("DESKMARK_BARE_SESSION_BUS"))
            QSKIP("the bare session bus offers no accessibility bus");
        const QString address = writePage("chromium.html", "Chromium Page");
        const QList<quint32> before = x11_.clientList();
        QProcess browser;
        browser.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        browser.start("chromium",
                      {"--no-sandbox", "--no-first-run", "--force-renderer-accessibility",
                       "--user-data-dir=" + root_.filePath("chromium"), address});
        const std::optional<quint32> window = newWindow({"chromium"}, before);
        QVERIFY(window);
        const std::optional<RunningApp> app = activate(*window);
        QVERIFY(app);
        QCOMPARE(app->bundleID, "chromium");
        CaptureResult captured;
        QTRY_VERIFY_WITH_TIMEOUT((captured = BookmarkOpener::captureFrontmost(app)).kind ==
                                     CaptureResult::Kind::Bookmark,
                                 kTimeout);
        QElapsedTimer clock;
        clock.start();
        captured = BookmarkOpener::captureFrontmost(app);
        qInfo("Chromium capture: %lld ms", clock.elapsed());
        QCOMPARE(captured.bookmark->target, address);
        QCOMPARE(captured.bookmark->label, "Chromium Page");
        browser.terminate();
        browser.waitForFinished();
    }
};

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    BookmarkOpenerX11Test test;
    return QTest::qExec(&test, argc, argv);
}
#include "BookmarkOpenerX11Test.moc"
