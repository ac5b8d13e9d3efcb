#pragma once

#include <QIcon>
#include <QStyle>

namespace deskmark {

// An icon of the desktop's icon theme, or the style's own when the theme has none.
class ThemedIcon {
public:
    static QIcon get(const char* name, QStyle::StandardPixmap fallback);
};

} // namespace deskmark
