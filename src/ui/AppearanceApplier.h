#pragma once

#include <QPalette>
#include <QString>

namespace deskmark {

// Applies the appearance setting ("appAppearance") to the whole application: "light"
// and "dark" switch to the Fusion style with a light or a dark palette; "auto" and any
// unknown text bring back the style and palette the platform gave the application.
// Construct it once, after the QApplication and before anything else changes the
// style, so that it can remember those originals.
class AppearanceApplier {
public:
    AppearanceApplier();

    void apply(const QString& appearanceRaw);

    static QPalette lightPalette();
    static QPalette darkPalette();

private:
    enum class Mode { Platform, Light, Dark };

    QString platformStyle_;
    QPalette platformPalette_;
    Mode mode_ = Mode::Platform;
};

} // namespace deskmark
