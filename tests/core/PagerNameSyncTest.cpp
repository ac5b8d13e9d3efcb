#include "core/app/PagerNameSync.h"
#include "core/LabelStores.h"
#include "core/spaces/DesktopNamer.h"
#include "core/spaces/SpaceStore.h"
#include "platform/fake/FakeWindowServer.h"

#include <QTest>

using namespace deskmark;

namespace {
// The window manager's desktop names, counting the writes.
struct FakeNamer : DesktopNamer {
    QStringList names;
    int writes = 0;
    QStringList desktopNames() const override { return names; }
    bool setDesktopNames(const QStringList& n) override {
        names = n;
        ++writes;
        return true;
    }
};
} // namespace

class PagerNameSyncTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void namesKeepWhatHasNoProject_data() {
        QTest::addColumn<QStringList>("found");
        QTest::addColumn<QStringList>("expected");
        // desktop-1 shows "Mail", desktop-3 "Web"; desktop-2 and desktop-4 have no project.
        QTest::newRow("names found for all") << QStringList{"one", "two", "three", "four"}
                                             << QStringList{"Mail", "two", "Web", "four"};
        QTest::newRow("no names found") << QStringList{} << QStringList{"Mail", "", "Web"};
        QTest::newRow("names for more desktops") << QStringList{"a", "b", "c", "d", "e", "f"}
                                                 << QStringList{"Mail", "b", "Web", "d", "e", "f"};
        QTest::newRow("fewer names than desktops")
            << QStringList{"a"} << QStringList{"Mail", "", "Web"};
    }
    void namesKeepWhatHasNoProject() {
        QFETCH(QStringList, found);
        QFETCH(QStringList, expected);
        LabelStores stores;
        stores.projects.setName("Mail", "desktop-1");
        stores.projects.setName("Web", "desktop-3");
        const Project blank = stores.projects.addProject("", std::nullopt);
        stores.projects.assign(blank.id, "desktop-4");
        QCOMPARE(PagerNameSync::names({"desktop-1", "desktop-2", "desktop-3", "desktop-4"},
                                      stores.projects, found),
                 expected);
    }

    // On: the names found are remembered and project names written, following every
    // project and desktop change without rewriting equal names; a restart keeps the
    // names found; off: they are written back.
    void onFollowsChangesAndOffRestores() {
        LabelStores stores;
        FakeWindowServer server;
        server.setLayout({{"L", "desktop-1", {"desktop-1", "desktop-2"}},
                          {"R", "desktop-1", {"desktop-1", "desktop-2"}}});
        SpaceStore spaces(server);
        FakeNamer namer;
        namer.names = {"Home", "Work"};
        stores.projects.setName("Mail", "desktop-2");

        auto sync = std::make_unique<PagerNameSync>(stores.settings, stores.projects, spaces,
                                                    server, namer);
        QCOMPARE(namer.writes, 0); // off by default
        sync->setEnabled(true);
        QCOMPARE(namer.names, (QStringList{"Home", "Mail"}));
        QCOMPARE(stores.settings.pagerFoundNames(), (QStringList{"Home", "Work"}));
        stores.projects.setName("Chat", "desktop-1");
        QCOMPARE(namer.names, (QStringList{"Chat", "Mail"}));
        const int writes = namer.writes;
        server.setLayout({{"L", "desktop-2", {"desktop-1", "desktop-2", "desktop-3"}}});
        server.switchTo("L", "desktop-2");
        QCOMPARE(namer.writes, writes); // the same names are not written again

        // A restart finds Deskmark's own names in the pager but keeps the first ones.
        sync = std::make_unique<PagerNameSync>(stores.settings, stores.projects, spaces, server,
                                               namer);
        stores.projects.unassign("desktop-1");
        QCOMPARE(namer.names, (QStringList{"Home", "Mail"}));
        sync->setEnabled(false);
        QCOMPARE(namer.names, (QStringList{"Home", "Work"}));
        QVERIFY(!stores.settings.projectNamesInPager());
        stores.projects.setName("Later", "desktop-1");
        QCOMPARE(namer.names, (QStringList{"Home", "Work"}));
    }
};

QTEST_GUILESS_MAIN(PagerNameSyncTest)
#include "PagerNameSyncTest.moc"
