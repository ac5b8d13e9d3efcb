#pragma once

#include "core/overlay/CornerLabelWindows.h"
#include "ui/CornerLabelView.h"

#include <map>
#include <memory>

namespace deskmark {

// One CornerLabelView per display, made on its first show and kept for the whole run.
class QtCornerLabelWindows : public CornerLabelWindows {
public:
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
    std::map<QString, std::unique_ptr<CornerLabelView>> views_;
};

} // namespace deskmark
