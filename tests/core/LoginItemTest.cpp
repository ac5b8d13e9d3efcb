#include "platform/fake/FakeLoginItem.h"
#include "platform/linux/AutostartLoginItem.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace deskmark;

namespace {
const QString kExecutable = QStringLiteral("/opt/Desk Mark/deskmark");
const char kRefused[] = "Deskmark: launchAtLogin 切り替えに失敗（.app 化前は想定内）: ";

void writeFile(const QString& path, const QByteArray& data) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(data);
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

class LoginItemTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void applyChangesOnlyWhatDiffers() {
        for (const bool enabled : {false, true}) {
            for (const bool wanted : {false, true}) {
                FakeLoginItem item(enabled);
                item.apply(wanted);
                QCOMPARE(item.changeRequests, enabled == wanted ? 0 : 1);
                QCOMPARE(item.isEnabled(), wanted);
            }
        }
        FakeLoginItem refusing;
        refusing.refusal = QStringLiteral("not allowed");
        QTest::ignoreMessage(QtWarningMsg, (QByteArray(kRefused) + "not allowed").constData());
        refusing.apply(true);
        QVERIFY(!refusing.isEnabled());
    }

    void entryState_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("enabled");
        const QByteArray ours = AutostartLoginItem::desktopEntry(kExecutable);
        QTest::newRow("ours") << ours << true;
        QTest::newRow("switched off by the desktop") << ours + "Hidden=true\n" << false;
        QTest::newRow("spaces around =") << QByteArray("[Desktop Entry]\nHidden = true\n") << false;
        QTest::newRow("Hidden=false") << QByteArray("[Desktop Entry]\nHidden=false\n") << true;
        QTest::newRow("Hidden of an action")
            << QByteArray("[Desktop Entry]\nExec=x\n[Desktop Action quit]\nHidden=true\n") << true;
    }
    void entryState() {
        QFETCH(QByteArray, content);
        QFETCH(bool, enabled);
        QTemporaryDir dir;
        AutostartLoginItem item(dir.path(), kExecutable);
        QVERIFY(!item.isEnabled());
        writeFile(item.filePath(), content);
        QCOMPARE(item.isEnabled(), enabled);
    }

    void enableAndDisableTheEntry() {
        QTemporaryDir dir;
        AutostartLoginItem item(dir.filePath(QStringLiteral("config/autostart")), kExecutable);
        item.apply(true); // creates the folder
        QVERIFY(item.isEnabled());
        const QList<QByteArray> lines = readFile(item.filePath()).split('\n');
        QCOMPARE(lines.first(), QByteArray("[Desktop Entry]"));
        for (const char* line :
             {"Type=Application", "Name=Deskmark", "Icon=io.github.deskmark.Deskmark",
              "X-GNOME-Autostart-enabled=true", "Exec=\"/opt/Desk Mark/deskmark\""})
            QVERIFY2(lines.contains(line), line);
        QCOMPARE(QProcess::execute("desktop-file-validate", {item.filePath()}), 0);

        writeFile(item.filePath(), "[Desktop Entry]\nExec=/old/deskmark\nHidden=true\n");
        item.apply(true); // switched off by the desktop: written anew
        QCOMPARE(readFile(item.filePath()), AutostartLoginItem::desktopEntry(kExecutable));

        item.apply(false);
        QVERIFY(!QFile::exists(item.filePath()));
        QString error;
        QVERIFY(item.setEnabled(false, &error)); // nothing to remove is no failure
    }

    void unwritableFolderIsLoggedAndStaysOff() {
        QTemporaryDir dir;
        writeFile(dir.filePath(QStringLiteral("config")), "a file, not a folder");
        AutostartLoginItem item(dir.filePath(QStringLiteral("config/autostart")), kExecutable);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^") + kRefused +
                                                              QStringLiteral(".+")));
        item.apply(true);
        QVERIFY(!item.isEnabled());
    }

    // An installed copy is started by its name, so that the entry keeps working when the
    // copy moves along the PATH; any other copy by its full path.
    void launchCommandNamesTheCopyThePathFinds() {
        QTemporaryDir dir;
        QVERIFY(QDir().mkpath(dir.filePath("bin")) && QDir().mkpath(dir.filePath("build")));
        for (const char* path : {"bin/deskmark", "build/deskmark"}) {
            writeFile(dir.filePath(path), "#!/bin/sh\n");
            QVERIFY(QFile::setPermissions(dir.filePath(path),
                                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        }
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(dir.filePath("bin")) + ":/usr/bin");
        QCOMPARE(AutostartLoginItem::launchCommand(dir.filePath("bin/deskmark")), "deskmark");
        QCOMPARE(AutostartLoginItem::launchCommand(dir.filePath("build/deskmark")),
                 dir.filePath("build/deskmark"));
        QCOMPARE(AutostartLoginItem::launchCommand(dir.filePath("bin/../bin/deskmark")),
                 "deskmark");
        qputenv("PATH", path);
    }

    void execValueQuotesAndEscapes_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("value");
        QTest::newRow("plain") << "/usr/bin/deskmark"
                               << "/usr/bin/deskmark";
        QTest::newRow("single quote") << "/home/o'neil/dm"
                                      << "\"/home/o'neil/dm\"";
        // Inside quotes " ` $ \ take a backslash; the string level then doubles every
        // backslash, giving \\" \\` \\$ and \\\\ in the file.
        QTest::newRow("escaped characters") << "/a\"b`c$d\\e"
                                            << "\"/a\\\\\"b\\\\`c\\\\$d\\\\\\\\e\"";
        QTest::newRow("percent is no field code") << "/opt/100%/dm"
                                                  << "/opt/100%%/dm";
    }
    void execValueQuotesAndEscapes() {
        QFETCH(QString, path);
        QFETCH(QString, value);
        QCOMPARE(AutostartLoginItem::execValue(path), value);
    }
};

QTEST_GUILESS_MAIN(LoginItemTest)
#include "LoginItemTest.moc"
