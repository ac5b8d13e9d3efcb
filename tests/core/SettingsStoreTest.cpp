#include "core/model/SettingsStore.h"
#include "core/StoreTestFiles.h"
#include "core/app/Language.h"
#include "core/model/AppFolders.h"
#include "platform/fake/MemoryDefaults.h"
#include "platform/linux/SettingsFile.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <cstring>
#include <map>
#include <memory>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace deskmark;
using namespace deskmark::testfiles;

namespace {
SettingsStore::PlatformDefaults linuxDefaults() {
    return {QStringLiteral("org.gnome.Terminal"),
            [] { return QStringLiteral("org.gnome.TextEditor"); }, false};
}

std::unique_ptr<SettingsStore> storeOver(Defaults& defaults) {
    return std::make_unique<SettingsStore>(defaults, linuxDefaults());
}

// A file that is there but cannot be read, whoever runs the test (root reads every
// ordinary file): a Unix socket, which no one can open.
bool makeSocketFile(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address{};
    if (name.size() >= qsizetype(sizeof address.sun_path))
        return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    if (socket < 0)
        return false;
    const bool bound =
        ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socket);
    return bound;
}

QString hotKeyText(quint32 keyCode, quint32 modifiers) {
    return QString::fromUtf8(HotKey{keyCode, modifiers}.toJson());
}
} // namespace

class SettingsStoreTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // Nothing stored, values of the wrong type and unknown words all give the
    // defaults, each key falling back on its own.
    void defaultsAndFallbacks_data() {
        QTest::addColumn<QJsonObject>("stored");
        QTest::newRow("nothing stored") << QJsonObject();
        QTest::newRow("wrong types") << jsonObject(R"({
            "showCurrentSpaceInMenuBar": "no", "cornerFontSize": "20", "cornerMargin": true,
            "cornerPositionRaw": 3, "editorBundleID": 7, "folderAppOrder": ["a", 1],
            "bookmarkHintVisible": 0})");
        QTest::newRow("unknown words") << jsonObject(R"({
            "cornerColorModeRaw": "plaid", "cornerShapeRaw": "plaid", "cornerWeightRaw": "plaid",
            "cornerPositionRaw": "plaid", "cornerVPaddingRaw": "plaid",
            "mcLabelWeightRaw": "plaid", "mcLabelVPositionRaw": "plaid",
            "appLanguage": "fr", "appAppearance": "sepia"})");
        QTest::newRow("numbers that are not finite") << QJsonObject{{"cornerFontSize", qInf()},
                                                                    {"cornerMargin", -qInf()},
                                                                    {"cornerBgOpacity", qInf()},
                                                                    {"mcLabelFontSize", -qInf()}};
    }
    void defaultsAndFallbacks() {
        QFETCH(QJsonObject, stored);
        MemoryDefaults defaults(stored);
        const auto store = storeOver(defaults);
        QVERIFY(store->showCurrentSpaceInMenuBar() && store->cornerOverlayEnabled());
        QVERIFY(store->bookmarkHintVisible() && !store->mcLabelSingleLine());
        QCOMPARE(store->cornerPosition(), CornerPosition::Bottom); // bottom centre, not a corner
        QCOMPARE(store->cornerFontSize(), 13.0);
        QCOMPARE(store->cornerMargin(), 12.0);
        QCOMPARE(store->cornerBgOpacity(), 0.8);
        QCOMPARE(store->mcLabelFontSize(), 14.0);
        QCOMPARE(store->cornerColorMode(), CornerColorMode::SpaceColors);
        QCOMPARE(store->cornerShape(), CornerShape::Capsule);
        QCOMPARE(store->cornerWeight(), CornerWeight::Regular);
        QCOMPARE(store->cornerVPadding(), CornerVPadding::Narrow);
        QCOMPARE(store->mcLabelWeight(), CornerWeight::Medium);
        QCOMPARE(store->mcLabelVPosition(), MCLabelVPosition::Bottom);
        QCOMPARE(store->appLanguage(), AppLanguage::Auto);
        QCOMPARE(store->appearance(), AppAppearance::Auto);
        QVERIFY(store->folderAppOrder().isEmpty());
        QCOMPARE(store->terminalBundleID(), QStringLiteral("org.gnome.Terminal"));
        QCOMPARE(store->editorBundleID(), QStringLiteral("org.gnome.TextEditor"));
        QCOMPARE(store->nameHotKey(), std::nullopt);
        QCOMPARE(store->bookmarkHotKey(), (HotKey{11, 0x900}));
        QCOMPARE(store->switcherHotKey(), (HotKey{48, 0x900}));
        // A raw word is kept as stored; a raw value of the wrong type reads as the default.
        QCOMPARE(store->cornerColorModeRaw(),
                 stored.value("cornerColorModeRaw").toString("spaceColors"));
        QCOMPARE(store->cornerPositionRaw(), stored.value("cornerPositionRaw").toString("bottom"));
        // Nothing stored is rewritten; the only write at start is the overrides dictionary.
        stored.insert("cornerOverridesByDisplay", QJsonObject());
        QCOMPARE(defaults.values(), stored);
    }

    void noInstalledEditorGivesAnEmptyEditor() {
        MemoryDefaults defaults;
        SettingsStore store(defaults, {QStringLiteral("org.gnome.Terminal"), {}, true});
        QCOMPARE(store.editorBundleID(), QString());
        QVERIFY(store.launchAtLogin());
    }

    void enumerationsListInOrderWithTheirLabels() {
        QCOMPARE(rawValue(allCases<CornerPosition>().back()), QStringLiteral("bottomRight"));
        for (const CornerOverrideItem item : allCases<CornerOverrideItem>())
            QCOMPARE(enumFromRaw<CornerOverrideItem>(rawValue(item)), item);
        QCOMPARE(enumFromRaw<CornerColorMode>(QStringLiteral("SpaceColors")), std::nullopt);

        const bool wasJapanese = Language::isJapanese();
        Language::setJapanese(true);
        QCOMPARE(label(CornerPosition::BottomRight), QStringLiteral("右下"));
        QCOMPARE(label(AppLanguage::En), QStringLiteral("English")); // each in its own language
        Language::setJapanese(false);
        QCOMPARE(label(CornerPosition::TopLeft), QStringLiteral("Top Left"));
        QCOMPARE(label(AppLanguage::Ja), QStringLiteral("日本語"));
        Language::setJapanese(wasJapanese);
    }

    void dictionaryWithOneWrongEntryIsDiscarded() {
        MemoryDefaults defaults(jsonObject(R"({
            "cornerMarginByDisplay": {"A": 4, "B": "wide", "C": 9},
            "cornerOffsetYByDisplay": {"A": 4, "C": 9},
            "cornerOverlayEnabledByDisplay": {"A": 1}})"));
        const auto store = storeOver(defaults);
        QVERIFY(store->cornerMarginByDisplay().isEmpty());
        QCOMPARE(store->cornerOffsetYByDisplay(), (ByDisplay<double>{{"A", 4}, {"C", 9}}));
        QVERIFY(store->cornerOverlayEnabledByDisplay().isEmpty());
    }

    void olderFontSizeKeyIsUsedUntilTheCurrentOneIsWritten() {
        MemoryDefaults defaults(
            jsonObject(R"({"cornerSizeByDisplay": {"A": 18, "B": "big", "C": 11}})"));
        {
            const auto store = storeOver(defaults);
            QCOMPARE(store->cornerFontSizeByDisplay(), (ByDisplay<double>{{"A", 18}, {"C", 11}}));
            store->setCornerFontSize(20, QStringLiteral("C"));
        }
        defaults.setValue(QStringLiteral("cornerSizeByDisplay"), jsonObject(R"({"A": 30})"));
        const auto store = storeOver(defaults);
        QCOMPARE(store->cornerFontSizeByDisplay(), (ByDisplay<double>{{"A", 18}, {"C", 20}}));
    }

    void hotKeysAreRead_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("stored");
        QTest::addColumn<std::optional<HotKey>>("expected");
        const auto none = std::optional<HotKey>();
        const QString record = hotKeyText(40, 0x1100);
        QTest::newRow("plain empty") << "presetHotKey" << QJsonValue("") << none;
        QTest::newRow("plain garbage") << "settingsHotKey" << QJsonValue("{]") << none;
        QTest::newRow("plain record")
            << "nameHotKey" << QJsonValue(record) << std::optional(HotKey{40, 0x1100});
        QTest::newRow("defaulted cleared") << "switcherHotKey" << QJsonValue("") << none;
        QTest::newRow("defaulted garbage")
            << "bookmarkHotKey" << QJsonValue(R"({"keyCode":-1,"modifiers":0})") << none;
        QTest::newRow("defaulted not text")
            << "switcherHotKey" << QJsonValue(jsonObject(R"({"keyCode":1,"modifiers":0})")) << none;
        QTest::newRow("defaulted record")
            << "switcherHotKey" << QJsonValue(record) << std::optional(HotKey{40, 0x1100});
    }
    void hotKeysAreRead() {
        QFETCH(QString, key);
        QFETCH(QJsonValue, stored);
        QFETCH(std::optional<HotKey>, expected);
        MemoryDefaults defaults;
        defaults.setValue(key, stored);
        const auto store = storeOver(defaults);
        const std::map<QString, std::optional<HotKey>> read{
            {"nameHotKey", store->nameHotKey()},
            {"presetHotKey", store->presetHotKey()},
            {"settingsHotKey", store->settingsHotKey()},
            {"bookmarkHotKey", store->bookmarkHotKey()},
            {"switcherHotKey", store->switcherHotKey()}};
        QCOMPARE(read.at(key), expected);
    }

    void clearingAHotKeyFollowsItsGroup() {
        MemoryDefaults defaults;
        const auto store = storeOver(defaults);
        int notified = 0;
        store->onHotKeysChanged = [&] { ++notified; };

        store->setNameHotKey(HotKey{0, HotKey::controlModifier});
        QCOMPARE(defaults.value("nameHotKey").toString(), hotKeyText(0, 0x1000));
        store->setNameHotKey(std::nullopt);
        QVERIFY(!defaults.values().contains("nameHotKey")); // removed, not stored empty

        store->setSwitcherHotKey(std::nullopt);
        QCOMPARE(defaults.value("switcherHotKey"), QJsonValue(""));
        QCOMPARE(notified, 3);
        store->setSwitcherHotKey(std::nullopt); // unchanged: no write, no call
        QCOMPARE(notified, 3);

        QCOMPARE(storeOver(defaults)->switcherHotKey(), std::nullopt); // stays cleared
        defaults.remove("switcherHotKey");
        QCOMPARE(storeOver(defaults)->switcherHotKey(), SettingsStore::defaultSwitcherHotKey);
    }

    void hotKeyRecordText() {
        QCOMPARE(HotKey({11, 0x900}).toJson(), QByteArray(R"({"keyCode":11,"modifiers":2304})"));
        QCOMPARE(HotKey::fromJson(R"({"modifiers":256,"keyCode":4294967295,"x":1})"),
                 (HotKey{4294967295u, 256}));
        QCOMPARE(HotKey::fromJson(R"({"keyCode":1.5,"modifiers":0})"), std::nullopt);
        QCOMPARE(HotKey::fromJson(R"({"keyCode":4294967296,"modifiers":0})"), std::nullopt);
        QCOMPARE(HotKey::fromJson(R"({"keyCode":1})"), std::nullopt);
        QCOMPARE(HotKey::fromJson(""), std::nullopt);
    }

    void eachPropertySignalsItsOwnChange() {
        MemoryDefaults defaults;
        const auto store = storeOver(defaults);
        const SettingsStore* s = store.get();
        QSignalSpy fontSize(s, &SettingsStore::cornerFontSizeChanged),
            margin(s, &SettingsStore::cornerMarginChanged),
            order(s, &SettingsStore::folderAppOrderChanged),
            appearance(s, &SettingsStore::appearanceRawChanged),
            bookmarkKey(s, &SettingsStore::bookmarkHotKeyChanged),
            login(s, &SettingsStore::launchAtLoginChanged);
        store->setCornerFontSize(15);
        store->setCornerFontSize(15);
        store->setFolderAppOrder({"org.gnome.Nautilus"});
        store->setAppearanceRaw("dark");
        store->setBookmarkHotKey(HotKey{11, 0x100});
        store->setLaunchAtLogin(true);
        QCOMPARE((QList<qsizetype>{fontSize.count(), margin.count(), order.count(),
                                   appearance.count(), bookmarkKey.count(), login.count()}),
                 (QList<qsizetype>{1, 0, 1, 1, 1, 1}));
        QVERIFY(!defaults.values().contains("launchAtLogin")); // no key of its own
    }

    void popupScalePerDisplay() {
        MemoryDefaults defaults;
        const auto store = storeOver(defaults);
        store->setBookmarkPopupScale(1.25, std::nullopt);
        store->setBookmarkPopupScale(1.5, QStringLiteral("A"));
        QCOMPARE(store->bookmarkPopupScale(QStringLiteral("A")), 1.5);
        QCOMPARE(store->bookmarkPopupScale(QStringLiteral("B")), 1.25);
        QCOMPARE(store->bookmarkPopupScale(std::nullopt), 1.25);
        QCOMPARE(defaults.value("bookmarkPopupScaleByDisplay").toObject(),
                 jsonObject(R"({"A": 1.5})"));
    }

    void settingsSurviveARestartThroughTheSettingsFile() {
        QTemporaryDir dir;
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(dir.path()));
        const QString path = AppFolders::configFolder() + QStringLiteral("/settings.json");
        QVERIFY(path.startsWith(dir.path()));
        {
            SettingsFile file(path);
            const auto store = storeOver(file);
            store->setCornerPositionRaw("topRight");
            store->setCornerOffsetY(-6);
            store->setMcLabelSingleLine(true);
            store->setFolderAppHidden({"a", "b"});
            store->setCornerWeight(CornerWeight::Bold, QStringLiteral("D1"));
            store->setOverride(CornerOverrideItem::Weight, true, QStringLiteral("D1"));
            store->setPresetHotKey(HotKey{35, 0x300});
            store->setBookmarkHotKey(std::nullopt);
        }
        SettingsFile file(path);
        const auto store = storeOver(file);
        QCOMPARE(store->cornerPosition(), CornerPosition::TopRight);
        QCOMPARE(store->cornerOffsetY(), -6.0);
        QVERIFY(store->mcLabelSingleLine());
        QCOMPARE(store->folderAppHidden(), (QStringList{"a", "b"}));
        QCOMPARE(store->cornerWeight(QStringLiteral("D1")), CornerWeight::Bold);
        QCOMPARE(store->presetHotKey(), (HotKey{35, 0x300}));
        QCOMPARE(store->bookmarkHotKey(), std::nullopt);
        qunsetenv("XDG_CONFIG_HOME");
    }

    void undecodableSettingsAreSetAsideBeforeTheFirstWrite_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("truncated") << QByteArray("{\"cornerFontSize\": 20,");
        // Read as strictly as projects.json: no text that could never be written back.
        QTest::newRow("lone surrogate escape")
            << QByteArray("{\"cornerFontSize\": 20, \"appLanguage\": \"\\udc00\"}");
    }
    void undecodableSettingsAreSetAsideBeforeTheFirstWrite() {
        QFETCH(QByteArray, content);
        QTemporaryDir dir;
        const QString path = dir.filePath("Deskmark/settings.json");
        QVERIFY(QDir().mkpath(dir.filePath("Deskmark")));
        writeFile(path, content);

        QTest::ignoreMessage(QtWarningMsg,
                             "Deskmark: settings.json のデコードに失敗（既定値で開始）");
        QTest::ignoreMessage(
            QtWarningMsg,
            "Deskmark: 読み込めなかった settings.json を settings.json.broken に退避");
        SettingsFile file(path);
        const auto store = storeOver(file); // writes the overrides dictionary at start
        QCOMPARE(store->cornerFontSize(), 13.0);
        QCOMPARE(readFile(path + ".broken"), content);
        QCOMPARE(SettingsFile(path).value("cornerOverridesByDisplay"), QJsonValue(QJsonObject()));
    }

    void unreadableSettingsAreNeverReplaced() {
        QTemporaryDir dir;
        const QString path = dir.filePath("settings.json");
        QVERIFY(makeSocketFile(path));
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: settings.json の読み込みに失敗");
        // Its content is unknown and it cannot be copied aside, so it is not replaced.
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression("^Deskmark: settings\\.json の保存に失敗: .+"));
        SettingsFile file(path);
        const auto store = storeOver(file); // writes the overrides dictionary at start
        QCOMPARE(store->cornerFontSize(), 13.0);
        QVERIFY(QFileInfo::exists(path) && !QFileInfo(path).isFile());
    }
};

QTEST_GUILESS_MAIN(SettingsStoreTest)
#include "SettingsStoreTest.moc"
