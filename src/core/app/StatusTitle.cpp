#include "core/app/StatusTitle.h"

#include <QTextBoundaryFinder>

namespace deskmark {

StatusTitle StatusTitle::compute(bool showCurrentSpace, const std::optional<QString>& spaceName,
                                 bool iconAvailable) {
    if (showCurrentSpace && spaceName && !spaceName->isEmpty())
        return {shortened(*spaceName), *spaceName};
    if (iconAvailable)
        return {};
    return {QStringLiteral("\U0001F3F7"), QString()};
}

QString StatusTitle::shortened(const QString& name) {
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, name);
    qsizetype count = 0;
    qsizetype keptEnd = 0; // where the first kMaxTitleLength - 1 characters end
    while (characters.toNextBoundary() != -1) {
        ++count;
        if (count == kMaxTitleLength - 1)
            keptEnd = characters.position();
        if (count > kMaxTitleLength) {
            while (keptEnd > 0 && name.at(keptEnd - 1).isSpace())
                --keptEnd;
            return name.left(keptEnd) + QStringLiteral("\u2026");
        }
    }
    return name;
}

std::optional<QString> activeDisplayCurrentSpace(const QList<CGSDisplay>& displays,
                                                 const std::optional<QString>& statusDisplayUUID) {
    if (statusDisplayUUID) {
        for (const CGSDisplay& display : displays) {
            if (display.displayUUID == *statusDisplayUUID)
                return display.currentUUID;
        }
    }
    if (displays.isEmpty())
        return std::nullopt;
    return displays.first().currentUUID;
}

} // namespace deskmark
