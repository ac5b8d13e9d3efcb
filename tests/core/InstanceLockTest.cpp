#include "platform/linux/InstanceLock.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace deskmark;
using State = InstanceLock::State;

namespace {
// Runs the probe (the program entry's single-instance step) on folder.
void startProbe(QProcess& probe, const QString& folder, const QString& language) {
    probe.start(QStringLiteral(INSTANCE_LOCK_PROBE), {folder, language});
}

bool holdsLock(QProcess& probe) {
    return probe.waitForReadyRead(10000) && probe.readAllStandardOutput() == "acquired\n";
}
} // namespace

class InstanceLockTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void lockIsExclusiveUntilItsHolderReleasesIt() {
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("deep/Deskmark"));
        std::optional<InstanceLock> first(InstanceLock::acquire(folder));
        QCOMPARE(first->state(), State::Acquired);
        QCOMPARE(InstanceLock::acquire(folder).state(), State::HeldElsewhere);
        first.reset();
        QCOMPARE(InstanceLock::acquire(folder).state(), State::Acquired);

        QFile occupied(dir.filePath(QStringLiteral("file")));
        QVERIFY(occupied.open(QIODevice::WriteOnly)); // a file where the folder should be
        QCOMPARE(InstanceLock::acquire(occupied.fileName()).state(), State::Unavailable);
    }

    // A program started while the lock is held (the relaunch helper, and through it
    // the next copy of Deskmark) must not keep the lock after this process lets go.
    void childProcessesDoNotInheritTheLock() {
        QTemporaryDir dir;
        QProcess child;
        {
            const InstanceLock lock = InstanceLock::acquire(dir.path());
            QCOMPARE(lock.state(), State::Acquired);
            child.start(QStringLiteral("sleep"), {QStringLiteral("30")});
            QVERIFY(child.waitForStarted());
        }
        QCOMPARE(InstanceLock::acquire(dir.path()).state(), State::Acquired);
        child.kill();
        child.waitForFinished();
    }

    // The English report is proven on the program itself; the lock must also die with
    // a killed holder.
    void secondCopyReportsInJapaneseAndAKilledHolderLetsGo() {
        QTemporaryDir dir;
        QProcess first, second, third;
        startProbe(first, dir.path(), "ja");
        QVERIFY(holdsLock(first));

        startProbe(second, dir.path(), "ja");
        QVERIFY(second.waitForFinished(10000));
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.readAllStandardError(), QByteArray("Deskmark は既に起動しています。\n"));
        QCOMPARE(second.readAllStandardOutput(), QByteArray());
        QCOMPARE(first.state(), QProcess::Running);

        first.kill(); // the kernel drops the lock with the process
        QVERIFY(first.waitForFinished());
        startProbe(third, dir.path(), "ja");
        QVERIFY(holdsLock(third));
        third.kill();
        third.waitForFinished();
    }
};

QTEST_GUILESS_MAIN(InstanceLockTest)
#include "InstanceLockTest.moc"
