#include "core/settings/PermissionsPaneModel.h"

#include "core/app/Language.h"

#include <QStringList>

namespace deskmark {

QString PermissionsPaneModel::actionTitle(HotKeyAction action) {
    switch (action) {
    case HotKeyAction::Name:
        return localized("現在の Space の名前・カラーを編集", "Edit Current Space's Name & Color");
    case HotKeyAction::Preset:
        return localized("次のカラープリセットを適用", "Apply the Next Color Preset");
    case HotKeyAction::Settings:
        return localized("設定を開く", "Open Settings");
    case HotKeyAction::Bookmark:
        return localized("ブックマークを開く", "Open Bookmarks");
    case HotKeyAction::Switcher:
        return localized("Space を切り替え", "Switch Space");
    }
    return {};
}

QList<PermissionsPaneModel::Row> PermissionsPaneModel::rows(const SessionFacts& facts) {
    QList<Row> result;

    const bool ewmh = facts.spaceSource == QLatin1String("EWMH");
    Row wm{localized("ウインドウマネージャ（%1）", "Window manager (%1)").arg(facts.spaceSource),
           facts.desktops > 0,
           {},
           {}};
    if (wm.ok && ewmh)
        wm.state = localized("Space %1 個を公開しています。", "Publishes %1 Spaces.")
                       .arg(facts.desktops);
    else if (wm.ok)
        wm.state = localized("IPC ソケットからワークスペース %1 個を読んでいます。",
                             "Reads %1 workspaces over its IPC socket.")
                       .arg(facts.desktops);
    else if (!ewmh) {
        wm.state = localized("%1 の IPC ソケットに接続できないため、Space を読めません。",
                             "Cannot reach the IPC socket of %1, so there are no Spaces to read.")
                       .arg(facts.spaceSource);
        wm.remedy = localized("%1 が動いているか確かめてください。Deskmark は自動で接続し直します。",
                              "Check that %1 is running; Deskmark connects again by itself.")
                        .arg(facts.spaceSource);
    } else {
        wm.state = localized("EWMH のウインドウマネージャが見つからないため、Space を読めません。",
                             "No EWMH window manager found, so there are no Spaces to read.");
        wm.remedy = localized(
            "Openbox、Xfwm、Mutter、KWin など EWMH 対応のウインドウマネージャを使ってください。",
            "Use an EWMH window manager such as Openbox, Xfwm, Mutter or KWin.");
    }
    result << wm;

    Row panel{localized("パネルの項目", "Panel item"), facts.panelItem != PanelItem::None, {}, {}};
    switch (facts.panelItem) {
    case PanelItem::StatusNotifier:
        panel.state = localized("StatusNotifierItem として表示し、Space の名前を並べて出します。",
                                "Shown as a StatusNotifierItem, with the Space name beside it.");
        break;
    case PanelItem::Tray:
        panel.state = localized("トレイアイコンとして表示します（名前はアイコンの中に描きます）。",
                                "Shown as a tray icon, with the name drawn into it.");
        panel.ok = true;
        panel.remedy =
            localized("名前を文字で出すには、StatusNotifierItem に対応したパネルを使ってください。",
                      "For the name as text, use a panel that hosts StatusNotifierItems.");
        break;
    case PanelItem::None:
        panel.state = localized("項目を置く場所がパネルにありません。",
                                "The panel has no place for the item.");
        panel.remedy =
            localized("パネルに通知領域（トレイ）か StatusNotifierItem の表示を追加してください。",
                      "Add a notification area (tray) or a StatusNotifierItem host to the panel.");
        break;
    }
    result << panel;

    QStringList held;
    for (const HotKeyState& key : facts.hotKeys) {
        if (!key.grabbed)
            held << actionTitle(key.action);
    }
    Row keys{localized("ホットキー", "Hot keys"), held.isEmpty(), {}, {}};
    if (facts.keysBoundByWindowManager) {
        keys.state = localized(
            "Wayland ではプログラムがキーを取れないため、sway の設定の bindsym から deskmark "
            "コマンドを呼びます。",
            "Wayland lets no program grab keys: bindsym lines in sway's config run the deskmark "
            "command.");
        keys.remedy = localized("書く行は「ショートカット」に出ています。",
                                "“Shortcuts” shows the lines to add.");
    } else if (facts.hotKeys.isEmpty())
        keys.state = localized("ホットキーは設定されていません。", "No hot keys are set.");
    else if (held.isEmpty())
        keys.state = localized("設定したホットキー %1 個をすべて受け取っています。",
                               "All %1 hot keys that are set are grabbed.")
                         .arg(facts.hotKeys.size());
    else {
        keys.state = localized("ほかのプログラムが使用中: %1", "In use by another program: %1")
                         .arg(held.join(localized("、", ", ")));
        keys.remedy = localized(
            "「ショートカット」で別の組み合わせを選ぶか、相手の設定を外してください。",
            "Choose another combination in “Shortcuts”, or free it in the other program.");
    }
    result << keys;

    Row input{localized("入力メソッド", "Input method"), !facts.inputMethod.isEmpty(), {}, {}};
    if (input.ok)
        input.state = localized("%1 に接続できます。切り替えパネルを開く間は英字入力にします。",
                                "%1 answers; the switcher types in ASCII while it is open.")
                          .arg(facts.inputMethod);
    else {
        input.state =
            localized("fcitx5 も IBus も応答しません。", "Neither fcitx5 nor IBus answers.");
        input.remedy =
            localized("日本語入力を使うなら、切り替えパネルを開く前に英字入力へ戻してください。",
                      "If you type Japanese, switch to ASCII input before opening the switcher.");
    }
    result << input;

    Row compositor{localized("コンポジタ", "Compositor"), facts.compositor, {}, {}};
    if (compositor.ok)
        compositor.state = localized("動作中です。ラベルは半透明で表示されます。",
                                     "Running: labels are drawn translucent.");
    else {
        compositor.state = localized("動作していないため、ラベルの背景は不透明になります。",
                                     "Not running, so label backgrounds are opaque.");
        compositor.remedy = localized("半透明にするには picom などのコンポジタを起動してください。",
                                      "Start a compositor such as picom for translucent labels.");
    }
    result << compositor;
    return result;
}

} // namespace deskmark
