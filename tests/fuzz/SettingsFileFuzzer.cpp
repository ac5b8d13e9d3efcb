// settings.json through the settings store and the corner label layout: whatever the
// file holds, every display's label fits its monitor, and the values of a file that
// decodes survive the store's first write unchanged.
#include "FuzzFolder.h"
#include "core/model/JsonReader.h"
#include "core/model/SettingsStore.h"
#include "core/overlay/CornerLabelLayout.h"
#include "core/overlay/CornerOverlayController.h"
#include "platform/fake/FakeLabelTextMeasurer.h"
#include "platform/linux/SettingsFile.h"

#include <QJsonObject>

using namespace deskmark;

namespace {

// Two monitors of different sizes below a panel, and a tiny one.
const QRectF kVisibleFrames[] = {{0, 32, 1920, 1048}, {1920, 0, 1280, 1024}, {0, 0, 64, 48}};

void layOutLabels(const SettingsStore& settings, const QStringList& displays) {
    static const FakeLabelTextMeasurer measurer;
    for (const QString& display : displays) {
        const CornerLabelStyle style = CornerOverlayController::style(settings, display);
        for (const QRectF& visible : kVisibleFrames) {
            const auto geometry =
                CornerLabelLayout::layout(QStringLiteral("Deskmark"), style, visible, measurer);
            // (Within rounding: right() adds the width back to the left edge.)
            fuzz::require(visible.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(geometry.frame),
                          "the label fits its monitor");
            fuzz::require(QRectF(geometry.frame.toAlignedRect()).intersects(visible),
                          "the window covers the label");
            const QRectF moved = CornerLabelLayout::offset(
                geometry.base, settings.cornerOffsetX(display), settings.cornerOffsetY(display),
                settings.cornerMargin(display), visible);
            fuzz::require(moved == geometry.frame, "moving by the offsets lands alike");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::FuzzFolder& folder = fuzz::FuzzFolder::shared();
    folder.reset("settings.json", data, size);
    const QString path = folder.file("settings.json");
    const QByteArray text(reinterpret_cast<const char*>(data), qsizetype(size));
    const auto document = JsonReader::strictDocument(text);
    const QJsonObject stored = document ? document->object() : QJsonObject();

    SettingsFile file(path);
    const SettingsStore settings(file, {QStringLiteral("terminal"), {}, false});
    // The displays the file names, and one it does not.
    QStringList displays{QStringLiteral("unknown")};
    displays << settings.cornerFontSizeByDisplay().keys()
             << settings.cornerMarginByDisplay().keys();
    layOutLabels(settings, displays.mid(0, 8));

    if (!document || !document->isObject())
        return 0;
    const SettingsFile reread(path);
    for (auto it = stored.begin(); it != stored.end(); ++it) {
        if (it.key() != QLatin1String("cornerOverridesByDisplay"))
            fuzz::require(reread.value(it.key()) == it.value(), "every value kept");
    }
    return 0;
}
