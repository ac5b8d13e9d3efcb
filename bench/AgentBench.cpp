// Times the running program as a user meets it, in an X session with a panel:
//   - start to the status item registered with its first title (5 starts);
//   - a desktop switch request (the _NET_CURRENT_DESKTOP client message sent) to the
//     status item's new title announced on D-Bus (200 switches by default);
//   - CPU time and wake-ups (context switches of all its threads) while idle.
// Run it under tests/x11/xsession.sh inside dbus-run-session:
//   dbus-run-session -- tests/x11/xsession.sh build/bench/bench/bench_agent [SWITCHES] [IDLE_S]

#include "AgentSession.h"
#include "BenchFigures.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QThread>

#include <unistd.h>

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

#include <algorithm>
#include <cstdio>

namespace {

const QByteArray kDemoProjects =
    R"({"version":1,"projects":[)"
    R"({"id":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D01","name":"Alpha"},)"
    R"({"id":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D02","name":"Beta"}],)"
    R"("assignments":{"desktop-1":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D01",)"
    R"("desktop-2":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D02"}})";

// Asks the window manager to show desktop index, as a pager does.
class DesktopSwitcher {
public:
    DesktopSwitcher() {
        connection_ = xcb_connect(nullptr, &screen_);
        xcb_ewmh_init_atoms_replies(&ewmh_, xcb_ewmh_init_atoms(connection_, &ewmh_), nullptr);
    }
    ~DesktopSwitcher() {
        xcb_ewmh_connection_wipe(&ewmh_);
        xcb_disconnect(connection_);
    }
    void request(uint32_t index) {
        xcb_ewmh_request_change_current_desktop(&ewmh_, screen_, index, XCB_CURRENT_TIME);
        xcb_flush(connection_);
    }

private:
    xcb_connection_t* connection_ = nullptr;
    xcb_ewmh_connection_t ewmh_{};
    int screen_ = 0;
};

// CPU seconds of pid and the context switches of each of its threads.
struct Usage {
    double cpuSeconds = 0;
    QHash<QString, qint64> switchesByThread;

    static Usage of(qint64 pid) {
        Usage usage;
        QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
        if (stat.open(QIODevice::ReadOnly)) {
            const QByteArray text = stat.readAll();
            const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
            // utime and stime are fields 14 and 15, the 12th and 13th after the name.
            usage.cpuSeconds = (fields.value(11).toDouble() + fields.value(12).toDouble()) /
                               double(sysconf(_SC_CLK_TCK));
        }
        const QDir tasks(QStringLiteral("/proc/%1/task").arg(pid));
        for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile status(tasks.filePath(task) + QStringLiteral("/status"));
            if (!status.open(QIODevice::ReadOnly))
                continue;
            for (const QByteArray& line : status.readAll().split('\n')) {
                if (line.contains("ctxt_switches:"))
                    usage.switchesByThread[task] +=
                        line.mid(line.indexOf(':') + 1).trimmed().toLongLong();
            }
        }
        return usage;
    }

    // Wake-ups between two readings, counting the threads that lived through both.
    static qint64 switchesBetween(const Usage& before, const Usage& after) {
        qint64 total = 0;
        for (auto it = after.switchesByThread.cbegin(); it != after.switchesByThread.cend(); ++it)
            total += it.value() - before.switchesByThread.value(it.key(), it.value());
        return total;
    }
};

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const int switches = args.value(1, QStringLiteral("200")).toInt();
    const int idleSeconds = args.value(2, QStringLiteral("60")).toInt();
    const QString program = QStringLiteral(DESKMARK_PROGRAM);
    DesktopSwitcher desktops;
    desktops.request(0);

    Figures start;
    for (int run = 0; run < 5; ++run) {
        AgentSession agent(program);
        agent.writeDataFile(QStringLiteral("projects.json"), kDemoProjects);
        QElapsedTimer clock;
        clock.start();
        if (!agent.start() || agent.label() != QStringLiteral("Alpha")) {
            std::fprintf(stderr, "the program did not start with its title\n");
            return 1;
        }
        start.ms << clock.nsecsElapsed() / 1e6;
    }
    start.print("start to first title");

    AgentSession agent(program);
    agent.writeDataFile(QStringLiteral("projects.json"), kDemoProjects);
    if (!agent.start())
        return 1;
    Figures switching;
    for (int i = 1; i <= switches; ++i) {
        const QString expected = i % 2 ? QStringLiteral("Beta") : QStringLiteral("Alpha");
        QElapsedTimer clock;
        clock.start();
        desktops.request(i % 2);
        if (!agent.waitForLabel([&](const QString& label) { return label == expected; })) {
            std::fprintf(stderr, "switch %d: the title did not follow\n", i);
            return 1;
        }
        switching.ms << clock.nsecsElapsed() / 1e6;
    }
    switching.print("switch request to status title");

    QThread::msleep(500);
    const Usage before = Usage::of(agent.pid());
    QThread::sleep(idleSeconds);
    const Usage after = Usage::of(agent.pid());
    std::printf("idle for %d s: CPU %.3f s (%.3f %%), %.2f wake-ups per second\n", idleSeconds,
                after.cpuSeconds - before.cpuSeconds,
                100.0 * (after.cpuSeconds - before.cpuSeconds) / idleSeconds,
                double(Usage::switchesBetween(before, after)) / idleSeconds);
    return 0;
}
