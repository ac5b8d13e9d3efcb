#pragma once

#include "core/bookmarks/RunningApp.h"

#include <QString>

#include <optional>

namespace deskmark {

// Reads what the user is looking at in another application.
class CaptureSource {
public:
    struct Page {
        QString url;
        QString title;
    };

    virtual ~CaptureSource() = default;

    // The application whose window is active now; none when no window is active.
    virtual std::optional<RunningApp> frontmostApp() const = 0;
    // The address and title of the selected tab in the application's active window.
    virtual std::optional<Page> browserPage(const RunningApp& app) = 0;
    // The folder shown (or the item selected) in the file manager's active window.
    virtual std::optional<QString> fileManagerLocation(const RunningApp& app) = 0;
    // The working directory of the shell in the terminal's active window.
    virtual std::optional<QString> terminalFolder(const RunningApp& app) = 0;
};

} // namespace deskmark
