#pragma once

#include <QColor>
#include <QImage>
#include <QSize>

class QIcon;

namespace deskmark {

// The status item's monochrome icon as a panel shows it: the glyph's shape in the colour
// that stands out on the panel, since a panel item cannot rely on the host to tint it.
class PanelIcon {
public:
    // The shape of `icon` (its alpha, whatever its colours) filled with `color`, `size`
    // pixels, aspect ratio kept and centred. A null image for a null icon.
    static QImage tinted(const QIcon& icon, const QSize& size, const QColor& color);

    // Near-white on a dark background, near-black on a light one, by relative luminance.
    static QColor foregroundOn(const QColor& background);
};

} // namespace deskmark
