// Times the running program in an i3 session with two outputs, as a user meets it: a
// workspace switch on the left output (the `workspace` command sent over i3's socket),
// the workspace event it causes, and from that event to
//   - the status item's new title announced on D-Bus,
//   - the left output's corner label resized for the new name,
// over 200 switches by default (target: event to both updated, median <= 10 ms).
// Run it in an i3 session with a session bus of its own:
//   dbus-run-session -- tests/x11/i3session.sh build/bench/bench/bench_i3_agent [SWITCHES]

#include "AgentSession.h"
#include "BenchFigures.h"

#include "core/spaces/I3IpcCodec.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QHash>
#include <QLocalSocket>
#include <QProcess>
#include <QSocketNotifier>
#include <QTimer>

#include <xcb/xcb.h>

#include <cstdio>
#include <cstdlib>
#include <optional>

using namespace deskmark;

namespace {

const QByteArray kProjects =
    R"({"version":1,"projects":[)"
    R"({"id":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D01","name":"mail"},)"
    R"({"id":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D02","name":"code review"}],)"
    R"("assignments":{"workspace:1:mail":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D01",)"
    R"("workspace:2:code":"5C0B4A4E-7D1A-4C53-9E0B-6F1D2B3C4D02"}})";

QElapsedTimer clock_;

double now() { return clock_.nsecsElapsed() / 1e6; }

// A connection of our own to i3: sends commands, notes when workspace events arrive.
class I3Link {
public:
    bool connectToI3() {
        QProcess path;
        path.start(QStringLiteral("i3"), {QStringLiteral("--get-socketpath")});
        path.waitForFinished();
        socket_.connectToServer(QString::fromLocal8Bit(path.readAllStandardOutput().trimmed()));
        if (!socket_.waitForConnected(2000))
            return false;
        QObject::connect(&socket_, &QLocalSocket::readyRead, [this] {
            codec_.feed(socket_.readAll());
            while (const auto message = codec_.next()) {
                if (message->isEvent && message->type == I3IpcCodec::WorkspaceEvent && !event)
                    event = now();
            }
        });
        socket_.write(I3IpcCodec::encode(I3IpcCodec::Subscribe, R"(["workspace"])"));
        return true;
    }
    void run(const QByteArray& command) {
        event.reset();
        socket_.write(I3IpcCodec::encode(I3IpcCodec::RunCommand, command));
        socket_.flush();
    }
    std::optional<double> event;

private:
    QLocalSocket socket_;
    I3IpcCodec codec_;
};

// Notes when an override-redirect window on the left output (the corner label) is
// configured or mapped.
class LabelWatch {
public:
    LabelWatch() : connection_(xcb_connect(nullptr, nullptr)) {
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_, root, XCB_CW_EVENT_MASK, &mask);
        xcb_flush(connection_);
        notifier_ = new QSocketNotifier(xcb_get_file_descriptor(connection_), QSocketNotifier::Read);
        QObject::connect(notifier_, &QSocketNotifier::activated, [this] { read(); });
    }
    ~LabelWatch() {
        delete notifier_;
        xcb_disconnect(connection_);
    }
    void read() {
        while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
            const auto* configure = reinterpret_cast<xcb_configure_notify_event_t*>(event);
            if ((event->response_type & 0x7F) == XCB_CONFIGURE_NOTIFY &&
                configure->override_redirect && configure->x < 1280 && !changed &&
                isDeskmarks(configure->window))
                changed = now();
            std::free(event);
        }
    }
    std::optional<double> changed;

private:
    // i3's own frames are override-redirect too; ours have the class Deskmark.
    bool isDeskmarks(xcb_window_t window) {
        const auto known = deskmarks_.constFind(window);
        if (known != deskmarks_.constEnd())
            return *known;
        auto* reply = xcb_get_property_reply(
            connection_,
            xcb_get_property(connection_, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64),
            nullptr);
        const bool ours = reply && QByteArray(static_cast<const char*>(xcb_get_property_value(reply)),
                                              xcb_get_property_value_length(reply))
                                       .contains("Deskmark");
        std::free(reply);
        deskmarks_.insert(window, ours);
        return ours;
    }

    xcb_connection_t* connection_;
    QHash<xcb_window_t, bool> deskmarks_;
    QSocketNotifier* notifier_;
};

bool spinUntil(const std::function<bool()>& done, int timeoutMs) {
    QEventLoop loop;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] {
        if (done())
            loop.quit();
    });
    tick.start(1);
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    loop.exec();
    return done();
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const int switches = QCoreApplication::arguments().value(1, QStringLiteral("200")).toInt();
    clock_.start();
    QProcess::execute(QStringLiteral("i3-msg"),
                      {QStringLiteral("-q"), QStringLiteral("workspace 1:mail; open; workspace "
                                                            "2:code; open; workspace 3:mail-log; "
                                                            "open; workspace 1:mail")});
    I3Link i3;
    if (!i3.connectToI3()) {
        std::fprintf(stderr, "no i3 to talk to: run this inside tests/x11/i3session.sh\n");
        return 1;
    }
    AgentSession agent(QStringLiteral(DESKMARK_PROGRAM));
    agent.writeDataFile(QStringLiteral("projects.json"), kProjects);
    if (!agent.start() || !agent.waitForLabel([](const QString& label) { return label == "mail"; })) {
        std::fprintf(stderr, "the program did not start with its title\n");
        return 1;
    }
    LabelWatch label;
    Figures toEvent, toTitle, toLabel, toBoth;
    for (int i = 1; i <= switches; ++i) {
        const QString expected = i % 2 ? QStringLiteral("code review") : QStringLiteral("mail");
        const qsizetype titles = agent.announcedLabels().size();
        std::optional<double> title;
        label.changed.reset();
        const double sent = now();
        i3.run(i % 2 ? "workspace 2:code" : "workspace 1:mail");
        const bool done = spinUntil(
            [&] {
                label.read();
                if (!title && agent.announcedLabels().size() > titles &&
                    agent.announcedLabels().last() == expected)
                    title = now();
                return i3.event && title && label.changed;
            },
            3000);
        if (!done) {
            std::fprintf(stderr, "switch %d: event %d, title %d, label %d\n", i, bool(i3.event),
                         bool(title), bool(label.changed));
            return 1;
        }
        toEvent.ms << *i3.event - sent;
        toTitle.ms << *title - *i3.event;
        toLabel.ms << *label.changed - *i3.event;
        toBoth.ms << std::max(*title, *label.changed) - *i3.event;
    }
    toEvent.print("workspace command to workspace event");
    toTitle.print("workspace event to status title");
    toLabel.print("workspace event to left label resized");
    toBoth.print("workspace event to title and label");
    return 0;
}
