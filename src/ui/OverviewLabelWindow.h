#pragma once

#include "core/overlay/OverviewLabelScreen.h"
#include "core/overlay/OverviewLabelStyle.h"

#include <QFont>
#include <QPointer>
#include <QPropertyAnimation>
#include <QWidget>

#include <chrono>

namespace deskmark {

// A borderless, click-through window over one whole screen that draws the overview
// labels of that screen: each a box in its background colour with square corners and the
// name centred in it, wrapped by character or on one line ending in an ellipsis.
class OverviewLabelWindow : public QWidget {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds fadeDuration{120};

    OverviewLabelWindow(const OverviewLabelScreen& labels, const OverviewLabelStyle& style);

    // Animates the opacity to 1 over fadeDuration. A new fade replaces one still running.
    void fadeIn();
    // Animates the opacity to 0 over fadeDuration, then hides the window.
    void fadeOut();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void fadeTo(double opacity);

    OverviewLabelScreen labels_;
    QPointer<QPropertyAnimation> fade_;
    QFont font_;
    bool singleLine_;
};

} // namespace deskmark
