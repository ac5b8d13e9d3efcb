#include "core/StoreTestFiles.h"
#include "core/app/Language.h"
#include "core/model/StoreFile.h"
#include "platform/fake/FakeScheduler.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace deskmark;
using namespace deskmark::testfiles;

class FoundationTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void languageFlag_data() {
        QTest::addColumn<QString>("setting");
        QTest::addColumn<QStringList>("preferred");
        QTest::addColumn<bool>("japanese");
        QTest::newRow("ja on an English system") << "ja" << QStringList{"en_US.UTF-8"} << true;
        QTest::newRow("en on a Japanese system") << "en" << QStringList{"ja_JP.UTF-8"} << false;
        QTest::newRow("auto with region") << "auto" << QStringList{"ja-JP"} << true;
        QTest::newRow("unknown follows system") << "fr" << QStringList{"ja"} << true;
        QTest::newRow("only the first counts") << "" << QStringList{"en", "ja"} << false;
        QTest::newRow("empty list is English") << "auto" << QStringList{} << false;
    }
    void languageFlag() {
        QFETCH(QString, setting);
        QFETCH(QStringList, preferred);
        QFETCH(bool, japanese);
        QCOMPARE(Language::computeIsJapanese(setting, preferred), japanese);
    }

    void preferredLanguagesFollowLocaleVariables() {
        qputenv("LANGUAGE", "ja:en");
        qputenv("LC_ALL", "");
        qputenv("LC_MESSAGES", "de_DE.UTF-8");
        qputenv("LANG", "en_US.UTF-8");
        QCOMPARE(Language::preferredLanguagesFromEnvironment(),
                 (QStringList{"ja", "en", "de_DE.UTF-8", "en_US.UTF-8"}));
        qunsetenv("LANGUAGE");
        qunsetenv("LC_MESSAGES");
        qunsetenv("LANG");
    }

    void storeFileReadsAndReplacesAtomically() {
        QTemporaryDir dir;
        StoreFile file(dir.filePath("a.json"));
        QCOMPARE(file.read().status, StoreFile::ReadStatus::Missing);
        QVERIFY(!file.write("one"));
        QVERIFY(!file.write("two"));
        QCOMPARE(file.read().data, QByteArray("two"));
        QVERIFY(!QFile::exists(dir.filePath("a.json.broken")));
    }

    void brokenFileIsSetAsideOnceBeforeItIsReplaced_data() {
        QTest::addColumn<bool>("removedMeanwhile");
        QTest::newRow("still there") << false;
        QTest::newRow("removed meanwhile: nothing to keep, the older copy stays") << true;
    }
    void brokenFileIsSetAsideOnceBeforeItIsReplaced() {
        QFETCH(bool, removedMeanwhile);
        QTemporaryDir dir;
        const QString path = dir.filePath("projects.json");
        writeFile(path, "{ damaged");
        writeFile(path + ".broken", "older copy");
        StoreFile file(path);
        file.markBroken();
        QByteArray copy = "{ damaged";
        if (removedMeanwhile) {
            QVERIFY(QFile::remove(path));
            copy = "older copy";
            QTest::failOnWarning(QRegularExpression(".*"));
        } else {
            QTest::ignoreMessage(
                QtWarningMsg,
                "Deskmark: 読み込めなかった projects.json を projects.json.broken に退避");
        }
        QVERIFY(!file.write("fresh"));
        QCOMPARE(readFile(path + ".broken"), copy);
        QVERIFY(!file.write("fresher")); // no second copy: the good file is never set aside
        QCOMPARE(readFile(path + ".broken"), copy);
        QCOMPARE(readFile(path), QByteArray("fresher"));
    }

    void damagedFileIsKeptWhenItCannotBeSetAside() {
        QTemporaryDir dir;
        const QString path = dir.filePath("presets.json");
        writeFile(path, "[ damaged");
        QVERIFY(QDir().mkpath(path + ".broken/occupied")); // a folder that cannot be replaced
        StoreFile file(path);
        file.markBroken();
        QVERIFY(file.write("[]").has_value());
        QCOMPARE(readFile(path), QByteArray("[ damaged"));
    }

    // What a write cut short leaves beside a store file goes at the next start; the
    // user's copies and other files stay.
    void staleTemporariesAreRemoved() {
        QTemporaryDir dir;
        const QStringList kept{"projects.json", "projects.json.broken", "projects.json.Ab12",
                               "presets.json.Ab12Cd", "projects.json.Ab12Cd.x"};
        for (const QString& name :
             kept + QStringList{"projects.json.Ab12Cd", "projects.json.x9Y8z7"})
            writeFile(dir.filePath(name), "x");
        QTest::ignoreMessage(QtWarningMsg,
                             "Deskmark: 中断された保存の一時ファイル projects.json.Ab12Cd を削除");
        QTest::ignoreMessage(QtWarningMsg,
                             "Deskmark: 中断された保存の一時ファイル projects.json.x9Y8z7 を削除");
        StoreFile::removeStaleTemporaries(dir.filePath("projects.json"));
        QStringList left = QDir(dir.path()).entryList(QDir::Files);
        left.sort();
        QStringList expected = kept;
        expected.sort();
        QCOMPARE(left, expected);
    }

    void fakeSchedulerRunsDueActionsInTimeOrder() {
        using namespace std::chrono_literals;
        FakeScheduler scheduler;
        QStringList log;
        auto ticker =
            scheduler.every(300ms, [&] { log << QString("tick@%1").arg(scheduler.now().count()); });
        scheduler.after(350ms, nullptr, [&] { log << "once"; });
        {
            QObject gone;
            scheduler.after(100ms, &gone, [&] { log << "never"; });
        }
        scheduler.advance(650ms);
        QCOMPARE(log, (QStringList{"tick@300", "once", "tick@600"}));
        ticker->stop();
        scheduler.advance(1s);
        QCOMPARE(log.size(), 3);
        QCOMPARE(scheduler.pendingCount(), 0);
        QCOMPARE(scheduler.activeRepeatingCount(), 0);
    }
};

QTEST_GUILESS_MAIN(FoundationTest)
#include "FoundationTest.moc"
