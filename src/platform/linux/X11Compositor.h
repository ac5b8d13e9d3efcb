#pragma once

namespace deskmark {

// Whether a compositing manager runs on the X screen the program uses: only then are
// translucent windows blended with what lies below them, instead of drawn over black.
class X11Compositor {
public:
    static bool isRunning();
};

} // namespace deskmark
