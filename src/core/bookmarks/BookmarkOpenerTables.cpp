// The fixed tables of outside applications: the browsers that take a new-window argument,
// the file managers, terminals and editors the opener knows. Linux desktop-file ids stand
// beside the macOS bundle identifiers; only the ones installed here ever match.
#include "core/bookmarks/BookmarkOpener.h"

namespace deskmark {

const QSet<QString>& BookmarkOpener::chromiumFamily() {
    static const QSet<QString> ids{
        // macOS
        "com.google.chrome", "com.google.chrome.beta", "com.google.chrome.dev",
        "com.google.chrome.canary", "com.microsoft.edgemac", "com.microsoft.edgemac.beta",
        "com.brave.browser", "com.brave.browser.beta", "com.vivaldi.vivaldi",
        "com.operasoftware.opera", "com.operasoftware.operagx", "org.chromium.chromium",
        // Linux (packages and Flatpak)
        "chromium", "chromium-browser", "google-chrome", "google-chrome-beta",
        "google-chrome-unstable", "brave-browser", "brave-browser-beta", "microsoft-edge",
        "microsoft-edge-beta", "microsoft-edge-dev", "vivaldi-stable", "opera", "opera-beta",
        "com.microsoft.edge"};
    return ids;
}

const QSet<QString>& BookmarkOpener::firefoxFamily() {
    static const QSet<QString> ids{
        // macOS
        "org.mozilla.firefox", "org.mozilla.firefoxdeveloperedition", "org.mozilla.nightly",
        "app.zen-browser.zen", "org.mozilla.librewolf", "net.waterfox.waterfox",
        // Linux (packages and Flatpak)
        "firefox", "firefox-esr", "firefox-developer-edition", "firefox-nightly", "librewolf",
        "waterfox", "io.gitlab.librewolf-community"};
    return ids;
}

const QSet<QString>& BookmarkOpener::fileManagerFamily() {
    static const QSet<QString> ids{"com.apple.finder", "org.gnome.nautilus", "nautilus",
                                   "thunar", "caja", "caja-browser", "nemo"};
    return ids;
}

const QList<CandidateApp>& BookmarkOpener::terminalTable() {
    static const QList<CandidateApp> table{
        {"ターミナル (Terminal)", "com.apple.Terminal"},
        {"iTerm2", "com.googlecode.iterm2"},
        {"GNOME Terminal", "org.gnome.Terminal"},
        {"Console", "org.gnome.Console"},
        {"Konsole", "org.kde.konsole"},
        {"Xfce Terminal", "xfce4-terminal"},
        {"MATE Terminal", "mate-terminal"},
        {"kitty", "kitty"},
        {"kitty", "net.kovidgoyal.kitty"},
        {"Alacritty", "Alacritty"},
        {"Alacritty", "org.alacritty"},
        {"WezTerm", "org.wezfurlong.wezterm"},
        {"WezTerm", "com.github.wez.wezterm"},
        {"Ghostty", "com.mitchellh.ghostty"},
        {"Terminator", "terminator"},
        {"Tilix", "com.gexperts.Tilix"},
        {"XTerm", "debian-xterm"},
        {"XTerm", "xterm"},
    };
    return table;
}

const QList<CandidateApp>& BookmarkOpener::editorTable() {
    static const QList<CandidateApp> table{
        {"Visual Studio Code", "com.microsoft.VSCode"},
        {"Visual Studio Code", "code"},
        {"VSCodium", "codium"},
        {"Cursor", "com.todesktop.230313mzl4w4u92"},
        {"Cursor", "cursor"},
        {"Zed", "dev.zed.Zed"},
        {"Zed Preview", "dev.zed.Zed-Preview"},
        {"Zed", "zed"},
        {"Sublime Text", "com.sublimetext.4"},
        {"Sublime Text", "sublime_text"},
        {"Kate", "org.kde.kate"},
        {"Xcode", "com.apple.dt.Xcode"},
    };
    return table;
}

} // namespace deskmark
