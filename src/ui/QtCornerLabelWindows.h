#pragma once

#include "core/overlay/CornerLabelWindows.h"
#include "ui/CornerLabelView.h"

#include <map>
#include <memory>

namespace deskmark {

// One CornerLabelView per display, made on its first show and kept for the whole run.
// With a placer (Wayland), the window manager places the windows, keyed by display.
class QtCornerLabelWindows : public CornerLabelWindows {
public:
    explicit QtCornerLabelWindows(WindowPlacer* placer = nullptr) : placer_(placer) {}

    void show(const QString& displayUUID, const CornerLabel& label, const RgbColor& background,
              double bgOpacity) override;
    void hide(const QString& displayUUID) override;
    void setBackground(const QString& displayUUID, const RgbColor& background,
                       double bgOpacity) override;
    void move(const QString& displayUUID, const QPointF& topLeft) override;
    void fade(const QString& displayUUID, bool visible) override;

    // The display's view; null before its first show.
    CornerLabelView* view(const QString& displayUUID) const;

private:
    WindowPlacer* placer_;
    std::map<QString, std::unique_ptr<CornerLabelView>> views_;
};

} // namespace deskmark
