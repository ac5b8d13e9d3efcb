#pragma once

#include "core/model/RgbColor.h"
#include "core/overlay/CornerLabel.h"
#include "core/overlay/WindowPlacer.h"

#include <QColor>
#include <QFont>
#include <QPainterPath>
#include <QPointer>
#include <QPropertyAnimation>
#include <QWidget>

namespace deskmark {

// One display's corner label: a borderless, click-through window above ordinary windows
// and on every desktop, drawing the name over a capsule or square background. The
// background's opacity is its own; the text is always drawn in its full colour. A label
// that is not blended with what lies below (no compositing manager) fills its whole
// window with the background, leaving the shape to the window's cut. The text
// goes where the layout put its baseline, which centres the glyphs' own extent.
//
// With a placer (Wayland), the window carries the placer's title for key and the window
// manager puts it in place after every show and move; the X11 shape cut is left out, as a
// Wayland compositor always blends.
class CornerLabelView : public QWidget {
    Q_OBJECT
public:
    explicit CornerLabelView(WindowPlacer* placer = nullptr, const QString& key = {});

    // Draws the label at its frame and puts the window on screen (unless faded out).
    void setLabel(const CornerLabel& label, const RgbColor& background, double bgOpacity);
    void setBackground(const RgbColor& background, double bgOpacity);
    void moveTo(const QPointF& topLeft);
    // Takes the window off the screen; it stays ready for the next setLabel().
    void orderOut();
    // Animates the whole window's opacity to 1 or 0; a faded-out window leaves the screen
    // when the fade ends (a screen without compositing cannot show it transparent).
    void fadeTo(bool visible, int durationMs);

    const CornerLabel& label() const { return label_; }
    // The background as drawn, its alpha being the opacity.
    const QColor& background() const { return background_; }

Q_SIGNALS:
    // A paint has just finished.
    void painted();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    // The window covers the label's frame out to whole pixels; this is where the frame
    // starts inside it.
    QPointF frameOffset() const;
    // The rounded (or square) background in window coordinates.
    QPainterPath shape() const;
    // Cuts the window to its background's shape (the X shape extension's bounding
    // region): to every pixel the shape touches for a blended label, else to exactly the
    // pixels whose centres it holds.
    void updateShape();
    // Asks the placer, if any, to put the shown window where its geometry says.
    void placeShown();

    WindowPlacer* placer_;
    CornerLabel label_;
    QFont font_;
    QColor background_;
    QPointer<QPropertyAnimation> fade_;
    bool wanted_ = false;
    bool fadedOut_ = false;
};

} // namespace deskmark
