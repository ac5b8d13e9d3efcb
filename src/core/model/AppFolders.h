#pragma once

#include <QString>

namespace deskmark {

// Where Deskmark keeps its files: the data folder holds projects.json, presets.json,
// the legacy names.json with its backup and the instance lock; the config folder
// holds settings.json. Both follow the XDG base directories.
namespace AppFolders {
QString dataFolder();   // $XDG_DATA_HOME/Deskmark, default ~/.local/share/Deskmark
QString configFolder(); // $XDG_CONFIG_HOME/Deskmark, default ~/.config/Deskmark
QString autostartFolder(); // $XDG_CONFIG_HOME/autostart
// Creates the folder with its parents; a failure is left to the later reads and writes.
void ensureExists(const QString& folder);
} // namespace AppFolders

} // namespace deskmark
