// Times the corner overlay on a live X display: from the request to switch desktops to
// both monitors' labels repainted, over 200 switches between two named desktops (median
// and worst), then counts the window operations and paints of refreshes that change
// nothing. Needs an X display with an EWMH window manager and two monitors, for example:
//
//   tests/x11/xsession.sh build/bench/bench/bench_corner_overlay

#include "core/model/PresetStore.h"
#include "core/model/ProjectStore.h"
#include "core/model/SettingsStore.h"
#include "core/overlay/CornerOverlayController.h"
#include "core/spaces/SpaceStore.h"
#include "platform/fake/MemoryDefaults.h"
#include "platform/linux/X11WindowServer.h"
#include "ui/QtCornerLabelWindows.h"
#include "ui/QtLabelTextMeasurer.h"
#include "ui/QtScreenProvider.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace deskmark;

namespace {

constexpr int kSwitches = 200;
constexpr int kIdleRefreshes = 1000;

// Passes every call on to the real windows and counts it.
class CountingWindows : public CornerLabelWindows {
public:
    explicit CountingWindows(CornerLabelWindows& inner) : inner_(inner) {}

    void show(const QString& d, const CornerLabel& l, const RgbColor& bg, double o) override {
        ++operations;
        inner_.show(d, l, bg, o);
    }
    void hide(const QString& d) override {
        ++operations;
        inner_.hide(d);
    }
    void setBackground(const QString& d, const RgbColor& bg, double o) override {
        ++operations;
        inner_.setBackground(d, bg, o);
    }
    void move(const QString& d, const QPointF& p) override {
        ++operations;
        inner_.move(d, p);
    }
    void fade(const QString& d, bool visible) override {
        ++operations;
        inner_.fade(d, visible);
    }

    int operations = 0;

private:
    CornerLabelWindows& inner_;
};

double percentile(std::vector<double> values, double p) {
    std::sort(values.begin(), values.end());
    return values[std::size_t(p * double(values.size() - 1))];
}

} // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        std::fprintf(stderr, "bench_corner_overlay needs an X display; run it under "
                             "tests/x11/xsession.sh\n");
        return 2;
    }
    QApplication app(argc, argv);
    QTemporaryDir folder;
    ProjectStore projects(folder.path());
    PresetStore presets(folder.path());
    MemoryDefaults defaults;
    SettingsStore settings(defaults, {});
    X11WindowServer server;
    SpaceStore spaces(server);
    QtScreenProvider screens;
    QtLabelTextMeasurer measurer;
    QtCornerLabelWindows qtWindows;
    CountingWindows windows(qtWindows);
    CornerOverlayController controller(projects, presets, settings, spaces, screens, windows,
                                       measurer);

    ColorPreset blue = presets.addPreset();
    projects.set(QStringLiteral("Alpha"), std::nullopt, QStringLiteral("desktop-1"));
    projects.set(QStringLiteral("Beta project"), blue.id, QStringLiteral("desktop-2"));
    QObject::connect(&server, &WindowServer::activeSpaceChanged, &app,
                     [&] { controller.refresh(); });

    QStringList displays;
    for (const ScreenInfo& screen : screens.screens()) {
        if (const auto uuid = spaces.displayUUID(screen.name))
            displays << *uuid;
    }
    if (displays.size() < 2 || !server.requestDesktop(0)) {
        std::fprintf(stderr, "needs two monitors and an EWMH window manager\n");
        return 2;
    }
    QEventLoop settle;
    QTimer::singleShot(500, &settle, &QEventLoop::quit);
    settle.exec();
    controller.refresh();

    // Both displays show "Alpha" now, so both views exist; count their paints.
    QHash<QString, int> paints;
    QEventLoop* waiting = nullptr;
    QString expected;
    const auto switchDone = [&] {
        for (const QString& display : std::as_const(displays)) {
            if (qtWindows.view(display)->label().text != expected || paints.value(display) == 0)
                return false;
        }
        return true;
    };
    for (const QString& display : std::as_const(displays)) {
        CornerLabelView* view = qtWindows.view(display);
        if (!view) {
            std::fprintf(stderr, "no label on display %s\n", qPrintable(display));
            return 2;
        }
        QObject::connect(view, &CornerLabelView::painted, &app, [&, display] {
            ++paints[display];
            if (waiting && switchDone())
                waiting->quit();
        });
    }

    std::vector<double> latencies;
    int timeouts = 0;
    for (int i = 1; i <= kSwitches; ++i) {
        const int desktop = i % 2;
        expected = desktop == 0 ? QStringLiteral("Alpha") : QStringLiteral("Beta project");
        paints.clear();
        QEventLoop wait;
        QTimer::singleShot(2000, &wait, &QEventLoop::quit);
        waiting = &wait;
        QElapsedTimer timer;
        timer.start();
        server.requestDesktop(desktop);
        wait.exec();
        waiting = nullptr;
        if (switchDone())
            latencies.push_back(double(timer.nsecsElapsed()) / 1e6);
        else
            ++timeouts;
    }

    // Refreshes with nothing changed: no window work, no paint.
    windows.operations = 0;
    paints.clear();
    std::vector<double> idle;
    for (int i = 0; i < kIdleRefreshes; ++i) {
        QElapsedTimer timer;
        timer.start();
        controller.refresh();
        idle.push_back(double(timer.nsecsElapsed()) / 1e3);
    }
    QEventLoop drain;
    QTimer::singleShot(200, &drain, &QEventLoop::quit);
    drain.exec();
    int idlePaints = 0;
    for (const int count : std::as_const(paints))
        idlePaints += count;

    std::printf("corner overlay, %d desktop switches, 2 monitors\n", kSwitches);
    if (!latencies.empty()) {
        std::printf("  switch request -> both labels repainted: median %.2f ms, p90 %.2f ms, "
                    "worst %.2f ms (target: median <= 16 ms)\n",
                    percentile(latencies, 0.5), percentile(latencies, 0.9),
                    percentile(latencies, 1.0));
    }
    std::printf("  switches without a repaint within 2 s: %d\n", timeouts);
    std::printf("  unchanged refresh: %d window operations and %d paints over %d refreshes "
                "(expected 0); median %.1f us per refresh\n",
                windows.operations, idlePaints, kIdleRefreshes, percentile(idle, 0.5));
    return 0;
}
