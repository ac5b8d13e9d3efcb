// The writer the crash test kills:
//   store_crash_driver <folder> [start]
// starts as the program does (removing what an interrupted save left behind), then,
// unless told to stop after that, saves state 1, 2, 3, … of the projects and the presets
// in the folder, continuing from the state the projects file holds. After both stores of
// a state are saved, it prints the state's number on a line of its own.
#include "core/model/PresetStore.h"
#include "core/model/ProjectStore.h"
#include "core/model/StoreFile.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>
#include <cstring>

using namespace deskmark;

int main(int argc, char* argv[]) {
    if (argc < 2)
        return 2;
    QCoreApplication app(argc, argv);
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    for (const char* name : {"projects.json", "presets.json"})
        StoreFile::removeStaleTemporaries(folder.filePath(QLatin1String(name)));
    if (argc > 2 && std::strcmp(argv[2], "start") == 0)
        return 0;

    ProjectStore projects(folder.path());
    PresetStore presets(folder.path());
    const QString space = QStringLiteral("space");
    ColorPreset preset =
        presets.presets().size() > 1 ? presets.presets().last() : presets.addPreset();
    qlonglong state = projects.nameForSpace(space)
                          .value_or(QString())
                          .section(QLatin1Char('.'), 0, 0)
                          .toLongLong();
    for (;;) {
        ++state;
        // Names of growing length, so that files change size as well as content.
        const QString name = QString::number(state) + QString(int(state % 50), QLatin1Char('.'));
        projects.setName(name, space);
        preset.name = name;
        presets.updatePreset(preset);
        std::printf("%lld\n", state);
        std::fflush(stdout);
    }
}
