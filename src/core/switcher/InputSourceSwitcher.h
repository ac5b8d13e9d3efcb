#pragma once

namespace deskmark {

// The desktop's input method, as far as a panel that reads typed letters needs it: while
// the panel is open, typing should give plain letters even when the user normally writes
// through an input method (Japanese, Chinese, …).
class InputSourceSwitcher {
public:
    virtual ~InputSourceSwitcher() = default;

    // When the current input source is not ASCII-capable, remembers it and selects an
    // ASCII-capable one. Does nothing where no input-method service runs.
    virtual void switchToASCIIInput() = 0;
    // Selects the remembered source again and forgets it; nothing when none is remembered.
    virtual void restorePreviousInput() = 0;
};

} // namespace deskmark
