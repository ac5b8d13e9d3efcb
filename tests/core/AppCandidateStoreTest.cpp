#include "core/app/Language.h"
#include "core/bookmarks/AppCandidateStore.h"
#include "core/model/SettingsStore.h"
#include "platform/fake/FakeWorkspace.h"
#include "platform/fake/MemoryDefaults.h"

#include <QSignalSpy>
#include <QTest>

using namespace deskmark;

namespace {

QString names(const QList<AppCandidateStore::App>& apps) {
    QStringList result;
    for (const AppCandidateStore::App& app : apps)
        result << app.name;
    return result.join(", ");
}

} // namespace

class AppCandidateStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Language::setJapanese(false); }

    // One desktop exercising the list rules: copies of one application (ids differing in
    // case) give one entry, names sort naturally ignoring case, the default file manager
    // stands apart, and the user's order and hidden set shape the folder menu.
    void folderAndBrowserLists() {
        FakeWorkspace desk;
        const QStringList folder{"inode/directory"};
        desk.addApplication({"editor10", "Editor 10", folder, {}, {}, "ed"});
        desk.addApplication({"editor9", "editor 9", folder, {}, {}, {}});
        desk.addApplication({"code", "Code", folder, {}, {}, {}});
        desk.addApplicationCopy("/opt/code.desktop", {"Code", "Code (copy)", folder, {}, {}, {}});
        const QString files = desk.addApplication({"thunar", "Thunar", folder, {}, {}, "thunar"});
        desk.addApplication({"", "No id", folder, {}, {}, {}});
        desk.addApplication({"firefox", "Firefox", {"x-scheme-handler/https"}, {}, {}, {}});
        desk.setDefault("inode/directory", files);

        MemoryDefaults defaults;
        SettingsStore settings(defaults, {});
        AppCandidateStore store(desk, settings);
        QVERIFY(!store.isLoaded());
        store.ensureLoaded();
        QVERIFY(store.isLoaded());
        QCOMPARE(names(store.folderApps()), "Code, editor 9, Editor 10");
        QCOMPARE(names(store.browserApps()), "Firefox");
        QCOMPARE(store.finder()->name, "File Manager (default)");
        QCOMPARE(store.finder()->appURL, files);
        QCOMPARE(store.app("editor10")->iconName, "ed");
        QCOMPARE(store.app("thunar")->bundleID, "thunar");

        settings.setFolderAppOrder({"gone", "editor10", "code"});
        QCOMPARE(names(store.orderedFolderApps()), "Editor 10, Code, editor 9");
        settings.setFolderAppHidden({"code"});
        QCOMPARE(names(store.visibleFolderApps()), "Editor 10, editor 9");
        settings.setFolderAppHidden({"code", "editor9", "editor10"});
        QVERIFY(store.visibleFolderApps().isEmpty());
        QVERIFY(store.finder());
    }

    void refreshRunsInTheBackground() {
        FakeWorkspace desk;
        MemoryDefaults defaults;
        SettingsStore settings(defaults, {});
        AppCandidateStore store(desk, settings);
        QSignalSpy changed(&store, &AppCandidateStore::changed);
        desk.addApplication({"chromium", "Chromium", {"x-scheme-handler/https"}, {}, {}, {}});
        store.refreshInBackground();
        QVERIFY(store.refreshing());
        store.refreshInBackground(); // dropped while one runs
        QVERIFY(changed.wait(5000));
        QCOMPARE(changed.count(), 1);
        QVERIFY(!store.refreshing() && store.isLoaded());
        QCOMPARE(names(store.browserApps()), "Chromium");
        QVERIFY(!store.finder());
    }
};

QTEST_GUILESS_MAIN(AppCandidateStoreTest)
#include "AppCandidateStoreTest.moc"
