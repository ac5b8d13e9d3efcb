#include "core/app/FirstRunNotice.h"

#include "core/app/Language.h"
#include "core/app/LinuxShortcutText.h"

namespace deskmark {

QString FirstRunNotice::summary() {
    return localized("デスクトップに名前を付けましょう", "Name your desktops");
}

QString FirstRunNotice::body(const std::optional<HotKey>& renameKey, const QString& menuItemTitle) {
    // Japanese runs its sentences together; English puts a space between them.
    const QString between = localized("", " ");
    const QString shown = localized("名前はパネルと画面の隅に表示されます。",
                                    "The name then shows in the panel and in a corner of the "
                                    "screen.");
    if (renameKey)
        return localized("%1 を押すと、現在のデスクトップに名前を付けられます。",
                         "Press %1 to name the current desktop.")
                   .arg(linuxShortcutText(renameKey->keyCode, renameKey->modifiers)) +
               between + shown;
    return localized("Deskmark のメニューの「%1」で、現在のデスクトップに名前を付けられます。",
                     "Choose “%1” in the Deskmark menu to name the current desktop.")
               .arg(menuItemTitle) +
           between + shown;
}

} // namespace deskmark
