#include "core/spaces/SpaceStore.h"
#include "platform/fake/FakeWindowServer.h"

#include <QTest>
#include <QVariantHash>
#include <QVariantList>
#include <QVariantMap>

using namespace deskmark;

namespace {
const QString kMainUUID = QStringLiteral("0A1B2C3D-0000-4000-8000-00000000AAAA");

QList<CGSDisplay> displaysFor(const QVariant& answer, std::optional<QString> mainUUID = {}) {
    FakeWindowServer server;
    server.setAnswer(answer);
    server.setMainDisplayUUID(std::move(mainUUID));
    return SpaceStore(server).displays();
}
} // namespace

class SpaceStoreTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void unusableAnswerGivesNoDisplays_data() {
        QTest::addColumn<QVariant>("answer");
        QTest::newRow("nothing") << QVariant();
        QTest::newRow("a dictionary") << QVariant(QVariantMap{{"Display Identifier", "A"}});
        QTest::newRow("a list of strings") << QVariant(QStringList{"A", "B"});
        QTest::newRow("one element not a dictionary")
            << QVariant(QVariantList{QVariantMap{}, QStringLiteral("B")});
    }
    void unusableAnswerGivesNoDisplays() {
        QFETCH(QVariant, answer);
        FakeWindowServer server;
        server.setAnswer(answer);
        QVERIFY(SpaceStore(server).displays().isEmpty());
        QVERIFY(SpaceStore(server).liveSpaceUUIDs().isEmpty());
    }

    void mainPlaceholder_data() {
        QTest::addColumn<QStringList>("identifiers");
        QTest::addColumn<std::optional<QString>>("mainUUID");
        QTest::addColumn<QStringList>("displayUUIDs");
        const QString main = kMainUUID;
        const QString lower = kMainUUID.toLower();
        QTest::newRow("MAIN") << QStringList{"MAIN"} << std::optional(main) << QStringList{main};
        QTest::newRow("any letter case, main UUID in lower case")
            << QStringList{"mAiN", "B"} << std::optional(lower) << QStringList{main, "B"};
        QTest::newRow("main UUID already taken")
            << QStringList{"Main", lower} << std::optional(main) << QStringList{"MAIN", main};
        QTest::newRow("main UUID unknown")
            << QStringList{"main"} << std::optional<QString>() << QStringList{"MAIN"};
        QTest::newRow("only the whole word")
            << QStringList{"MAIN2"} << std::optional(main) << QStringList{"MAIN2"};
    }
    void mainPlaceholder() {
        QFETCH(QStringList, identifiers);
        QFETCH(std::optional<QString>, mainUUID);
        QFETCH(QStringList, displayUUIDs);
        QVariantList answer;
        for (const QString& identifier : identifiers)
            answer << QVariantMap{{"Display Identifier", identifier}};
        const QList<CGSDisplay> displays = displaysFor(answer, mainUUID);
        QCOMPARE(displays.size(), identifiers.size());
        for (qsizetype i = 0; i < displays.size(); ++i) {
            QCOMPARE(displays[i].rawDisplayID, identifiers[i].toUpper());
            QCOMPARE(displays[i].displayUUID, displayUUIDs[i]);
        }
    }

    void layoutIsKeptAsGivenWithDisplayIdsUpperCased() {
        FakeWindowServer server;
        server.setLayout({{"b-display", "space-Two", {"space-one", "space-Two"}},
                          {"A-DISPLAY", "", {"fullscreen-X"}}});
        const QList<CGSDisplay> expected{
            {"B-DISPLAY", "B-DISPLAY", {{"space-one", 1}, {"space-Two", 2}}, "space-Two"},
            {"A-DISPLAY", "A-DISPLAY", {{"fullscreen-X", 1}}, std::nullopt}};
        QCOMPARE(SpaceStore(server).displays(), expected);
        QCOMPARE(SpaceStore(server).liveSpaceUUIDs(),
                 (QSet<QString>{"space-one", "space-Two", "fullscreen-X"}));
    }

    void spaceNumber_data() {
        QTest::addColumn<QVariant>("managedID"); // invalid: key missing
        QTest::addColumn<QVariant>("id64");
        QTest::addColumn<qint64>("expected");
        QTest::newRow("int") << QVariant(3) << QVariant() << qint64(3);
        QTest::newRow("uint") << QVariant(4u) << QVariant() << qint64(4);
        QTest::newRow("long long")
            << QVariant(Q_INT64_C(1) << 40) << QVariant() << (qint64(1) << 40);
        QTest::newRow("unsigned long long") << QVariant(Q_UINT64_C(5)) << QVariant() << qint64(5);
        QTest::newRow("managed id wins") << QVariant(2) << QVariant(9) << qint64(2);
        QTest::newRow("id64 fallback") << QVariant() << QVariant(7) << qint64(7);
        QTest::newRow("a string is no integer") << QVariant("3") << QVariant(8) << qint64(8);
        QTest::newRow("neither") << QVariant() << QVariant() << qint64(-1);
        QTest::newRow("doubles") << QVariant(3.0) << QVariant(4.0) << qint64(-1);
        QTest::newRow("beyond the signed range")
            << QVariant(Q_UINT64_C(0xFFFFFFFFFFFFFFFF)) << QVariant() << qint64(-1);
    }
    void spaceNumber() {
        QFETCH(QVariant, managedID);
        QFETCH(QVariant, id64);
        QFETCH(qint64, expected);
        QVariantMap space{{"uuid", "s"}};
        if (managedID.isValid())
            space.insert("ManagedSpaceID", managedID);
        if (id64.isValid())
            space.insert("id64", id64);
        const auto displays =
            displaysFor(QVariantList{QVariantMap{{"Spaces", QVariantList{space}}}});
        QCOMPARE(displays.value(0).spaces, (QList<CGSSpace>{{"s", expected}}));
    }

    void malformedFieldsGivePlaceholders_data() {
        QTest::addColumn<QVariantMap>("entry");
        QTest::addColumn<CGSDisplay>("expected");
        QTest::newRow("empty dictionary") << QVariantMap{} << CGSDisplay{"?", "?", {}, {}};
        QTest::newRow("wrong types")
            << QVariantMap{{"Display Identifier", 12}, {"Spaces", "x"}, {"Current Space", "s"}}
            << CGSDisplay{"?", "?", {}, {}};
        QTest::newRow("one space not a dictionary")
            << QVariantMap{{"Spaces", QVariantList{QVariantMap{{"uuid", "s"}}, 5}}}
            << CGSDisplay{"?", "?", {}, {}};
        QTest::newRow("uuids not strings")
            << QVariantMap{{"Spaces", QVariantList{QVariantMap{{"uuid", 3}}}},
                           {"Current Space", QVariantMap{{"uuid", 1}}}}
            << CGSDisplay{"?", "?", {{"?", -1}}, {}};
        QTest::newRow("hash dictionaries")
            << QVariantMap{{"Current Space", QVariantHash{{"uuid", "s"}}},
                           {"Spaces", QVariantList{QVariantHash{{"uuid", "s"}}}}}
            << CGSDisplay{"?", "?", {{"s", -1}}, QString("s")};
    }
    void malformedFieldsGivePlaceholders() {
        QFETCH(QVariantMap, entry);
        QFETCH(CGSDisplay, expected);
        QCOMPARE(displaysFor(QVariantList{entry}), QList<CGSDisplay>{expected});
    }

    void displayLookupsAreUpperCased() {
        FakeWindowServer server;
        server.setMainDisplayUUID(kMainUUID.toLower());
        server.setScreenUUID("HDMI-1", "abcdef01-0000-4000-8000-000000000001");
        const SpaceStore store(server);
        QCOMPARE(store.mainDisplayUUID(), std::optional(kMainUUID));
        QCOMPARE(store.displayUUID("HDMI-1"),
                 std::optional<QString>("ABCDEF01-0000-4000-8000-000000000001"));
        QCOMPARE(store.displayUUID("DP-2"), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(SpaceStoreTest)
#include "SpaceStoreTest.moc"
