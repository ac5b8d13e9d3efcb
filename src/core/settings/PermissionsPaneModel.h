#pragma once

#include "core/model/HotKeyAction.h"

#include <QList>
#include <QString>

#include <optional>

namespace deskmark {

// What the desktop session offers Deskmark, as the Permissions pane explains it: one row
// per facility, whether it is there, what that means, and what to do when it is not.
class PermissionsPaneModel {
public:
    enum class PanelItem { StatusNotifier, Tray, None };
    struct HotKeyState {
        HotKeyAction action;
        bool grabbed = false;
    };
    struct SessionFacts {
        // Where the Spaces come from: "EWMH", "i3" or "sway".
        QString spaceSource = QStringLiteral("EWMH");
        // Desktops (or workspaces) read from it; 0 when there is none.
        int desktops = 0;
        PanelItem panelItem = PanelItem::None;
        // The hot keys that are set, each grabbed or held by another program.
        QList<HotKeyState> hotKeys;
        // The window manager's key bindings run the actions (Wayland): nothing is grabbed.
        bool keysBoundByWindowManager = false;
        // "fcitx5" or "IBus"; empty when neither answers.
        QString inputMethod;
        bool compositor = false;
    };
    struct Row {
        QString title;
        bool ok = false;
        QString state;
        // What to do about it; empty when nothing needs doing.
        QString remedy;

        friend bool operator==(const Row&, const Row&) = default;
    };

    static QList<Row> rows(const SessionFacts& facts);
    // The menu's name for the action of a hot key.
    static QString actionTitle(HotKeyAction action);
};

} // namespace deskmark
