#pragma once

#include <QStringList>

namespace deskmark {

// The names a window manager shows for its desktops (its pager, desktop menu and
// overview), in desktop order; the list may be shorter or longer than the desktops.
class DesktopNamer {
public:
    virtual ~DesktopNamer() = default;
    virtual QStringList desktopNames() const = 0;
    // False when the names could not be written.
    virtual bool setDesktopNames(const QStringList& names) = 0;
};

} // namespace deskmark
