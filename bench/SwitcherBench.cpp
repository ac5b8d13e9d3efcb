// Times the switcher on a live X display with an EWMH window manager:
//   - the switcher's hot-key action to the panel mapped and painted (100 openings),
//     and the paints each opening costs once the panel's code and fonts are warm;
//   - Return in the open panel to _NET_CURRENT_DESKTOP changed and the new title
//     known (200 switches between two named desktops).
// Run it under tests/x11/xsession.sh:
//
//   tests/x11/xsession.sh build/bench/bench/bench_switcher

#include "core/app/QtScheduler.h"
#include "core/model/ProjectStore.h"
#include "core/spaces/SpaceStore.h"
#include "core/switcher/DirectSwitchDriver.h"
#include "core/switcher/SpaceSwitcher.h"
#include "core/switcher/SpaceSwitcherController.h"
#include "platform/linux/X11WindowServer.h"
#include "ui/SpaceSwitcherPanel.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace deskmark;

namespace {

constexpr int kOpenings = 100;
constexpr int kSwitches = 200;

void report(const char* what, std::vector<double> ms) {
    std::sort(ms.begin(), ms.end());
    std::printf("%-44s median %7.2f ms   p90 %7.2f ms   worst %7.2f ms   (%zu runs)\n", what,
                ms[ms.size() / 2], ms[ms.size() * 9 / 10], ms.back(), ms.size());
}

// Spins the event loop until done() or the timeout; false on timeout.
template <typename Done> bool waitFor(Done done, int timeoutMs = 5000) {
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    }
    return true;
}

} // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        std::fprintf(stderr, "bench_switcher needs an X display; run it under "
                             "tests/x11/xsession.sh\n");
        return 2;
    }
    QApplication app(argc, argv);
    QTemporaryDir folder;
    X11WindowServer server;
    SpaceStore spaces(server);
    QtScheduler scheduler;
    ProjectStore projects(folder.path());
    projects.setName(QStringLiteral("Mail"), QStringLiteral("desktop-1"));
    projects.setName(QStringLiteral("dev-server"), QStringLiteral("desktop-2"));
    const SwitchDebugLog log(folder.filePath(QStringLiteral("swdbg.log")), false);
    DirectSwitchDriver driver(server, spaces, scheduler, log);
    SpaceSwitcher switcher(spaces, projects, driver, scheduler, log);
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    if (spaces.displays().isEmpty() || !server.requestDesktop(0)) {
        std::fprintf(stderr, "no EWMH desktops\n");
        return 1;
    }

    QPointer<SpaceSwitcherPanel> panel;
    std::optional<std::pair<QString, QString>> chosen;
    int paints = 0;
    // What the program's switcher hot key does.
    const auto open = [&] {
        chosen.reset();
        SpaceSwitcherController::Callbacks callbacks;
        callbacks.commit = [&](const QString& space, const QString& display) {
            panel->close();
            chosen = {space, display};
            scheduler.after(std::chrono::milliseconds{0}, &app,
                            [&switcher, space, display] { switcher.switchSpace(space, display); });
        };
        callbacks.cancel = [&] { panel->close(); };
        panel = new SpaceSwitcherPanel(
            std::make_unique<SpaceSwitcherController>(spaces.displays(), projects,
                                                      spaces.mainDisplayUUID(), QHash<QString, QString>{},
                                                      QPointF(), std::move(callbacks)),
            {}, false);
        QObject::connect(panel, &SpaceSwitcherPanel::painted, [&paints] { ++paints; });
        panel->present(area);
    };

    std::vector<double> opening;
    int warmPaints = 0;
    for (int run = 0; run < kOpenings; ++run) {
        paints = 0;
        QElapsedTimer clock;
        clock.start();
        open();
        if (!waitFor([&] { return paints > 0; })) {
            std::fprintf(stderr, "opening %d: the panel was not painted\n", run);
            return 1;
        }
        opening.push_back(double(clock.nsecsElapsed()) / 1e6);
        waitFor([&] { return false; }, 100); // let later paints of this opening arrive
        if (run > 0)
            warmPaints += paints;
        panel->close();
        waitFor([&] { return panel.isNull(); });
    }
    report("hot key to panel painted", opening);
    std::printf("%-44s %.2f\n", "paints per warm opening", double(warmPaints) / (kOpenings - 1));

    std::vector<double> switching;
    for (int i = 1; i <= kSwitches; ++i) {
        const QString wanted = i % 2 ? QStringLiteral("desktop-2") : QStringLiteral("desktop-1");
        open();
        waitFor([&] { return paints > 0; });
        auto* field = panel->findChild<QLineEdit*>();
        // Narrow the list to the wanted desktop, as a user types its name.
        const QString name = *projects.nameForSpace(wanted);
        panel->controller().setQuery(name.left(3));
        QString title;
        const QMetaObject::Connection watch =
            QObject::connect(&server, &WindowServer::activeSpaceChanged, [&] {
                const auto current = spaces.currentSpace(*spaces.mainDisplayUUID());
                if (current == wanted)
                    title = projects.nameForSpace(*current).value_or(QString());
            });
        QElapsedTimer clock;
        clock.start();
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(field, &press);
        if (!waitFor([&] { return !title.isEmpty(); })) {
            std::fprintf(stderr, "switch %d: the desktop did not change\n", i);
            return 1;
        }
        switching.push_back(double(clock.nsecsElapsed()) / 1e6);
        QObject::disconnect(watch);
        waitFor([&] { return panel.isNull(); });
    }
    report("Return to desktop changed and title known", switching);
    return 0;
}
