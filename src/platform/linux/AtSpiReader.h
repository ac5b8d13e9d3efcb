#pragma once

#include "core/bookmarks/CaptureSource.h"

#include <QString>
#include <QtGlobal>

#include <optional>

namespace deskmark {

// Reads what another program's window shows over the accessibility bus (AT-SPI over
// D-Bus). The window is the one of the process pid titled windowTitle (else its active
// one); nothing is found when the process does not answer on the bus.
class AtSpiReader {
public:
    // A browser's selected tab: the address of the document it shows (its "DocURL"
    // attribute) and the tab's name.
    std::optional<CaptureSource::Page> selectedPage(qint64 pid, const QString& windowTitle);
    // A file manager's folder: the first text field that holds the path of a folder (its
    // location bar).
    std::optional<QString> shownFolder(qint64 pid, const QString& windowTitle);

private:
    // Switches the session's accessibility on (once per run; the session keeps it in the
    // user's settings), so browsers started from now on answer.
    void enableAccessibility();

    bool enableTried_ = false;
};

} // namespace deskmark
