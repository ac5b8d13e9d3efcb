#include "platform/linux/DBusInputSourceSwitcher.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QDir>
#include <QElapsedTimer>
#include <QMutex>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <atomic>
#include <memory>

using namespace deskmark;

// What a framework was asked to change, in order. The fakes answer on a thread of their
// own, because the switcher waits for answers without running the event loop.
class Recorder : public QObject {
    Q_OBJECT
public:
    QStringList changes() {
        const QMutexLocker lock(&mutex_);
        return changes_;
    }

protected:
    void record(const QString& change) {
        const QMutexLocker lock(&mutex_);
        changes_ << change;
    }

private:
    QMutex mutex_;
    QStringList changes_;
};

class FakeFcitx : public Recorder {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.fcitx.Fcitx.Controller1")
public:
    std::atomic<int> state = 1;
    std::atomic<int> stallMs = 0;

public Q_SLOTS:
    int State() {
        QThread::msleep(stallMs);
        return state;
    }
    QString CurrentInputMethod() { return QStringLiteral("mozc"); }
    void Activate() {
        record(QStringLiteral("Activate"));
        state = 2;
    }
    void Deactivate() {
        record(QStringLiteral("Deactivate"));
        state = 1;
    }
};

class FakeIBus : public Recorder {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.IBus")
public:
    QString engine;
    QStringList preloaded;

    static QDBusArgument desc(const QString& name) {
        QDBusArgument fields;
        fields.beginStructure();
        fields << QStringLiteral("IBusEngineDesc") << QVariantMap() << name << name.toUpper();
        fields.endStructure();
        return fields;
    }

public Q_SLOTS:
    QDBusVariant GetGlobalEngine() { return QDBusVariant(QVariant::fromValue(desc(engine))); }
    QVariantList ListActiveEngines() {
        QVariantList descs;
        for (const QString& name : preloaded)
            descs << QVariant::fromValue(desc(name));
        return descs;
    }
    void SetGlobalEngine(const QString& name) { record(engine = name); }
};

class DBusInputSourceSwitcherTest : public QObject {
    Q_OBJECT

    QThread services_;
    QTemporaryDir configHome_;
    QProcess ibusBusDaemon_;
    QString ibusAddress_;

    // Publishes a fake on a bus, answering on the services thread until the returned handle
    // goes; nothing when the bus refuses it.
    template <typename Fake>
    std::shared_ptr<Fake> publish(Fake* fake, const QString& connection, const QString& service,
                                  const QString& path) {
        QDBusConnection bus(connection);
        fake->moveToThread(&services_);
        auto withdraw = [bus, service, path](Fake* gone) mutable {
            bus.unregisterService(service);
            bus.unregisterObject(path);
            gone->deleteLater();
        };
        std::shared_ptr<Fake> handle(fake, withdraw);
        if (!bus.registerObject(path, fake, QDBusConnection::ExportAllSlots) ||
            !bus.registerService(service))
            return nullptr;
        return handle;
    }
    std::shared_ptr<FakeFcitx> publishFcitx(int state) {
        auto* fake = new FakeFcitx;
        fake->state = state;
        return publish(fake, QStringLiteral("fcitx"), QStringLiteral("org.fcitx.Fcitx5"),
                       QStringLiteral("/controller"));
    }

private Q_SLOTS:
    void initTestCase() {
        services_.start();
        // Nothing of the user running the test may leak in: no IBus unless a test starts one.
        qputenv("XDG_CONFIG_HOME", configHome_.path().toUtf8());
        qunsetenv("IBUS_ADDRESS");
        qunsetenv("IBUS_ADDRESS_FILE");
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fcitx"));
        // IBus has a bus of its own.
        ibusBusDaemon_.start(QStringLiteral("dbus-daemon"),
                             {"--session", "--nofork", "--print-address"});
        QVERIFY(ibusBusDaemon_.waitForReadyRead(10000));
        ibusAddress_ = QString::fromUtf8(ibusBusDaemon_.readLine()).trimmed();
        QVERIFY(QDBusConnection::connectToBus(ibusAddress_, QStringLiteral("ibus")).isConnected());
    }
    void cleanupTestCase() {
        services_.quit();
        services_.wait();
        ibusBusDaemon_.kill();
        ibusBusDaemon_.waitForFinished();
    }

    void fcitxInputMethodIsOffWhileOpen_data() {
        QTest::addColumn<int>("state");
        QTest::addColumn<QStringList>("changes");
        QTest::newRow("input method active") << 2 << QStringList{"Deactivate", "Activate"};
        QTest::newRow("keyboard layout") << 1 << QStringList();
        QTest::newRow("closed") << 0 << QStringList();
    }
    void fcitxInputMethodIsOffWhileOpen() {
        QFETCH(int, state);
        QFETCH(QStringList, changes);
        const auto fcitx = publishFcitx(state);
        QVERIFY(fcitx);
        DBusInputSourceSwitcher switcher;
        // Opened again before closing: the second opening finds plain letters already.
        switcher.switchToASCIIInput();
        switcher.switchToASCIIInput();
        QCOMPARE(fcitx->changes(), changes.mid(0, 1));
        switcher.restorePreviousInput();
        switcher.restorePreviousInput();
        QCOMPARE(fcitx->changes(), changes);
        QCOMPARE(fcitx->state.load(), state);
    }

    void quittingWhileOpenRestores() {
        const auto fcitx = publishFcitx(2);
        QVERIFY(fcitx);
        std::make_unique<DBusInputSourceSwitcher>()->switchToASCIIInput();
        QCOMPARE(fcitx->changes(), (QStringList{"Deactivate", "Activate"}));
    }

    void ibusEngineIsALayoutWhileOpen_data() {
        QTest::addColumn<bool>("throughFile");
        QTest::addColumn<QString>("engine");
        QTest::addColumn<QStringList>("preloaded");
        QTest::addColumn<QString>("whileOpen");
        const QStringList japanese{"anthy", "xkb:jp::jpn"};
        QTest::newRow("user's layout") << false << "anthy" << japanese << "xkb:jp::jpn";
        QTest::newRow("no layout preloaded")
            << false << "mozc-jp" << QStringList{"mozc-jp"} << "xkb:us::eng";
        QTest::newRow("already a layout") << false << "xkb:de::ger" << japanese << "xkb:de::ger";
        QTest::newRow("address file") << true << "anthy" << japanese << "xkb:jp::jpn";
    }
    void ibusEngineIsALayoutWhileOpen() {
        QFETCH(bool, throughFile);
        QFETCH(QString, engine);
        QFETCH(QStringList, preloaded);
        QFETCH(QString, whileOpen);
        auto* fake = new FakeIBus;
        fake->engine = engine;
        fake->preloaded = preloaded;
        const auto ibus = publish(fake, QStringLiteral("ibus"), QStringLiteral("org.freedesktop.IBus"),
                                  QStringLiteral("/org/freedesktop/IBus"));
        QVERIFY(ibus);
        QTemporaryDir home;
        if (throughFile) {
            QFile machineId(QStringLiteral("/etc/machine-id"));
            QVERIFY(machineId.open(QIODevice::ReadOnly));
            QVERIFY(QDir().mkpath(home.filePath("ibus/bus")));
            QFile file(home.filePath("ibus/bus/" + machineId.readAll().trimmed() + "-unix-7"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("# If the IBUS_ADDRESS environment variable is set, it is used instead.\n"
                       "IBUS_ADDRESS=" + ibusAddress_.toUtf8() + "\nIBUS_DAEMON_PID=1\n");
            qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
            qputenv("DISPLAY", ":7.0");
        } else {
            qputenv("IBUS_ADDRESS", ibusAddress_.toUtf8());
        }
        DBusInputSourceSwitcher switcher;
        switcher.switchToASCIIInput();
        QCOMPARE(ibus->engine, whileOpen);
        switcher.restorePreviousInput();
        switcher.restorePreviousInput();
        QCOMPARE(ibus->engine, engine);
        QCOMPARE(ibus->changes().size(), engine == whileOpen ? 0 : 2);
        qunsetenv("IBUS_ADDRESS");
        qputenv("XDG_CONFIG_HOME", configHome_.path().toUtf8());
    }

    void ibusAddressFileIsNamedAfterMachineAndDisplay_data() {
        QTest::addColumn<QString>("display");
        QTest::addColumn<QString>("file");
        QTest::newRow("local") << ":1" << "/c/ibus/bus/m-unix-1";
        QTest::newRow("screen") << ":2.1" << "/c/ibus/bus/m-unix-2";
        QTest::newRow("remote host") << "box:10.0" << "/c/ibus/bus/m-box-10";
        QTest::newRow("no display") << "" << "/c/ibus/bus/m-unix-0";
    }
    void ibusAddressFileIsNamedAfterMachineAndDisplay() {
        QFETCH(QString, display);
        QFETCH(QString, file);
        QCOMPARE(DBusInputSourceSwitcher::ibusAddressFile("/c", "m", display), file);
    }

    // A framework that is missing or has stopped answering costs the panel no more than a
    // moment and changes nothing.
    void missingOrStalledFrameworkIsLeftAlone() {
        DBusInputSourceSwitcher switcher;
        QElapsedTimer clock;
        clock.start();
        switcher.switchToASCIIInput();
        switcher.restorePreviousInput();
        QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));

        const auto fcitx = publishFcitx(2);
        QVERIFY(fcitx);
        fcitx->stallMs = 1500;
        clock.restart();
        switcher.switchToASCIIInput();
        switcher.restorePreviousInput();
        QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
        QVERIFY(fcitx->changes().isEmpty());
    }
};

QTEST_GUILESS_MAIN(DBusInputSourceSwitcherTest)
#include "DBusInputSourceSwitcherTest.moc"
