#pragma once

#include <QObject>
#include <QStringList>

namespace deskmark {

class DesktopNamer;
class ProjectStore;
class SettingsStore;
class SpaceStore;
class WindowServer;

// Shows project names in the window manager's own pager, desktop menu and overview by
// writing them as the desktops' names. Desktops without a project keep the name they had.
// Switching it on remembers the names found then (in the settings, so a restart keeps
// them); switching it off writes those names back.
class PagerNameSync : public QObject {
    Q_OBJECT
public:
    PagerNameSync(SettingsStore& settings, const ProjectStore& projects, const SpaceStore& spaces,
                  const WindowServer& windowServer, DesktopNamer& namer, QObject* parent = nullptr);

    // The names for desktops showing `spaces` in order: each one's project name, else the
    // name found for it. Names found for desktops beyond these stay; no empty name is
    // added at the end.
    static QStringList names(const QStringList& spaces, const ProjectStore& projects,
                             const QStringList& found);

    bool isEnabled() const;
    void setEnabled(bool on);
    // Writes the names when they differ from the window manager's; nothing while off.
    void sync();

private:
    SettingsStore& settings_;
    const ProjectStore& projects_;
    const SpaceStore& spaces_;
    DesktopNamer& namer_;
};

} // namespace deskmark
