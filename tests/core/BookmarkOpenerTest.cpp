#include "core/StoreTestFiles.h"
#include "core/app/Language.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "platform/fake/FakeScheduler.h"
#include "platform/fake/FakeWorkspace.h"

#include <QDir>

using namespace deskmark;
using namespace deskmark::testfiles;
using namespace std::chrono_literals;

namespace {

Bookmark bookmark(Bookmark::Kind kind, const QString& target, const QString& label = {},
                  std::optional<QString> app = std::nullopt) {
    return Bookmark{QUuid::createUuid(), kind, label, target, std::nullopt, std::move(app)};
}
Bookmark web(const QString& target, std::optional<QString> app = std::nullopt) {
    return bookmark(Bookmark::Kind::Url, target, {}, std::move(app));
}
Bookmark path(const QString& target) { return bookmark(Bookmark::Kind::File, target); }

// "url https://a", "file ~/x", or "none".
QString describe(const std::optional<Bookmark>& b) {
    if (!b)
        return QStringLiteral("none");
    return (b->kind == Bookmark::Kind::Url ? QStringLiteral("url ") : QStringLiteral("file ")) +
           b->target;
}

// LEFT and RIGHT, side by side, each with a 30-pixel panel along its top.
const ScreenInfo kLeft{"LEFT", {0, 0, 1280, 800}, {0, 30, 1280, 770}};
const ScreenInfo kRight{"RIGHT", {1280, 0, 1280, 800}, {1280, 30, 1280, 770}};

} // namespace

class BookmarkOpenerTest : public QObject {
    Q_OBJECT
    TempFolder dir_;
    FakeWorkspace desk_;
    FakeScheduler scheduler_;
    QString chromium_, firefox_, xterm_, code_, nautilus_, other_;

private Q_SLOTS:
    void initTestCase() {
        Language::setJapanese(false);
        chromium_ = desk_.addApplication({"chromium", "Chromium", {"x-scheme-handler/https"},
                                          {"/usr/bin/chromium", "--flag"}, "chromium", {}});
        firefox_ = desk_.addApplication({"firefox-esr", "Firefox ESR", {"x-scheme-handler/https"},
                                         {"/usr/bin/firefox-esr"}, "firefox-esr", {}});
        other_ = desk_.addApplication({"dillo", "Dillo", {"x-scheme-handler/https"},
                                       {"/usr/bin/dillo"}, "dillo", {}});
        xterm_ = desk_.addApplication({"xterm", "XTerm", {}, {"xterm"}, "xterm", {}});
        code_ = desk_.addApplication({"code", "Code", {"inode/directory"}, {"code"}, "code", {}});
        nautilus_ = desk_.addApplication({"org.gnome.Nautilus", "Files", {"inode/directory"},
                                          {"nautilus"}, "org.gnome.Nautilus", {}});
        desk_.setDefault("x-scheme-handler/https", firefox_);
        desk_.setDefaultTerminal(xterm_);
        desk_.failToStart("/usr/bin/missing", "No such file");
        BookmarkOpener::install(desk_, desk_, desk_, scheduler_);
    }
    void init() {
        dir_.reset();
        desk_.calls.clear();
    }

    void typedEntriesAndTexts_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("parsed");
        QTest::addColumn<QString>("label");
        QTest::newRow("blanks") << " \n\t " << "none" << "";
        QTest::newRow("tilde path kept") << " ~/src/a " << "file ~/src/a" << "a";
        QTest::newRow("folder path") << "/usr/share/" << "file /usr/share/" << "share";
        QTest::newRow("file address") << "file:///tmp/x%20y" << "file /tmp/x y" << "x y";
        QTest::newRow("bare host") << "example.com/docs/" << "url https://example.com/docs/"
                                   << "example.com/docs";
        QTest::newRow("single word") << "intranet" << "url https://intranet" << "intranet";
        QTest::newRow("host and port count as a scheme")
            << "localhost:8080" << "url localhost:8080" << "localhost:8080";
        QTest::newRow("no host") << "/" << "file /" << "/";
        QTest::newRow("scheme with digits") << "svn+ssh://h/r" << "url svn+ssh://h/r" << "h/r";
        QTest::newRow("colon first") << ":8080" << "none" << "";
        QTest::newRow("digit first is no scheme") << "9gag.com:443" << "url https://9gag.com:443"
                                                  << "9gag.com";
    }
    void typedEntriesAndTexts() {
        QFETCH(QString, typed);
        QFETCH(QString, parsed);
        QFETCH(QString, label);
        const std::optional<Bookmark> entry = BookmarkOpener::parseManualEntry(typed);
        QCOMPARE(describe(entry), parsed);
        if (entry && !label.isEmpty()) {
            QCOMPARE(BookmarkOpener::displayLabel(*entry), label);
            QVERIFY(entry->label.isEmpty() && !entry->group && !entry->appBundleID);
        }
    }

    void shownTexts() {
        const QString home = QDir::homePath();
        QCOMPARE(BookmarkOpener::displayTarget(path(home + "/notes/a.md")), "~/notes/a.md");
        QCOMPARE(BookmarkOpener::displayTarget(path("~/x")), "~/x");
        QCOMPARE(BookmarkOpener::displayTarget(path("/etc/hosts")), "/etc/hosts");
        QCOMPARE(BookmarkOpener::displayTarget(web("https://a.b/")), "https://a.b/");
        QCOMPARE(BookmarkOpener::displayLabel(web("mailto:x@y")), "mailto:x@y");
        QCOMPARE(BookmarkOpener::displayLabel(web("https://a.b/")), "a.b");
        QCOMPARE(BookmarkOpener::displayLabel(bookmark(Bookmark::Kind::Url, "https://a.b", "Mine")),
                 "Mine");
    }

    void gitBranch_data() {
        QTest::addColumn<QString>("head");
        QTest::addColumn<bool>("linked");
        QTest::addColumn<QString>("branch");
        QTest::newRow("branch") << "ref: refs/heads/feature/x\n" << false << "feature/x";
        QTest::newRow("other reference") << "ref: refs/remotes/o/m" << false << "refs/remotes/o/m";
        QTest::newRow("detached") << "0123456789abcdef0123456789abcdef01234567\n" << false
                                  << "0123456";
        QTest::newRow("six digits") << "abcdef" << false << "none";
        QTest::newRow("not hexadecimal") << "abcdefg1234" << false << "none";
        QTest::newRow("linked work tree") << "ref: refs/heads/wip" << true << "wip";
    }
    void gitBranch() {
        QFETCH(QString, head);
        QFETCH(bool, linked);
        QFETCH(QString, branch);
        QDir root(dir_.path());
        QVERIFY(root.mkpath("repo") && root.mkpath("store/wt"));
        if (linked) {
            writeFile(dir_.path("repo/.git"), "gitdir: ../store/wt\n");
            writeFile(dir_.path("store/wt/HEAD"), head.toUtf8());
        } else {
            QVERIFY(root.mkpath("repo/.git"));
            writeFile(dir_.path("repo/.git/HEAD"), head.toUtf8());
        }
        QCOMPARE(BookmarkOpener::gitBranch(path(dir_.path("repo"))).value_or("none"), branch);
        QCOMPARE(BookmarkOpener::gitBranch(path(dir_.path("store"))), std::nullopt);
    }

    // Every way of opening, against the calls the desktop receives.
    void opening_data() {
        QTest::addColumn<QString>("how");
        QTest::addColumn<Bookmark>("item");
        QTest::addColumn<QString>("app");
        QTest::addColumn<bool>("result");
        QTest::addColumn<QString>("calls");
        const QString file = "FILE", folder = "FOLDER";
        QTest::newRow("address without scheme") << "open" << web("example.com") << "" << false << "";
        QTest::newRow("default browser") << "open" << web("https://a.b/") << "" << true
                                         << "openURL https://a.b/";
        QTest::newRow("chosen browser") << "open" << web("https://a.b/", "chromium") << "" << true
                                        << "open https://a.b/ with /apps/chromium.desktop";
        QTest::newRow("chosen browser not installed")
            << "open" << web("https://a.b/", "opera") << "" << true << "openURL https://a.b/";
        QTest::newRow("file revealed") << "open" << path(file) << "" << true << "reveal FILE";
        QTest::newRow("folder opened") << "open" << path(folder) << "" << true
                                       << "openURL file://FOLDER";
        QTest::newRow("missing path") << "open" << path("FOLDER/gone") << "" << false << "";
        QTest::newRow("terminal at a file's folder")
            << "terminal" << path(file) << "xterm" << true
            << "terminal FOLDER with /apps/xterm.desktop";
        QTest::newRow("terminal not installed: default terminal")
            << "terminal" << path(folder) << "com.apple.Terminal" << true
            << "terminal FOLDER with /apps/xterm.desktop";
        QTest::newRow("editor gets the path itself")
            << "editor" << path(file) << "code" << true << "open file://FILE with /apps/code.desktop";
        QTest::newRow("editor without id") << "editor" << path(file) << "" << false << "";
        QTest::newRow("editor not installed") << "editor" << path(file) << "zed" << false << "";
        QTest::newRow("editor for an address") << "editor" << web("https://a.b") << "code" << false << "";
        QTest::newRow("any application") << "app" << path(folder) << "/apps/org.gnome.Nautilus.desktop"
                                         << true << "open file://FOLDER with /apps/org.gnome.Nautilus.desktop";
        QTest::newRow("Chromium family") << "window" << web("https://a.b/q?x=\"y\"", "chromium")
                                         << "" << true
                                         << "start /usr/bin/chromium --flag --new-window https://a.b/q?x=%22y%22";
        QTest::newRow("Firefox family by default") << "window" << web("https://a.b") << "" << true
                                                   << "start /usr/bin/firefox-esr -new-window https://a.b";
        QTest::newRow("browser outside the tables") << "window" << web("https://a.b", "dillo") << ""
                                                    << true << "openURL https://a.b";
        QTest::newRow("window for a path") << "window" << path(folder) << "" << false << "";
    }
    void opening() {
        QFETCH(QString, how);
        QFETCH(Bookmark, item);
        QFETCH(QString, app);
        QFETCH(bool, result);
        QFETCH(QString, calls);
        QVERIFY(QDir(dir_.path()).mkpath("dir"));
        writeFile(dir_.path("dir/f.txt"), "x");
        auto local = [&](QString text) {
            return text.replace("FILE", dir_.path("dir/f.txt")).replace("FOLDER", dir_.path("dir"));
        };
        item.target = local(item.target);
        bool opened = false;
        if (how == "open")
            opened = BookmarkOpener::open(item);
        else if (how == "terminal")
            opened = BookmarkOpener::openInTerminal(item, app);
        else if (how == "editor")
            opened = BookmarkOpener::openInEditor(item, app);
        else if (how == "app")
            opened = BookmarkOpener::openInApp(item, app);
        else
            opened = BookmarkOpener::openURLInNewWindow(item, std::nullopt);
        QCOMPARE(opened, result);
        QCOMPARE(desk_.calls.join('\n'), local(calls));
    }

    void failedLaunchIsLogged() {
        desk_.addApplication({"opera", "Opera", {}, {"/usr/bin/missing"}, "opera", {}});
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: missing の起動に失敗: No such file");
        QVERIFY(!BookmarkOpener::openURLInNewWindow(web("https://a.b", "opera"), kRight));
        QCOMPARE(scheduler_.pendingCount(), 0);
    }

    // The new window is looked for from 0.2 s, every 0.15 s, until 3 s after the launch when
    // the browser already had a window (12 s when it was starting), and moved once found.
    void newWindowRelocation_data() {
        QTest::addColumn<bool>("running");
        QTest::addColumn<int>("appearsAfter");
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<QString>("move");
        const QRectF onLeft(100, 100, 600, 400), onRight(1500, 100, 600, 400);
        QTest::newRow("found at the first look") << true << 200 << onLeft << "move 9 to 1620,215";
        QTest::newRow("found at the deadline") << true << 2900 << onLeft << "move 9 to 1620,215";
        QTest::newRow("too late") << true << 3200 << onLeft << "";
        QTest::newRow("already on the target") << true << 500 << onRight << "";
        QTest::newRow("starting browser waits longer") << false << 11000 << onLeft
                                                       << "move 9 to 1620,215";
    }
    void newWindowRelocation() {
        QFETCH(bool, running);
        QFETCH(int, appearsAfter);
        QFETCH(QRectF, frame);
        QFETCH(QString, move);
        FakeWorkspace desk;
        const QString browser = desk.addApplication(
            {"google-chrome", "Chrome", {}, {"chrome"}, "Google-chrome", {}});
        desk.setDefault("x-scheme-handler/https", browser);
        if (running)
            desk.addWindow("google-chrome", {4, {}, {10, 10, 300, 300}});
        BookmarkOpener::install(desk, desk, desk, scheduler_);
        QVERIFY(BookmarkOpener::openURLInNewWindow(web("https://a.b"), kRight));
        scheduler_.advance(std::chrono::milliseconds(appearsAfter - 1));
        // An unrelated window and one carrying another launch's id come first.
        desk.addWindow("google-chrome", {7, "other", frame});
        desk.addWindow("google-chrome", {9, "fake-launch-1", frame});
        desk.addWindow("google-chrome", {8, {}, frame});
        desk.calls.clear();
        scheduler_.advance(13s);
        QCOMPARE(desk.calls.join('\n'), move);
        QCOMPARE(scheduler_.pendingCount(), 0);
        BookmarkOpener::install(desk_, desk_, desk_, scheduler_);
    }

    void capture_data() {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("result");
        QTest::newRow("no application") << "" << "" << "failed";
        QTest::newRow("Nautilus folder") << "org.gnome.Nautilus" << "/home/u/src/" << "file /home/u/src";
        QTest::newRow("root folder kept") << "thunar" << "/" << "file /";
        QTest::newRow("file manager finds nothing") << "caja" << "" << "failed";
        QTest::newRow("terminal shell folder") << "xterm" << "/tmp/w" << "file /tmp/w";
        QTest::newRow("Firefox tab") << "firefox-esr" << " https://a.b/c \n|  Title " << "url https://a.b/c Title";
        QTest::newRow("page without scheme") << "firefox-esr" << "a.b|T" << "failed";
        QTest::newRow("Firefox without answer") << "firefox-esr" << "" << "failed";
        QTest::newRow("Chromium tab") << "chromium" << "https://x.y/|X" << "url https://x.y/ X";
        QTest::newRow("Chromium without accessibility")
            << "chromium" << "" << "Can't capture from Browser (start it with --force-renderer-accessibility to capture)";
        QTest::newRow("anything else") << "org.gnome.gedit" << "x" << "Can't capture from Browser (Firefox, Chromium browsers, file managers, and terminals are supported)";
    }
    void capture() {
        QFETCH(QString, id);
        QFETCH(QString, answer);
        QFETCH(QString, result);
        desk_.location = answer.isEmpty() ? std::nullopt : std::optional(answer);
        desk_.page = std::nullopt;
        if (answer.contains('|') || (!answer.isEmpty() && id.contains("fox")))
            desk_.page = CaptureSource::Page{answer.section('|', 0, 0), answer.section('|', 1)};
        const std::optional<RunningApp> app =
            id.isEmpty() ? std::nullopt : std::optional(RunningApp{id, "Browser", 5, 6, false});
        const CaptureResult captured = BookmarkOpener::captureFrontmost(app);
        if (captured.kind == CaptureResult::Kind::Bookmark)
            QCOMPARE((describe(captured.bookmark) + ' ' + captured.bookmark->label).trimmed(), result);
        else if (captured.kind == CaptureResult::Kind::Unsupported)
            QCOMPARE(captured.bannerText(), result);
        else
            QCOMPARE(QStringLiteral("failed"), result);
    }
};

QTEST_GUILESS_MAIN(BookmarkOpenerTest)
#include "BookmarkOpenerTest.moc"
