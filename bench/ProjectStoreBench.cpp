// Times the project store at a size far beyond normal use: 1,000 projects with 50
// bookmarks each. Prints the median and the worst of 20 runs of load, save and setName.

#include "core/model/BookmarkOrder.h"
#include "core/model/ProjectFileCodec.h"
#include "core/model/ProjectStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>

using namespace deskmark;

namespace {

constexpr int kProjects = 1000;
constexpr int kBookmarksPerProject = 50;
constexpr int kRuns = 20;

ProjectFileCodec::Document largeDocument() {
    ProjectFileCodec::Document document;
    const QStringList groups{"Docs", "Issues", "Design", "Builds"};
    for (int p = 0; p < kProjects; ++p) {
        Project project{
            QUuid::createUuid(), QStringLiteral("Project %1").arg(p), std::nullopt, {}, groups};
        if (p % 3 == 0)
            project.presetID = QStringLiteral("preset-%1").arg(p % 7);
        for (int b = 0; b < kBookmarksPerProject; ++b) {
            Bookmark bookmark;
            bookmark.id = QUuid::createUuid();
            bookmark.kind = b % 4 == 0 ? Bookmark::Kind::File : Bookmark::Kind::Url;
            bookmark.label = QStringLiteral("ブックマーク %1 of project %2").arg(b).arg(p);
            bookmark.target =
                bookmark.kind == Bookmark::Kind::File
                    ? QStringLiteral("~/Projects/p%1/notes/file %2.md").arg(p).arg(b)
                    : QStringLiteral("https://example.com/p/%1/page?id=%2").arg(p).arg(b);
            if (b % 5 != 0)
                bookmark.group = groups[b % groups.size()];
            if (b % 7 == 0)
                bookmark.appBundleID = QStringLiteral("org.mozilla.firefox");
            project.bookmarks.append(bookmark);
        }
        // As the store writes it: in group order.
        project.bookmarks =
            BookmarkOrder::groupedOrder(std::move(project.bookmarks), project.groups);
        document.assignments.insert(QStringLiteral("desktop-%1").arg(p + 1), project.id);
        document.projects.append(project);
    }
    return document;
}

// Times run() kRuns times; afterwards() runs untimed after each. Besides the wall-clock
// figures the median processor time is shown, which a busy machine disturbs less.
void report(
    const char* what, const std::function<void()>& run,
    const std::function<void()>& afterwards = [] {}) {
    QList<double> wall;
    QList<double> cpu;
    for (int i = 0; i < kRuns; ++i) {
        QElapsedTimer timer;
        const std::clock_t cpuStart = std::clock();
        timer.start();
        run();
        wall.append(double(timer.nsecsElapsed()) / 1e6);
        cpu.append(double(std::clock() - cpuStart) * 1000 / CLOCKS_PER_SEC);
        afterwards();
    }
    const auto median = [](QList<double> times) {
        std::sort(times.begin(), times.end());
        return (times[kRuns / 2 - 1] + times[kRuns / 2]) / 2;
    };
    std::printf("%-8s median %7.2f ms   worst %7.2f ms   (processor time: median %7.2f ms)\n", what,
                median(wall), *std::max_element(wall.cbegin(), wall.cend()), median(cpu));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    {
        QFile file(QDir(dir.path()).filePath(QStringLiteral("projects.json")));
        const QByteArray data = *ProjectFileCodec::encode(largeDocument());
        if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size())
            return 1;
        std::printf("projects.json: %d projects x %d bookmarks, %.1f MB\n", kProjects,
                    kBookmarksPerProject, double(data.size()) / 1e6);
    }

    std::unique_ptr<ProjectStore> loaded;
    report(
        "load", [&] { loaded = std::make_unique<ProjectStore>(dir.path()); },
        [&] { loaded.reset(); });

    ProjectStore store(dir.path());
    const Project first = store.projects().first();
    // assign() of an existing assignment changes nothing but still writes the file whole.
    report("save", [&] { store.assign(first.id, QStringLiteral("desktop-1")); });

    int run = 0;
    report("setName", [&] {
        store.setName(QStringLiteral("Renamed %1").arg(++run), QStringLiteral("desktop-500"));
    });
    return 0;
}
