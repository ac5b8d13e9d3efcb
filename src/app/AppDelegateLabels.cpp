// The AppDelegate's ties to the session around the corner labels, and what it tells the
// user outside its windows.
#include "app/AppDelegate.h"

#include "core/app/Language.h"
#include "core/overlay/ScreenInfo.h"
#include "platform/linux/DesktopNotification.h"

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QToolTip>

namespace deskmark {

namespace {
// How long a message without a notification service stays at the pointer.
constexpr int kToolTipMilliseconds = 6000;
} // namespace

void AppDelegate::installScreenWatcher() {
    cornerOverlay().setCompositing(platform_.isCompositing());
    X11ScreenWatcher* watcher = platform_.screenWatcher();
    if (!watcher)
        return;
    followFullScreenWindow();
    // A panel that comes or goes changes the visible frames, as a new screen layout does.
    connections_ << connect(watcher, &X11ScreenWatcher::reservedAreaChanged, this,
                            &AppDelegate::screenParametersDidChange);
    connections_ << connect(watcher, &X11ScreenWatcher::compositingChanged, this, [this] {
        cornerOverlay().setCompositing(platform_.isCompositing());
        refreshCornerOverlay();
    });
    connections_ << connect(watcher, &X11ScreenWatcher::fullScreenWindowChanged, this,
                            [this] {
                                followFullScreenWindow();
                                refreshCornerOverlay();
                            });
}

// The full-screen window and the screens are compared in device pixels, where the window
// server gives the window's place.
void AppDelegate::followFullScreenWindow() {
    std::optional<QString> screenName;
    const X11ScreenWatcher* watcher = platform_.screenWatcher();
    if (const std::optional<QRect> window = watcher ? watcher->fullScreenWindow() : std::nullopt) {
        QList<ScreenInfo> screens;
        for (const QScreen* screen : QGuiApplication::screens())
            screens << ScreenInfo{
                screen->name(), QRectF(QtScreenProvider::nativeFrame(*screen)), {}};
        screenName = ScreenInfo::screenOf(QRectF(*window), screens);
    }
    cornerOverlay().setFullScreenScreen(screenName);
}

void AppDelegate::tellUser(const QString& summary, const QString& body) {
    if (DesktopNotification::show(summary, body))
        return;
    QToolTip::showText(QCursor::pos(), summary + QLatin1Char('\n') + body, nullptr, {},
                       kToolTipMilliseconds);
}

void AppDelegate::tellPresetNeedsName() {
    QApplication::beep();
    tellUser(localized("この Space には名前がありません", "This Space has no name"),
             localized("プリセットは名前のある Space の色を決めます。メニューの「現在の Space "
                       "の名前・カラーを編集」で先に名前をつけてください。",
                       "A preset sets the colors of a named Space. Name this Space first with "
                       "“Edit Current Space's Name & Color” in the menu."));
}

void AppDelegate::reportDamagedProjectsFile() {
    const std::optional<QString> copy = projectStore_.damagedFileCopy();
    if (!copy)
        return;
    tellUser(localized("projects.json を読み込めませんでした", "projects.json could not be read"),
             localized("Deskmark はプロジェクトなしで起動しました。壊れたファイルは、最初の変更を"
                       "保存する前に %1 として残されます。",
                       "Deskmark started without projects. Before the first change is saved, "
                       "the damaged file is kept as %1.")
                 .arg(*copy));
}

} // namespace deskmark
