#pragma once

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

// The running program as a panel sees it: a private data and config folder, a
// StatusNotifierWatcher on the session bus for the program's status item to register
// with, and the program itself started as a child process. Used by the end-to-end test
// and the benchmarks; needs a display (X11, or Wayland when QT_QPA_PLATFORM says so) and a
// session bus of its own.
class AgentSession : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
public:
    explicit AgentSession(QString program);
    ~AgentSession() override;

    QString dataFolder() const;
    QString configFolder() const;
    // Writes a file below the data folder before the program starts.
    void writeDataFile(const QString& name, const QByteArray& contents) const;

    // Starts the program; returns whether its status item registered within the timeout.
    bool start(int timeoutMs = 10000);
    // Runs a second copy with the same folders and those arguments, and waits for it to
    // end.
    QProcess* runSecondCopy(const QStringList& arguments = {});
    qint64 pid() const { return process_.processId(); }
    bool isRunning() const { return process_.state() == QProcess::Running; }
    // How the program ended, once it has.
    QProcess::ExitStatus exitStatus() const { return process_.exitStatus(); }
    int exitCode() const { return process_.exitCode(); }
    QByteArray standardError() { return stderr_ += process_.readAllStandardError(); }

    // A property of the status item, and its current label, asked over D-Bus.
    QVariant itemProperty(const QString& name);
    QString label();
    // Spins the event loop until the item announces a label for which done is true.
    bool waitForLabel(const std::function<bool(const QString&)>& done, int timeoutMs = 5000);
    const QStringList& announcedLabels() const { return labels_; }

public Q_SLOTS:
    // The watcher's side of the StatusNotifierItem protocol.
    void RegisterStatusNotifierItem(const QString& service);
    void RegisterStatusNotifierHost(const QString&) {}

private Q_SLOTS:
    void newLabel(const QString& label, const QString& guide);

private:
    QProcessEnvironment environment() const;

    QString program_;
    QTemporaryDir home_;
    QDBusConnection bus_;
    QProcess process_;
    QProcess second_;
    QString itemService_;
    QStringList labels_;
    QByteArray stderr_;
};
