#include "core/app/Language.h"
#include "core/model/ProjectStore.h"
#include "core/switcher/NameFilter.h"
#include "core/switcher/SpaceSwitcherController.h"

#include <QTemporaryDir>
#include <QTest>

using namespace deskmark;

namespace {

using Previous = QHash<QString, QString>;

CGSDisplay display(const QString& uuid, const QStringList& spaces, const QString& current) {
    CGSDisplay result{uuid, uuid, {}, current};
    for (const QString& space : spaces)
        result.spaces << CGSSpace{space, -1};
    return result;
}

// Two displays with Spaces of their own: "a2" is "dev-server", "b1" is "Mail".
struct Panel {
    explicit Panel(const QHash<QString, QString>& previous = {},
                   std::optional<QString> active = QStringLiteral("D1"),
                   QList<CGSDisplay> displays = {display("D1", {"a1", "a2", "a3"}, "a3"),
                                                 display("D2", {"b1", "b2"}, "b1")})
        : projects(folder.path()) {
        projects.setName("dev-server", "a2");
        projects.setName("Mail", "b1");
        controller = std::make_unique<SpaceSwitcherController>(
            displays, projects, active, previous, QPointF(100, 100),
            SpaceSwitcherController::Callbacks{
                [this](const QString& space, const QString& shown) {
                    committed = space + "@" + shown;
                },
                [this] { ++cancelled; }});
    }
    QStringList names() const {
        QStringList out;
        for (const auto& tile : controller->visible())
            out << tile.name;
        return out;
    }
    QString selected() const {
        for (const auto& tile : controller->entries()) {
            if (tile.id == controller->selectedID())
                return tile.name;
        }
        return "none";
    }
    bool key(int qtKey, Qt::KeyboardModifiers modifiers = {}, bool composing = false) {
        return controller->handleKey(qtKey, modifiers, composing);
    }

    QTemporaryDir folder;
    ProjectStore projects;
    std::unique_ptr<SpaceSwitcherController> controller;
    QString committed;
    int cancelled = 0;
};

} // namespace

class SwitcherControllerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void tilesNameEveryDisplaysSpacesOnce_data() {
        QTest::addColumn<bool>("japanese");
        QTest::addColumn<bool>("shared");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("numbers restart on every display")
            << false << false
            << QStringList{"Desktop 1", "dev-server", "Desktop 3", "Mail", "Desktop 2"};
        QTest::newRow("Japanese") << true << false
                                  << QStringList{"デスクトップ 1", "dev-server", "デスクトップ 3",
                                                 "Mail", "デスクトップ 2"};
        QTest::newRow("desktops spanning both displays listed once")
            << false << true << QStringList{"Mail", "dev-server", "Desktop 3"};
    }
    void tilesNameEveryDisplaysSpacesOnce() {
        QFETCH(bool, japanese);
        QFETCH(bool, shared);
        QFETCH(QStringList, names);
        Language::setJapanese(japanese);
        const QStringList desktops{"b1", "a2", "a3"};
        Panel panel({}, QStringLiteral("D1"),
                    shared ? QList{display("D1", desktops, "b1"), display("D2", desktops, "b1")}
                           : QList{display("D1", {"a1", "a2", "a3"}, "a3"),
                                   display("D2", {"b1", "b2"}, "b1")});
        Language::setJapanese(false);
        QCOMPARE(panel.names(), names);
    }

    // A switch by project name goes to the first Space of that project in the order the
    // switcher lists Spaces; letter case aside, the whole name must match.
    void switchByProjectNameTakesTheFirstTileInSwitcherOrder() {
        Panel panel;
        const QUuid mail = panel.projects.projectForSpace("b1")->id;
        panel.projects.assign(mail, "a3"); // D1 is listed before D2
        const QList<CGSDisplay> displays{display("D1", {"a1", "a2", "a3"}, "a3"),
                                         display("D2", {"b1", "b2"}, "b1")};
        const auto found = [&](const QString& name) {
            const auto tile =
                SpaceSwitcherController::firstTileOfProject(displays, panel.projects, name);
            return tile ? tile->spaceUUID + "@" + tile->displayUUID : QString("none");
        };
        QCOMPARE(found("mAIL"), QString("a3@D1"));
        QCOMPARE(found("DEV-SERVER"), QString("a2@D1"));
        QCOMPARE(found("dev"), QString("none"));       // no partial names
        QCOMPARE(found("Desktop 1"), QString("none")); // only projects' names
        QCOMPARE(found(""), QString("none"));
        // A project whose Spaces are all gone from the layout is not found.
        QVERIFY(!SpaceSwitcherController::firstTileOfProject({display("D1", {"a1"}, "a1")},
                                                             panel.projects, "Mail"));
    }

    void initialSelection_data() {
        QTest::addColumn<Previous>("previous");
        QTest::addColumn<std::optional<QString>>("active");
        QTest::addColumn<QString>("selected");
        QTest::newRow("the Space one came from")
            << Previous{{"D1", "a2"}, {"D2", "b2"}} << std::optional<QString>("D1")
            << "dev-server";
        QTest::newRow("no previous Space: the current one")
            << Previous{{"D2", "b2"}} << std::optional<QString>("D1")
            << "Desktop 3";
        QTest::newRow("previous Space gone: the current one")
            << Previous{{"D1", "gone"}} << std::optional<QString>("D1")
            << "Desktop 3";
        QTest::newRow("no active display: the first tile")
            << Previous{{"D1", "a2"}} << std::optional<QString>() << "Desktop 1";
        QTest::newRow("unknown active display: the first tile")
            << Previous{} << std::optional<QString>("D9") << "Desktop 1";
    }
    void initialSelection() {
        QFETCH(Previous, previous);
        QFETCH(std::optional<QString>, active);
        QFETCH(QString, selected);
        QCOMPARE(Panel(previous, active).selected(), selected);
        QCOMPARE(Panel({}, {}, {}).selected(), QString("none"));
    }

    void filterMatches_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("query");
        QTest::addColumn<bool>("found");
        QTest::newRow("letter case") << "dev-server" << "DEV" << true;
        QTest::newRow("inside, not only at the start") << "dev-server" << "ver" << true;
        QTest::newRow("full-width letters") << "dev-server" << "ｄｅｖ" << true;
        QTest::newRow("hiragana finds katakana") << "カイギ" << "かいぎ" << true;
        QTest::newRow("half-width katakana") << "カイギ" << "ｶｲｷﾞ" << true;
        QTest::newRow("voicing marks count") << "カイギ" << "かいき" << false;
        QTest::newRow("accents count") << "café" << "cafe" << false;
        QTest::newRow("not there") << "dev-server" << "mail" << false;
        QTest::newRow("empty query") << "Mail" << "" << true;
    }
    void filterMatches() {
        QFETCH(QString, name);
        QFETCH(QString, query);
        QFETCH(bool, found);
        QCOMPARE(NameFilter("en_US").contains(name, query), found);
        QCOMPARE(NameFilter("ja_JP").contains(name, query), found);
    }

    // One walk through the keys, as a user types, moves and closes.
    void keys() {
        Panel panel;
        QCOMPARE(panel.selected(), QString("Desktop 3"));
        QVERIFY(panel.key(Qt::Key_Down));
        QCOMPARE(panel.selected(), QString("Mail"));
        QVERIFY(panel.key(Qt::Key_Tab));
        QVERIFY(panel.key(Qt::Key_Tab)); // past the last tile: the first
        QCOMPARE(panel.selected(), QString("Desktop 1"));
        QVERIFY(panel.key(Qt::Key_Backtab)); // Shift+Tab on the first: the last
        QCOMPARE(panel.selected(), QString("Desktop 2"));
        QVERIFY(panel.key(Qt::Key_Tab, Qt::ShiftModifier));
        QVERIFY(panel.key(Qt::Key_Up));
        QCOMPARE(panel.selected(), QString("Desktop 3"));
        QVERIFY(!panel.key(Qt::Key_A)); // typing reaches the field
        QVERIFY(!panel.key(Qt::Key_Return, {}, true)); // the input method is composing

        panel.controller->setQuery("DEV"); // the selection moves onto what is shown
        QCOMPARE(panel.names(), QStringList{"dev-server"});
        QCOMPARE(panel.selected(), QString("dev-server"));
        panel.controller->setQuery("zzz");
        QVERIFY(panel.names().isEmpty());
        QVERIFY(panel.key(Qt::Key_Tab)); // nothing to move to
        QVERIFY(panel.key(Qt::Key_Return)); // nothing to commit
        QVERIFY(panel.committed.isEmpty());
        QVERIFY(panel.key(Qt::Key_Escape)); // clears the filter, stays open
        QCOMPARE(panel.controller->query(), QString());
        QCOMPARE(panel.cancelled, 0);
        QVERIFY(panel.key(Qt::Key_Escape));
        QCOMPARE(panel.cancelled, 1);
        QVERIFY(!panel.key(Qt::Key_Return)); // finished: nothing more happens
        panel.controller->windowDidResignKey();
        QCOMPARE(panel.cancelled, 1);
        QVERIFY(panel.committed.isEmpty());
    }

    void commitPassesSpaceAndDisplay() {
        Panel panel;
        panel.controller->setQuery("ail");
        QVERIFY(panel.key(Qt::Key_Enter));
        QCOMPARE(panel.committed, QString("b1@D2"));
        panel.controller->windowDidResignKey(); // the closing panel loses focus
        QCOMPARE(panel.cancelled, 0);
    }

    void focusLossCancels() {
        Panel panel;
        panel.controller->windowDidResignKey();
        QCOMPARE(panel.cancelled, 1);
    }

    void pointerMustMoveBeforeHoverSelects() {
        Panel panel;
        const QString mail = panel.controller->entries()[3].id;
        panel.controller->hovered(mail, QPointF(102, 98)); // resting pointer, jitter
        QCOMPARE(panel.selected(), QString("Desktop 3"));
        panel.controller->hovered(mail, QPointF(100, 102.5));
        QCOMPARE(panel.selected(), QString("Mail"));
        panel.controller->choose(panel.controller->entries()[0].id);
        QCOMPARE(panel.committed, QString("a1@D1"));
    }
};

QTEST_GUILESS_MAIN(SwitcherControllerTest)
#include "SwitcherControllerTest.moc"
