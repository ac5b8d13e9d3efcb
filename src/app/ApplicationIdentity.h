#pragma once

class QApplication;

namespace deskmark {

// How the running program presents itself to the desktop: the desktop file that names
// it (window managers and panels group its windows and find its icon by that), the icon
// of its windows, and Qt's own texts (context menus, standard buttons) in the interface
// language.
class ApplicationIdentity {
public:
    static constexpr const char* kDesktopFileName = "io.github.deskmark.Deskmark";

    // Call once the interface language is known, before any window is made.
    static void apply(QApplication& application, bool japanese);
};

} // namespace deskmark
