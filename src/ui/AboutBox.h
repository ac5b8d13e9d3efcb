#pragma once

class QWidget;

namespace deskmark {

// The About window: the application's icon, name and version, what it does in one line,
// and its licence. Modal; returns when closed.
class AboutBox {
public:
    static void exec(QWidget* parent = nullptr);
};

} // namespace deskmark
