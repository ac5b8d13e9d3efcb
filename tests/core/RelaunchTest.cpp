#include "core/app/Relaunch.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace deskmark;

class RelaunchTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // The helper for real: it must keep waiting while the process lives and start the
    // executable, whatever its path holds, once the process has gone.
    void helperWaitsForTheProcessToEndThenStartsTheExecutable() {
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("with space 'single' \"double\" $HOME"));
        QVERIFY(QDir().mkpath(folder));
        const QString executable = folder + QStringLiteral("/deskmark");
        {
            QFile script(executable);
            QVERIFY(script.open(QIODevice::WriteOnly));
            // Writes its own path, then renames the file into place in one step.
            script.write(
                "#!/bin/sh\nprintf '%s' \"$0\" > \"$0.out\" && mv \"$0.out\" \"${0%/*}/ran\"\n");
            script.setPermissions(script.permissions() | QFile::ExeOwner);
        }
        const QString marker = folder + QStringLiteral("/ran");

        QProcess old;
        old.start(QStringLiteral("sleep"), {QStringLiteral("30")});
        QVERIFY(old.waitForStarted());
        QVERIFY(Relaunch::startHelper(Relaunch::helperCommand(old.processId(), executable)));

        QTest::qWait(400); // several polling rounds
        QVERIFY(!QFile::exists(marker));

        old.kill();
        QVERIFY(old.waitForFinished()); // reaped: kill -0 no longer finds the id
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(marker), 5000);
        QFile ran(marker);
        QVERIFY(ran.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(ran.readAll()), executable);
    }

    void helperThatCannotStartIsLoggedAndReported() {
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral(
                                 "^Deskmark: 再起動用プロセスの起動に失敗（再起動を中止）: .+")));
        QVERIFY(
            !Relaunch::startHelper({QStringLiteral("/nonexistent/sh"), {QStringLiteral("-c")}}));
    }
};

QTEST_GUILESS_MAIN(RelaunchTest)
#include "RelaunchTest.moc"
