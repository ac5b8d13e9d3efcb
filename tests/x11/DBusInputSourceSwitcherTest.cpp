#include "platform/linux/DBusInputSourceSwitcher.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <atomic>
#include <optional>

#include <csignal>

using namespace deskmark;

// The frameworks' side. The fakes answer on a thread of their own, because the switcher
// waits for answers without running the event loop; what they record is read only once
// the call that recorded it has been answered.
class FakeFcitx : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.fcitx.Fcitx.Controller1")
public:
    std::atomic<int> state = 1;
    std::atomic<int> stallMs = 0;
    QStringList changes;

public Q_SLOTS:
    int State() {
        QThread::msleep(stallMs);
        return state;
    }
    QString CurrentInputMethod() { return QStringLiteral("mozc"); }
    void Activate() {
        changes << QStringLiteral("Activate");
        state = 2;
    }
    void Deactivate() {
        changes << QStringLiteral("Deactivate");
        state = 1;
    }
};

class FakeIBus : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.IBus")
    Q_PROPERTY(QDBusVariant GlobalEngine READ globalEngine)
    Q_PROPERTY(QVariantList Engines READ engines)
public:
    QString engine;
    QStringList known{"xkb:jp:kana:jpn", "xkb:jp::jpn", "xkb:us::eng", "anthy", "mozc-jp"};
    int engineChanges = 0;

    // Name and layout set; the fields in between as the daemon leaves them when unknown.
    static QVariant desc(const QString& name) {
        QDBusArgument fields;
        fields.beginStructure();
        fields << QStringLiteral("IBusEngineDesc") << QVariantMap() << name;
        for (int field = 0; field < 6; ++field)
            fields << QString();
        fields << (name == "anthy" ? QStringLiteral("jp") : QStringLiteral("default"))
               << QStringLiteral("extra fields follow");
        fields.endStructure();
        return QVariant::fromValue(fields);
    }
    QDBusVariant globalEngine() const { return QDBusVariant(desc(engine)); }
    QVariantList engines() const {
        QVariantList descs;
        for (const QString& name : known)
            descs << desc(name);
        return descs;
    }

public Q_SLOTS:
    void SetGlobalEngine(const QString& name) {
        engine = name;
        ++engineChanges;
    }
};

class DBusInputSourceSwitcherTest : public QObject {
    Q_OBJECT

    const QString fcitxService_ = QStringLiteral("org.fcitx.Fcitx5");
    QThread services_;
    FakeFcitx* fcitx_ = new FakeFcitx;
    FakeIBus* ibus_ = new FakeIBus;
    QDBusConnection fcitxBus_ =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fcitx"));
    QProcess ibusDaemon_; // IBus has a bus of its own
    QString ibusAddress_;
    QTemporaryDir configHome_;

    // A private bus daemon's address; empty when it did not start.
    static QString startBus(QProcess& daemon) {
        daemon.start(QStringLiteral("dbus-daemon"), {"--session", "--nofork", "--print-address"});
        return daemon.waitForReadyRead(10000) ? QString::fromUtf8(daemon.readLine()).trimmed()
                                              : QString();
    }

private Q_SLOTS:
    void initTestCase() {
        // Nothing of the user running the test may leak in: no IBus unless a test says so.
        qputenv("XDG_CONFIG_HOME", configHome_.path().toUtf8());
        qunsetenv("IBUS_ADDRESS");
        qunsetenv("IBUS_ADDRESS_FILE");
        ibusAddress_ = startBus(ibusDaemon_);
        QDBusConnection ibusBus = QDBusConnection::connectToBus(ibusAddress_, "ibus");

        services_.start();
        fcitx_->moveToThread(&services_);
        ibus_->moveToThread(&services_);
        QVERIFY(fcitxBus_.registerObject("/controller", fcitx_, QDBusConnection::ExportAllSlots));
        QVERIFY(fcitxBus_.registerService(fcitxService_));
        QVERIFY(ibusBus.registerObject("/org/freedesktop/IBus", ibus_,
                                       QDBusConnection::ExportAllSlots |
                                           QDBusConnection::ExportAllProperties));
        QVERIFY(ibusBus.registerService("org.freedesktop.IBus"));
    }
    void init() { fcitx_->changes.clear(); }
    void cleanupTestCase() {
        fcitx_->deleteLater();
        ibus_->deleteLater();
        services_.quit();
        services_.wait();
        ibusDaemon_.kill();
        ibusDaemon_.waitForFinished();
    }

    void fcitxInputMethodIsOffWhileOpen_data() {
        QTest::addColumn<int>("state");
        QTest::addColumn<QStringList>("changes");
        const QStringList offAndOn{"Deactivate", "Activate"};
        QTest::newRow("input method active") << 2 << offAndOn + offAndOn;
        QTest::newRow("keyboard layout") << 1 << QStringList();
        QTest::newRow("closed") << 0 << QStringList();
    }
    void fcitxInputMethodIsOffWhileOpen() {
        QFETCH(int, state);
        QFETCH(QStringList, changes);
        fcitx_->state = state;
        std::optional<DBusInputSourceSwitcher> switcher(std::in_place);
        // Opened again before closing: the second opening finds plain letters already.
        switcher->switchToASCIIInput();
        switcher->switchToASCIIInput();
        QCOMPARE(fcitx_->changes, changes.mid(0, 1));
        switcher->restorePreviousInput();
        switcher->restorePreviousInput();
        QCOMPARE(fcitx_->changes, changes.mid(0, 2));
        QCOMPARE(fcitx_->state.load(), state);
        // Quitting while open must not leave plain letters behind.
        switcher->switchToASCIIInput();
        switcher.reset();
        QCOMPARE(fcitx_->changes, changes);
    }

    void ibusEngineIsALayoutWhileOpen_data() {
        QTest::addColumn<bool>("throughFile");
        QTest::addColumn<QString>("engine");
        QTest::addColumn<QString>("whileOpen");
        QTest::newRow("jp keyboard") << false << "anthy"
                                     << "xkb:jp::jpn";
        QTest::newRow("system's keyboard") << false << "mozc-jp"
                                           << "xkb:us::eng";
        QTest::newRow("already a layout") << false << "xkb:jp:kana:jpn"
                                          << "xkb:jp:kana:jpn";
        QTest::newRow("address file") << true << "anthy"
                                      << "xkb:jp::jpn";
    }
    void ibusEngineIsALayoutWhileOpen() {
        QFETCH(bool, throughFile);
        QFETCH(QString, engine);
        QFETCH(QString, whileOpen);
        ibus_->engine = engine;
        ibus_->engineChanges = 0;
        QTemporaryDir home;
        if (throughFile) {
            // Named after the machine and the display, as the daemon names it.
            QFile machineId(QStringLiteral("/etc/machine-id"));
            QVERIFY(machineId.open(QIODevice::ReadOnly));
            QVERIFY(QDir().mkpath(home.filePath("ibus/bus")));
            QFile file(home.filePath("ibus/bus/" + machineId.readAll().trimmed() + "-unix-7"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("# If IBUS_ADDRESS is set, it is used instead.\nIBUS_ADDRESS=" +
                       ibusAddress_.toUtf8() + "\nIBUS_DAEMON_PID=1\n");
            qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
            qputenv("DISPLAY", ":7.0");
        } else {
            qputenv("IBUS_ADDRESS", ibusAddress_.toUtf8());
        }
        DBusInputSourceSwitcher switcher;
        switcher.switchToASCIIInput();
        QCOMPARE(ibus_->engine, whileOpen);
        switcher.restorePreviousInput();
        switcher.restorePreviousInput();
        QCOMPARE(ibus_->engine, engine);
        QCOMPARE(ibus_->engineChanges, engine == whileOpen ? 0 : 2);
        qunsetenv("IBUS_ADDRESS");
        qputenv("XDG_CONFIG_HOME", configHome_.path().toUtf8());
    }

    void ibusAddressFileOfOtherDisplays() {
        QCOMPARE(DBusInputSourceSwitcher::ibusAddressFile("/c", "m", "box:10.0"),
                 "/c/ibus/bus/m-box-10");
        QCOMPARE(DBusInputSourceSwitcher::ibusAddressFile("/c", "m", ""), "/c/ibus/bus/m-unix-0");
    }

    // A framework that has stopped answering or is missing costs the panel no more than a
    // moment and changes nothing.
    void stalledOrMissingFrameworkIsLeftAlone() {
        fcitx_->state = 2;
        fcitx_->stallMs = 4000;
        QProcess hungIBus;
        qputenv("IBUS_ADDRESS", startBus(hungIBus).toUtf8());
        ::kill(pid_t(hungIBus.processId()), SIGSTOP);
        for (bool missing : {false, true}) {
            if (missing)
                QVERIFY(fcitxBus_.unregisterService(fcitxService_));
            DBusInputSourceSwitcher switcher;
            QElapsedTimer clock;
            clock.start();
            switcher.switchToASCIIInput();
            switcher.restorePreviousInput();
            QVERIFY2(clock.elapsed() < 2000, qPrintable(QString::number(clock.elapsed())));
            QVERIFY(fcitx_->changes.isEmpty());
        }
        hungIBus.kill();
        hungIBus.waitForFinished();
    }
};

QTEST_GUILESS_MAIN(DBusInputSourceSwitcherTest)
#include "DBusInputSourceSwitcherTest.moc"
