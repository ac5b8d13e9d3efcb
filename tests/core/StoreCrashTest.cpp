#include "core/StoreTestFiles.h"
#include "core/model/PresetStore.h"
#include "core/model/ProjectFileCodec.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

using namespace deskmark;
using namespace deskmark::testfiles;

namespace {

// The state a name stands for: the number it starts with (dots follow), 0 for none.
qlonglong state(const QString& name) {
    return name.section(QLatin1Char('.'), 0, 0).toLongLong();
}

// The state a file holds, 0 when it has none yet; nothing when it does not decode.
std::optional<qlonglong> projectsState(const QString& path) {
    if (!QFile::exists(path))
        return 0;
    const auto document = ProjectFileCodec::decode(readFile(path));
    if (!document)
        return std::nullopt;
    return document->projects.isEmpty() ? 0 : state(document->projects.first().name);
}

std::optional<qlonglong> presetsState(const QString& path) {
    if (!QFile::exists(path))
        return 0;
    const QJsonDocument document = QJsonDocument::fromJson(readFile(path));
    if (!document.isArray())
        return std::nullopt;
    return state(document.array().last().toObject().value("name").toString());
}

QStringList temporaries(const QString& folder) {
    return QDir(folder).entryList({"*.json.*"}, QDir::Files | QDir::Hidden);
}

} // namespace

// A writer killed at random moments: every file still decodes and holds the last state
// the writer confirmed or the one after it, and what a cut-short save left behind is
// gone after the next start.
class StoreCrashTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void killedWritersLeaveConfirmedStates() {
        const int kills = qEnvironmentVariableIntValue("STORE_CRASH_KILLS") > 0
                              ? qEnvironmentVariableIntValue("STORE_CRASH_KILLS")
                              : 300;
        TempFolder dir;
        dir.reset();
        qlonglong last = 0;
        int stray = 0;
        QElapsedTimer clock;
        clock.start();
        for (int kill = 0; kill < kills; ++kill) {
            QProcess writer;
            writer.start(STORE_CRASH_DRIVER, {dir.path()});
            QVERIFY(writer.waitForStarted());
            // Killed once it writes, after up to 20 ms more of saving.
            QVERIFY2(writer.waitForReadyRead(30000), qPrintable(writer.readAllStandardError()));
            QThread::usleep(QRandomGenerator::global()->bounded(20000));
            writer.kill();
            QVERIFY(writer.waitForFinished());
            const QList<QByteArray> lines = writer.readAllStandardOutput().split('\n');
            for (const QByteArray& line : lines) {
                if (!line.isEmpty())
                    last = line.toLongLong();
            }
            const auto projects = projectsState(dir.path("projects.json"));
            const auto presets = presetsState(dir.path("presets.json"));
            const QString at = QStringLiteral("kill %1, confirmed %2").arg(kill).arg(last);
            QVERIFY2(projects && (*projects == last || *projects == last + 1), qPrintable(at));
            QVERIFY2(presets && (*presets == last || *presets == last + 1), qPrintable(at));
            // At most the one save of each file that this kill cut short.
            QVERIFY2(temporaries(dir.path()).size() <= 2, qPrintable(at));
            stray += int(temporaries(dir.path()).size());
            last = *projects;
        }
        QProcess start;
        start.start(STORE_CRASH_DRIVER, {dir.path(), "start"});
        QVERIFY(start.waitForFinished());
        QCOMPARE(temporaries(dir.path()), QStringList());
        qInfo("%d kills in %.1f s, %d saves cut short, state %lld", kills,
              double(clock.elapsed()) / 1000, stray, last);
    }
};

QTEST_GUILESS_MAIN(StoreCrashTest)
#include "StoreCrashTest.moc"
