#pragma once

#include <QString>

class QWidget;

namespace deskmark {

// Lets the user pick any installed application by its desktop entry.
class ApplicationChooser {
public:
    // The chosen entry's path, or empty when the user cancelled.
    static QString choose(QWidget* parent);
};

} // namespace deskmark
