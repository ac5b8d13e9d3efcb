#include "core/StoreTestFiles.h"
#include "core/model/SettingsStore.h"
#include "platform/fake/MemoryDefaults.h"

#include <QSignalSpy>

#include <memory>

using namespace deskmark;
using namespace deskmark::testfiles;

namespace {
const QString display = QStringLiteral("37D8832A-2D66-02CA-B9F7-8F30A301B230");
const QString other = QStringLiteral("9C1E2B44-0000-4000-8000-00000000000B");

std::unique_ptr<SettingsStore> storeOver(Defaults& defaults) {
    return std::make_unique<SettingsStore>(defaults, SettingsStore::PlatformDefaults{});
}
} // namespace

class CornerOverridesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void switchingOnSeedsFromTheGlobalValue() {
        MemoryDefaults defaults;
        const auto store = storeOver(defaults);
        store->setCornerFontSize(16);
        store->setCornerShapeRaw("square");
        QSignalSpy overrides(store.get(), &SettingsStore::cornerOverridesByDisplayChanged);
        store->setOverride(CornerOverrideItem::FontSize, true, display);
        QCOMPARE(overrides.count(), 1);
        QCOMPARE(store->cornerFontSizeByDisplay().value(display), 16.0);
        store->setCornerFontSize(20); // the display keeps its own size
        QCOMPARE(store->cornerFontSize(display), 16.0);
        QCOMPARE(store->cornerFontSize(other), 20.0);
        QCOMPARE(defaults.value("cornerOverridesByDisplay").toObject(),
                 jsonObject(R"({"37D8832A-2D66-02CA-B9F7-8F30A301B230": ["fontSize"]})"));

        store->setOverride(CornerOverrideItem::Shape, true, display); // enums seed their word
        store->setCornerShapeRaw("capsule");
        QCOMPARE(store->cornerShapeByDisplay().value(display), QStringLiteral("square"));
        QCOMPARE(store->cornerShape(display), CornerShape::Square);
        store->setOverride(CornerOverrideItem::FontSize, true, display); // listed once, in order
        QCOMPARE(store->cornerOverridesByDisplay().value(display),
                 (QStringList{"fontSize", "shape"}));
    }

    void offKeepsTheValueAndOnBringsItBack() {
        MemoryDefaults defaults;
        const auto store = storeOver(defaults);
        store->setOverride(CornerOverrideItem::Margin, true, display);
        store->setCornerMargin(30, display);
        QCOMPARE(store->cornerMargin(display), 30.0);

        store->setOverride(CornerOverrideItem::Margin, false, display);
        QCOMPARE(store->cornerMargin(display), 12.0);
        QVERIFY(!defaults.value("cornerOverridesByDisplay").toObject().contains(display));
        QCOMPARE(store->cornerMarginByDisplay().value(display), 30.0);

        store->setCornerMargin(5, display); // stored, but changes nothing while off
        QCOMPARE(store->cornerMargin(display), 12.0);
        store->setOverride(CornerOverrideItem::Margin, true, display);
        QCOMPARE(store->cornerMargin(display), 5.0);
    }

    void everyItemFollowsItsOwnSettings_data() {
        QTest::addColumn<CornerOverrideItem>("item");
        for (const CornerOverrideItem item : allCases<CornerOverrideItem>())
            QTest::newRow(qPrintable(rawValue(item))) << item;
    }
    // Only the item switched on takes the display's value; every other item stays
    // global, so each item is wired to its own pair of settings.
    void everyItemFollowsItsOwnSettings() {
        QFETCH(CornerOverrideItem, item);
        MemoryDefaults defaults;
        const auto store = storeOver(defaults);
        store->setCornerOverlayEnabled(false, display);
        store->setCornerPosition(CornerPosition::TopLeft, display);
        store->setCornerFontSize(31, display);
        store->setCornerOffsetY(32, display);
        store->setCornerOffsetX(33, display);
        store->setCornerMargin(34, display);
        store->setCornerWeight(CornerWeight::Heavy, display);
        store->setCornerVPadding(CornerVPadding::Normal, display);
        store->setCornerShape(CornerShape::Square, display);
        store->setCornerColorMode(CornerColorMode::DefaultColors, display);
        store->setCornerBgOpacity(0.35, display);
        store->setOverride(item, true, display);

        using I = CornerOverrideItem;
        const auto own = [&](I each) { return each == item; };
        QCOMPARE(store->cornerOverlayEnabled(display), !own(I::Enabled));
        QCOMPARE(store->cornerPosition(display),
                 own(I::Position) ? CornerPosition::TopLeft : CornerPosition::Bottom);
        QCOMPARE(store->cornerFontSize(display), own(I::FontSize) ? 31.0 : 13.0);
        QCOMPARE(store->cornerOffsetY(display), own(I::OffsetY) ? 32.0 : 0.0);
        QCOMPARE(store->cornerOffsetX(display), own(I::OffsetX) ? 33.0 : 0.0);
        QCOMPARE(store->cornerMargin(display), own(I::Margin) ? 34.0 : 12.0);
        QCOMPARE(store->cornerWeight(display),
                 own(I::Weight) ? CornerWeight::Heavy : CornerWeight::Regular);
        QCOMPARE(store->cornerVPadding(display),
                 own(I::VPadding) ? CornerVPadding::Normal : CornerVPadding::Narrow);
        QCOMPARE(store->cornerShape(display),
                 own(I::Shape) ? CornerShape::Square : CornerShape::Capsule);
        QCOMPARE(store->cornerColorMode(display),
                 own(I::ColorMode) ? CornerColorMode::DefaultColors : CornerColorMode::SpaceColors);
        QCOMPARE(store->cornerBgOpacity(display), own(I::BgOpacity) ? 0.35 : 0.8);
    }

    void unknownWordForADisplayGivesTheGlobalValue() {
        MemoryDefaults defaults(jsonObject(R"({
            "cornerWeightRaw": "bold",
            "cornerWeightByDisplay": {"37D8832A-2D66-02CA-B9F7-8F30A301B230": "chunky"},
            "cornerOverridesByDisplay": {"37D8832A-2D66-02CA-B9F7-8F30A301B230": ["weight"]}})"));
        const auto store = storeOver(defaults);
        QVERIFY(store->isOverrideOn(CornerOverrideItem::Weight, display));
        QCOMPARE(store->cornerWeight(display), CornerWeight::Bold); // not the fallback, regular
    }

    void resetClearsEverythingOfOneDisplay() {
        MemoryDefaults defaults;
        const auto store = storeOver(defaults);
        QVERIFY(!store->hasDisplayOverrides(display));
        store->setCornerBgOpacity(0.5, display); // a value alone counts
        QVERIFY(store->hasDisplayOverrides(display));
        store->setOverride(CornerOverrideItem::Position, true, display);
        store->setOverride(CornerOverrideItem::OffsetX, true, other);
        store->setCornerPosition(CornerPosition::Left, display);

        store->resetDisplaySettings(display);
        QVERIFY(!store->hasDisplayOverrides(display));
        QCOMPARE(store->cornerPosition(display), CornerPosition::Bottom);
        QCOMPARE(store->cornerBgOpacity(display), 0.8);
        QVERIFY(!defaults.value("cornerPositionByDisplay").toObject().contains(display));
        QVERIFY(!defaults.value("cornerBgOpacityByDisplay").toObject().contains(display));
        QVERIFY(store->hasDisplayOverrides(other));
    }

    void olderDictionariesBecomeOverrides() {
        MemoryDefaults defaults(jsonObject(R"({
            "cornerPositionByDisplay": {"A": "top"},
            "cornerSizeByDisplay": {"A": 20, "B": 18},
            "cornerMarginByDisplay": {"B": 3},
            "cornerWeightByDisplay": {"C": "bold"}})"));
        const auto store = storeOver(defaults);
        const QJsonObject expected = jsonObject(R"({"A": ["position", "fontSize"],
                                               "B": ["fontSize", "margin"]})");
        QCOMPARE(defaults.value("cornerOverridesByDisplay").toObject(), expected);
        QCOMPARE(store->cornerFontSize(QStringLiteral("B")), 18.0);
        QCOMPARE(store->cornerWeight(QStringLiteral("C")), CornerWeight::Regular); // stays off
    }

    void unreadableOverridesAreRebuiltAndAnEmptyOneIsKept_data() {
        QTest::addColumn<QJsonValue>("stored");
        QTest::addColumn<QStringList>("overridesOfA");
        QTest::newRow("empty dictionary kept") << QJsonValue(QJsonObject()) << QStringList();
        QTest::newRow("entry of the wrong type")
            << QJsonValue(jsonObject(R"({"A": ["margin", 1]})")) << QStringList{"offsetY"};
        QTest::newRow("not a dictionary") << QJsonValue("margin") << QStringList{"offsetY"};
    }
    void unreadableOverridesAreRebuiltAndAnEmptyOneIsKept() {
        QFETCH(QJsonValue, stored);
        QFETCH(QStringList, overridesOfA);
        MemoryDefaults defaults(jsonObject(R"({"cornerOffsetYByDisplay": {"A": 7}})"));
        defaults.setValue("cornerOverridesByDisplay", stored);
        const auto store = storeOver(defaults);
        QCOMPARE(store->cornerOverridesByDisplay().value("A"), overridesOfA);
        QCOMPARE(store->cornerOffsetY(QStringLiteral("A")), overridesOfA.isEmpty() ? 0.0 : 7.0);
    }
};

QTEST_GUILESS_MAIN(CornerOverridesTest)
#include "CornerOverridesTest.moc"
