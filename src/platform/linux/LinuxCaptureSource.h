#pragma once

#include "core/bookmarks/CaptureSource.h"
#include "platform/linux/X11WindowProperties.h"

#include <memory>

namespace deskmark {

class AtSpiReader;
class GioWorkspace;

// What the active window shows, read the Linux way: browsers' tabs over the accessibility
// bus, Nautilus's folder from its FileManager1 window locations, other file managers'
// location bars over the accessibility bus, a terminal's folder from its shell's working
// directory; a path written in the window title where nothing else answers.
//
// The active window is read from the X server; without X11 windows to read (a Wayland
// session, where no client may look at another's windows) there is no active
// application, so capturing reports that it is not supported.
class LinuxCaptureSource : public CaptureSource {
public:
    LinuxCaptureSource(const GioWorkspace& workspace, bool readX11Windows);
    ~LinuxCaptureSource() override;

    std::optional<RunningApp> frontmostApp() const override;
    std::optional<Page> browserPage(const RunningApp& app) override;
    std::optional<QString> fileManagerLocation(const RunningApp& app) override;
    std::optional<QString> terminalFolder(const RunningApp& app) override;

    // The working directory of the one shell that the process pid runs on a terminal;
    // none when it runs none or several.
    static std::optional<QString> shellFolder(qint64 pid);
    // The first existing folder written in a title as an absolute or "~" path.
    static std::optional<QString> folderInTitle(const QString& title);

private:
    QString windowTitle(const RunningApp& app) const;
    std::optional<QString> titleFolder(const RunningApp& app) const;

    const GioWorkspace& workspace_;
    std::unique_ptr<X11WindowProperties> x11_; // null: no X11 windows to read
    std::unique_ptr<AtSpiReader> accessibility_;
};

} // namespace deskmark
