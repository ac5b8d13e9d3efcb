#include "ui/AppearanceApplier.h"

#include <QApplication>
#include <QStyle>

namespace deskmark {

namespace {
struct PaletteColors {
    QColor window, windowText, base, alternateBase, text, placeholder, button, buttonText;
    QColor light, midlight, mid, dark, shadow;
    QColor highlight, highlightedText, link, linkVisited, toolTipBase, toolTipText;
    QColor disabledText, disabledBase, disabledButton, disabledHighlight, disabledHighlightedText;
};

QPalette makePalette(const PaletteColors& c) {
    QPalette p;
    for (const QPalette::ColorGroup group :
         {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const bool disabled = group == QPalette::Disabled;
        p.setColor(group, QPalette::Window, c.window);
        p.setColor(group, QPalette::WindowText, disabled ? c.disabledText : c.windowText);
        p.setColor(group, QPalette::Base, disabled ? c.disabledBase : c.base);
        p.setColor(group, QPalette::AlternateBase, c.alternateBase);
        p.setColor(group, QPalette::Text, disabled ? c.disabledText : c.text);
        p.setColor(group, QPalette::PlaceholderText, c.placeholder);
        p.setColor(group, QPalette::Button, disabled ? c.disabledButton : c.button);
        p.setColor(group, QPalette::ButtonText, disabled ? c.disabledText : c.buttonText);
        p.setColor(group, QPalette::BrightText, QColor(255, 255, 255));
        p.setColor(group, QPalette::Light, c.light);
        p.setColor(group, QPalette::Midlight, c.midlight);
        p.setColor(group, QPalette::Mid, c.mid);
        p.setColor(group, QPalette::Dark, c.dark);
        p.setColor(group, QPalette::Shadow, c.shadow);
        p.setColor(group, QPalette::Highlight, disabled ? c.disabledHighlight : c.highlight);
        p.setColor(group, QPalette::HighlightedText,
                   disabled ? c.disabledHighlightedText : c.highlightedText);
        p.setColor(group, QPalette::Link, c.link);
        p.setColor(group, QPalette::LinkVisited, c.linkVisited);
        p.setColor(group, QPalette::ToolTipBase, c.toolTipBase);
        p.setColor(group, QPalette::ToolTipText, c.toolTipText);
    }
    return p;
}
} // namespace

AppearanceApplier::AppearanceApplier()
    : platformStyle_(QApplication::style()->name()), platformPalette_(QApplication::palette()) {}

void AppearanceApplier::apply(const QString& appearanceRaw) {
    const Mode mode = appearanceRaw == QLatin1String("light")  ? Mode::Light
                      : appearanceRaw == QLatin1String("dark") ? Mode::Dark
                                                               : Mode::Platform;
    if (mode == mode_)
        return;
    mode_ = mode;
    switch (mode) {
    case Mode::Platform:
        QApplication::setStyle(platformStyle_);
        QApplication::setPalette(platformPalette_);
        break;
    case Mode::Light:
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(lightPalette());
        break;
    case Mode::Dark:
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(darkPalette());
        break;
    }
}

QPalette AppearanceApplier::lightPalette() {
    return makePalette({
        .window = QColor(0xef, 0xef, 0xef),
        .windowText = QColor(0x1e, 0x1e, 0x1e),
        .base = QColor(0xff, 0xff, 0xff),
        .alternateBase = QColor(0xf5, 0xf5, 0xf5),
        .text = QColor(0x1e, 0x1e, 0x1e),
        .placeholder = QColor(0x76, 0x76, 0x76),
        .button = QColor(0xef, 0xef, 0xef),
        .buttonText = QColor(0x1e, 0x1e, 0x1e),
        .light = QColor(0xff, 0xff, 0xff),
        .midlight = QColor(0xf7, 0xf7, 0xf7),
        .mid = QColor(0xb8, 0xb8, 0xb8),
        .dark = QColor(0x9f, 0x9f, 0x9f),
        .shadow = QColor(0x76, 0x76, 0x76),
        .highlight = QColor(0x2a, 0x6f, 0xb8),
        .highlightedText = QColor(0xff, 0xff, 0xff),
        .link = QColor(0x00, 0x5a, 0xb4),
        .linkVisited = QColor(0x6b, 0x3f, 0xa0),
        .toolTipBase = QColor(0xff, 0xff, 0xdc),
        .toolTipText = QColor(0x00, 0x00, 0x00),
        .disabledText = QColor(0x8c, 0x8c, 0x8c),
        .disabledBase = QColor(0xef, 0xef, 0xef),
        .disabledButton = QColor(0xef, 0xef, 0xef),
        .disabledHighlight = QColor(0x91, 0x91, 0x91),
        .disabledHighlightedText = QColor(0xff, 0xff, 0xff),
    });
}

QPalette AppearanceApplier::darkPalette() {
    return makePalette({
        .window = QColor(0x32, 0x32, 0x32),
        .windowText = QColor(0xe6, 0xe6, 0xe6),
        .base = QColor(0x24, 0x24, 0x24),
        .alternateBase = QColor(0x2c, 0x2c, 0x2c),
        .text = QColor(0xe6, 0xe6, 0xe6),
        .placeholder = QColor(0x8c, 0x8c, 0x8c),
        .button = QColor(0x3c, 0x3c, 0x3c),
        .buttonText = QColor(0xe6, 0xe6, 0xe6),
        .light = QColor(0x55, 0x55, 0x55),
        .midlight = QColor(0x46, 0x46, 0x46),
        .mid = QColor(0x28, 0x28, 0x28),
        .dark = QColor(0x1e, 0x1e, 0x1e),
        .shadow = QColor(0x0f, 0x0f, 0x0f),
        .highlight = QColor(0x2a, 0x6f, 0xb8),
        .highlightedText = QColor(0xff, 0xff, 0xff),
        .link = QColor(0x6c, 0xb4, 0xff),
        .linkVisited = QColor(0xc0, 0x9c, 0xf0),
        .toolTipBase = QColor(0x1e, 0x1e, 0x1e),
        .toolTipText = QColor(0xe6, 0xe6, 0xe6),
        .disabledText = QColor(0x80, 0x80, 0x80),
        .disabledBase = QColor(0x2c, 0x2c, 0x2c),
        .disabledButton = QColor(0x35, 0x35, 0x35),
        .disabledHighlight = QColor(0x4a, 0x4a, 0x4a),
        .disabledHighlightedText = QColor(0xa0, 0xa0, 0xa0),
    });
}

} // namespace deskmark
