#include "platform/linux/LinuxCaptureSource.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace deskmark;

// The window-title fallback of a capture: only an existing folder written as an absolute
// or "~" path counts, blanks inside it included.
class FolderInTitleTest : public QObject {
    Q_OBJECT
    QTemporaryDir dir_;

private Q_SLOTS:
    void folderInTitle_data() {
        QVERIFY(QDir(dir_.path()).mkpath("my project/src"));
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("folder");
        const QString root = dir_.path();
        QTest::newRow("shell prompt") << "user@host: " + root + "/my project/src" << root + "/my project/src";
        QTest::newRow("trailing text") << root + "/my project - Files" << root + "/my project";
        QTest::newRow("home") << "user@host: ~" << QDir::homePath();
        QTest::newRow("missing folder") << "vim " + root + "/gone" << "";
        QTest::newRow("inside a word") << "a" + root << "";
        QTest::newRow("no path") << "Terminal" << "";
    }
    void folderInTitle() {
        QFETCH(QString, title);
        QFETCH(QString, folder);
        QCOMPARE(LinuxCaptureSource::folderInTitle(title).value_or(QString()), folder);
    }
};

QTEST_GUILESS_MAIN(FolderInTitleTest)
#include "FolderInTitleTest.moc"
