// Times the bookmark popup from the moment the hot key's action runs to the list painted
// on screen: the model built from the project, the window laid out, mapped by the window
// manager and its list drawn. The median of 100 openings with 50 and with 1,000 bookmarks.
// Needs an X display: run it under tests/x11/xsession.sh.
//   tests/x11/xsession.sh build/bench/bench/bench_bookmark_popup [OPENINGS]

#include "core/bookmarks/AppCandidateStore.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "core/model/ProjectStore.h"
#include "core/model/SettingsStore.h"
#include "platform/fake/FakeScheduler.h"
#include "platform/fake/FakeWorkspace.h"
#include "platform/fake/MemoryDefaults.h"
#include "ui/BookmarkPopupCoordinator.h"
#include "ui/BookmarkPopupView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QListView>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace deskmark;

namespace {

// Notes when the list has painted.
class PaintWatcher : public QObject {
public:
    bool painted = false;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            painted = true;
        return false;
    }
};

double median(QList<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double timeOpenings(int bookmarks, int openings) {
    QTemporaryDir dir;
    FakeWorkspace desktop;
    FakeScheduler scheduler;
    MemoryDefaults defaults;
    SettingsStore settings(defaults, SettingsStore::PlatformDefaults{});
    ProjectStore projects(dir.path());
    AppCandidateStore candidates(desktop, settings);
    BookmarkOpener::install(desktop, desktop, desktop, scheduler);
    projects.set(QStringLiteral("Bench"), std::nullopt, QStringLiteral("desktop-1"));
    const QUuid project = projects.projectForSpace(QStringLiteral("desktop-1"))->id;
    for (int i = 0; i < 8; ++i)
        projects.addGroup(QStringLiteral("Group %1").arg(i), project);
    for (int i = 0; i < bookmarks; ++i) {
        const bool file = i % 3 == 0;
        projects.addBookmark({QUuid::createUuid(), file ? Bookmark::Kind::File : Bookmark::Kind::Url,
                              QString(),
                              file ? QStringLiteral("/tmp/bench-%1").arg(i)
                                   : QStringLiteral("https://example.com/page/%1").arg(i),
                              i % 4 == 0 ? std::nullopt : std::optional(QStringLiteral("Group %1").arg(i % 8)),
                              std::nullopt},
                             project);
    }
    QList<double> times;
    for (int i = 0; i < openings; ++i) {
        QElapsedTimer clock;
        clock.start();
        auto model = std::make_unique<BookmarkPopupModel>(
            BookmarkPopupModel::Services{projects, settings, candidates, scheduler},
            QStringLiteral("desktop-1"), std::nullopt, std::nullopt);
        BookmarkPopupCoordinator popup(std::move(model), settings,
                                       BookmarkAnchor{BookmarkAnchor::Corner::TopLeft, {100, 100}}, {});
        PaintWatcher watcher;
        popup.window()->findChild<QListView*>()->viewport()->installEventFilter(&watcher);
        popup.present();
        while (!watcher.painted)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        times << clock.nsecsElapsed() / 1e6;
    }
    return median(times);
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const int openings = argc > 1 ? std::max(1, atoi(argv[1])) : 100;
    for (const int bookmarks : {50, 1000})
        std::printf("hot key action → popup painted, %d bookmarks: median %.1f ms over %d openings\n",
                    bookmarks, timeOpenings(bookmarks, openings), openings);
    return 0;
}
