#include "ui/LabelFont.h"

#include <QGuiApplication>

#include <algorithm>

namespace deskmark {

namespace {

QFont::Weight qtWeight(CornerWeight weight) {
    switch (weight) {
    case CornerWeight::Thin:
        return QFont::ExtraLight;
    case CornerWeight::Light:
        return QFont::Light;
    case CornerWeight::Regular:
        return QFont::Normal;
    case CornerWeight::Medium:
        return QFont::Medium;
    case CornerWeight::Semibold:
        return QFont::DemiBold;
    case CornerWeight::Bold:
        return QFont::Bold;
    case CornerWeight::Heavy:
        return QFont::ExtraBold;
    }
    return QFont::Normal;
}

} // namespace

QFont LabelFont::font(double size, CornerWeight weight) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(std::max(1, qRound(size)));
    font.setWeight(qtWeight(weight));
    return font;
}

} // namespace deskmark
