#include "AgentSession.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFile>

namespace {
const QString kWatcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kItemPath = QStringLiteral("/StatusNotifierItem");
const QString kItemInterface = QStringLiteral("org.kde.StatusNotifierItem");

bool spinUntil(const std::function<bool()>& done, int timeoutMs) {
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    }
    return true;
}
} // namespace

AgentSession::AgentSession(QString program)
    : program_(std::move(program)),
      bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel"))) {
    QDir(home_.path()).mkpath(QStringLiteral("data/Deskmark"));
    QDir(home_.path()).mkpath(QStringLiteral("config"));
    bus_.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                        QDBusConnection::ExportAllSlots);
    bus_.registerService(kWatcherService);
    process_.setProcessEnvironment(environment());
    second_.setProcessEnvironment(environment());
}

AgentSession::~AgentSession() {
    if (process_.state() != QProcess::NotRunning) {
        process_.terminate();
        if (!process_.waitForFinished(3000))
            process_.kill();
        process_.waitForFinished(1000);
    }
    bus_.unregisterService(kWatcherService);
}

QString AgentSession::dataFolder() const { return home_.path() + QStringLiteral("/data/Deskmark"); }

QString AgentSession::configFolder() const { return home_.path() + QStringLiteral("/config"); }

void AgentSession::writeDataFile(const QString& name, const QByteArray& contents) const {
    QFile file(dataFolder() + QLatin1Char('/') + name);
    if (file.open(QIODevice::WriteOnly))
        file.write(contents);
}

QProcessEnvironment AgentSession::environment() const {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_DATA_HOME"), home_.path() + QStringLiteral("/data"));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), configFolder());
    env.insert(QStringLiteral("LANGUAGE"), QStringLiteral("en_US"));
    env.insert(QStringLiteral("QT_QPA_PLATFORM"),
               env.value(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb")));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), home_.path());
    return env;
}

bool AgentSession::start(int timeoutMs) {
    connect(&process_, &QProcess::readyReadStandardError, this,
            [this] { stderr_ += process_.readAllStandardError(); });
    process_.start(program_, {});
    if (!process_.waitForStarted(timeoutMs))
        return false;
    return spinUntil([this] { return !itemService_.isEmpty() || !isRunning(); }, timeoutMs) &&
           !itemService_.isEmpty();
}

QProcess* AgentSession::runSecondCopy(const QStringList& arguments) {
    second_.start(program_, arguments);
    second_.waitForFinished(10000);
    return &second_;
}

void AgentSession::RegisterStatusNotifierItem(const QString& service) {
    itemService_ = service;
    bus_.connect(service, kItemPath, kItemInterface, QStringLiteral("XAyatanaNewLabel"), this,
                 SLOT(newLabel(QString, QString)));
}

void AgentSession::newLabel(const QString& label, const QString&) { labels_ << label; }

QVariant AgentSession::itemProperty(const QString& name) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        itemService_, kItemPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    message.setArguments({kItemInterface, name});
    const QDBusMessage reply = bus_.call(message, QDBus::Block, 3000);
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

QString AgentSession::label() { return itemProperty(QStringLiteral("XAyatanaLabel")).toString(); }

bool AgentSession::waitForLabel(const std::function<bool(const QString&)>& done, int timeoutMs) {
    return spinUntil([&] { return !labels_.isEmpty() && done(labels_.last()); }, timeoutMs);
}
