#include "core/model/PresetStore.h"
#include "core/StoreTestFiles.h"
#include "core/app/Language.h"

#include <QDir>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QUuid>

using namespace deskmark;
using namespace deskmark::testfiles;

namespace {
QStringList ids(const PresetStore& store) {
    QStringList result;
    for (const ColorPreset& preset : store.presets())
        result << preset.id;
    return result;
}

const QByteArray kTwoPresets =
    json("[{'id':'A','name':'Red','bgHex':'#FF0000','textHex':'#000000'},"
         "{'id':'B','name':'Bad','bgHex':'nope','textHex':'#12345'}]");
} // namespace

class PresetStoreTest : public QObject {
    Q_OBJECT
    TempFolder dir_;

private Q_SLOTS:
    void init() {
        dir_.reset();
        Language::setJapanese(false);
        QTest::failOnWarning(QRegularExpression(".*"));
    }

    void hexParsing_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<std::optional<RgbColor>>("color");
        const RgbColor blue{0x33 / 255.0, 0x66 / 255.0, 0xCC / 255.0};
        QTest::newRow("upper case") << "#3366CC" << std::optional(blue);
        QTest::newRow("lower case, without number sign") << "3366cc" << std::optional(blue);
        const std::optional<RgbColor> none;
        QTest::newRow("three digits") << "#36C" << none;
        QTest::newRow("eight digits") << "#3366CCFF" << none;
        QTest::newRow("two number signs") << "##3366C" << none;
        QTest::newRow("not trimmed") << " 3366C" << none;
        QTest::newRow("hex prefix") << "0x3366" << none;
        QTest::newRow("not hex") << "#3366CG" << none;
    }
    void hexParsing() {
        QFETCH(QString, text);
        QFETCH(std::optional<RgbColor>, color);
        QCOMPARE(RgbColor::fromDeskmarkHex(text), color);
    }

    void hexFormatting_data() {
        QTest::addColumn<RgbColor>("color");
        QTest::addColumn<QString>("hex");
        QTest::newRow("rounded") << RgbColor{0.2, 0.4, 0.8} << "#3366CC";
        QTest::newRow("half rounds up") << RgbColor{0.5, 0, 1} << "#8000FF";
        QTest::newRow("clamped") << RgbColor{-0.5, 1.7, 0.999} << "#00FFFF";
        QTest::newRow("not a number") << RgbColor{qQNaN(), 0, 0} << "#000000";
    }
    void hexFormatting() {
        QFETCH(RgbColor, color);
        QFETCH(QString, hex);
        QCOMPARE(color.deskmarkHex(), hex);
        QCOMPARE(RgbColor::fromDeskmarkHex(hex)->deskmarkHex(), hex);
    }

    void missingFileGivesTheBuiltInPresetAndWritesNothing() {
        const QString folder = dir_.path("nested/Deskmark");
        PresetStore store(folder);
        QVERIFY(QDir(folder).exists());
        QCOMPARE(store.presets(),
                 (QList<ColorPreset>{{"default", "Default", "#000000", "#FFFFFF"}}));
        store.deletePreset("default"); // refused without a write
        QCOMPARE(store.presets().size(), 1);
        QVERIFY(!QFile::exists(folder + "/presets.json"));
    }

    void builtInPresetIsPlacedFirst_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("ids");
        QTest::newRow("empty array") << QByteArray("[]") << QStringList{"default"};
        QTest::newRow("no default") << kTwoPresets << QStringList{"default", "A", "B"};
        QTest::newRow("default kept in place")
            << json("[{'id':'A','name':'','bgHex':'','textHex':''},"
                    "{'id':'default','name':'Mine','bgHex':'','textHex':'','x':1}]")
            << QStringList{"A", "default"};
    }
    void builtInPresetIsPlacedFirst() {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, ids);
        writeFile(dir_.path("presets.json"), file);
        PresetStore store(dir_.path());
        QCOMPARE(::ids(store), ids);
        QCOMPARE(readFile(dir_.path("presets.json")), file); // added in memory only
    }

    void colorsFallBack() {
        writeFile(dir_.path("presets.json"), kTwoPresets);
        PresetStore store(dir_.path());
        const RgbColor black{0, 0, 0}, white{1, 1, 1}, red{1, 0, 0};
        QCOMPARE(store.colors(QString("A")), (ColorPair{red, black}));
        QCOMPARE(store.colors(QString("B")), (ColorPair{black, white})); // each on its own
        QCOMPARE(store.colors(std::nullopt), (ColorPair{black, white}));

        store.updatePreset({"default", "Default", "#3366CC", "#FF0000"});
        const ColorPair defaultColors{*RgbColor::fromDeskmarkHex("#3366CC"), red};
        QCOMPARE(store.colors(std::nullopt), defaultColors);
        QCOMPARE(store.colors(QString("gone")), defaultColors);
        store.deletePreset("A");
        QCOMPARE(store.colors(QString("A")), defaultColors);
    }

    void editsAreSavedAndAnnounced() {
        const QString path = dir_.path("presets.json");
        PresetStore store(dir_.path());
        QSignalSpy changed(&store, &PresetStore::changed);

        const ColorPreset added = store.addPreset();
        QCOMPARE(added, (ColorPreset{added.id, "New Preset", "#3366CC", "#FFFFFF"}));
        QVERIFY(!QUuid::fromString(added.id).isNull() && added.id == added.id.toUpper());
        ColorPreset renamed = added;
        renamed.name = "Sea";
        store.updatePreset(renamed);
        store.updatePreset({"unknown", "x", "", ""});
        QCOMPARE(changed.size(), 2);

        QVERIFY(!readFile(path).contains('\n')); // compact JSON
        QCOMPARE(PresetStore(dir_.path()).presets(), store.presets());
        QCOMPARE(QDir(dir_.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{"presets.json"}); // no temporary file left behind

        store.deletePreset("default");
        QCOMPARE(changed.size(), 2);
        store.deletePreset(added.id);
        QCOMPARE(changed.size(), 3);
        QCOMPARE(::ids(PresetStore(dir_.path())), QStringList{"default"});
    }

    void namesFollowTheLanguageAtCreation() {
        Language::setJapanese(true);
        PresetStore store(dir_.path());
        store.addPreset();
        Language::setJapanese(false);
        QCOMPARE(store.presets()[0].name, QString("デフォルト"));
        QCOMPARE(store.presets()[1].name, QString("新規プリセット"));
        const PresetStore reloaded(dir_.path());
        QCOMPARE(reloaded.presets()[0].name, QString("デフォルト"));
    }

    void undecodableFileIsSetAside_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("not JSON") << QByteArray("[{ damaged");
        QTest::newRow("a key missing") << json("[{'id':'A','name':'n','bgHex':'#000000'}]");
        QTest::newRow("a number for a string")
            << json("[{'id':'A','name':1,'bgHex':'#000000','textHex':'#000000'}]");
        // Read as strictly as projects.json: no text that could never be written back.
        QTest::newRow("lone surrogate escapes")
            << json("[{'id':'A','name':'\\ud83d\\ued00','bgHex':'#000000','textHex':'#000000'}]");
        QTest::newRow("invalid UTF-8")
            << json("[{'id':'A','name':'caf\xE9','bgHex':'#000000','textHex':'#000000'}]");
    }
    void undecodableFileIsSetAside() {
        QFETCH(QByteArray, file);
        const QString path = dir_.path("presets.json");
        writeFile(path, file);
        PresetStore store(dir_.path()); // silent: any warning fails the test
        QCOMPARE(::ids(store), QStringList{"default"});
        QCOMPARE(readFile(path), file);

        QTest::ignoreMessage(
            QtWarningMsg, "Deskmark: 読み込めなかった presets.json を presets.json.broken に退避");
        store.addPreset();
        QCOMPARE(readFile(path + ".broken"), file);
        QCOMPARE(::ids(PresetStore(dir_.path())).size(), 2);
    }

    // U+FEFF starting a text is part of it, raw or escaped, through a load and a save.
    void leadingFeffIsKept() {
        writeFile(dir_.path("presets.json"), json("\xEF\xBB\xBF[{'id':'\xEF\xBB\xBF"
                                                  "A','name':'\\ufeffRed',"
                                                  "'bgHex':'#000000','textHex':'#FFFFFF'}]"));
        PresetStore store(dir_.path());
        const QString feff = QStringView(u"\uFEFF").toString();
        QCOMPARE(store.presets()[1].id, feff + "A");
        QCOMPARE(store.presets()[1].name, feff + "Red");
        store.updatePreset(store.presets()[1]);
        QCOMPARE(PresetStore(dir_.path()).presets(), store.presets());
    }

    void unencodableTextLeavesTheGoodFile() {
        PresetStore store(dir_.path());
        const ColorPreset added = store.addPreset();
        const QByteArray good = readFile(dir_.path("presets.json"));
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: presets.json のエンコードに失敗");
        store.updatePreset({added.id, QString(QChar(0xDC00)) + "x", "#000000", "#FFFFFF"});
        QCOMPARE(store.presets().last().name.size(), 2); // memory keeps the change
        QCOMPARE(readFile(dir_.path("presets.json")), good);
    }

    void saveFailureIsLogged() {
        writeFile(dir_.path("plain"), "x");
        PresetStore store(dir_.path("plain")); // the folder cannot be made: a file is there
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression("^Deskmark: presets\\.json の保存に失敗: \\S"));
        store.addPreset();
        QCOMPARE(store.presets().size(), 2); // memory keeps the change
    }
};

QTEST_GUILESS_MAIN(PresetStoreTest)
#include "PresetStoreTest.moc"
