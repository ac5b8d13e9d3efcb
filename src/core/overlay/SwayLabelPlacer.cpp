#include "core/overlay/SwayLabelPlacer.h"

#include "core/app/Scheduler.h"
#include "core/spaces/WindowManagerCommands.h"

#include <QPointer>

namespace deskmark {

namespace {
const QString titlePrefix = QStringLiteral("deskmark-label:");
} // namespace

SwayLabelPlacer::SwayLabelPlacer(WindowManagerCommands& commands, Scheduler& scheduler,
                                 QString appID, QObject* parent)
    : QObject(parent), commands_(commands), scheduler_(scheduler), appID_(std::move(appID)) {}

void SwayLabelPlacer::installRules() {
    rules_ = Rules::Asked;
    const QString labels = criteria(QLatin1Char('^') + titlePrefix);
    // The panels and dialogs float too: none of them is meant to be a tile.
    commands_.runCommand(QStringLiteral("for_window %1 floating enable; for_window %2 \"floating "
                                        "enable, sticky enable, border none\"; no_focus %2")
                             .arg(QStringLiteral("[app_id=\"%1\"]").arg(appID_), labels),
                         [self = QPointer(this)](bool installed) {
                             if (self)
                                 self->rules_ = installed ? Rules::Installed : Rules::Missing;
                         });
}

QString SwayLabelPlacer::windowTitle(const QString& key) const {
    QString title = titlePrefix;
    for (const QChar c : key) {
        if ((c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
            c == u'-')
            title += c;
        else
            for (const char byte : QString(c).toUtf8())
                title += QStringLiteral("_%1").arg(quint8(byte), 2, 16, QLatin1Char('0'));
    }
    return title;
}

void SwayLabelPlacer::place(const QString& title, const QPoint& topLeft) {
    attempt(title, topLeft, 1, ++generations_[title]);
}

QString SwayLabelPlacer::criteria(const QString& titlePattern) const {
    return QStringLiteral("[app_id=\"%1\" title=\"%2\"]").arg(appID_, titlePattern);
}

void SwayLabelPlacer::attempt(const QString& title, const QPoint& topLeft, int tries,
                              quint64 generation) {
    if (rules_ == Rules::Missing)
        installRules();
    const QString command =
        criteria(QLatin1Char('^') + title + QLatin1Char('$')) +
        QStringLiteral(" floating enable, sticky enable, border none, move absolute position %1 %2")
            .arg(topLeft.x())
            .arg(topLeft.y());
    commands_.runCommand(command, [self = QPointer(this), title, topLeft, tries,
                                   generation](bool placed) {
        if (placed || !self || tries >= kMaxTries || self->generations_.value(title) != generation)
            return;
        self->scheduler_.after(kRetryInterval, self, [self, title, topLeft, tries, generation] {
            if (self && self->generations_.value(title) == generation)
                self->attempt(title, topLeft, tries + 1, generation);
        });
    });
}

} // namespace deskmark
