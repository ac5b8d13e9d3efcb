#pragma once

#include "core/bookmarks/CaptureSource.h"

#include <QString>
#include <QtGlobal>

#include <optional>

namespace deskmark {

// Reads a browser's selected tab over the accessibility bus (AT-SPI over D-Bus): the
// address of the document it shows (its "DocURL" attribute) and the tab's name.
class AtSpiBrowserReader {
public:
    // The page shown in the window titled windowTitle of the process pid; none when the
    // process does not answer on the accessibility bus or shows no document.
    std::optional<CaptureSource::Page> selectedPage(qint64 pid, const QString& windowTitle);

private:
    // Switches the session's accessibility on (once per run; the session keeps it in the
    // user's settings), so browsers started from now on answer.
    void enableAccessibility();

    bool enableTried_ = false;
};

} // namespace deskmark
