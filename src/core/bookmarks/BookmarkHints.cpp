#include "core/bookmarks/BookmarkHints.h"

#include "core/app/Language.h"

namespace deskmark::BookmarkHints {

namespace {
QString notFound() {
    return localized("パスが見つからないため開けません", "Path not found — can't open");
}

QList<BookmarkHint> openingHints(Bookmark::Kind kind, bool isPlainDirectory, bool exists) {
    if (kind == Bookmark::Kind::Url)
        return {{"Enter", localized("ブラウザで開く", "open in browser")},
                {"→", localized("新規ウインドウで開く", "new window")}};
    if (!exists)
        return {{QString(), notFound()}};
    return {{"Enter", isPlainDirectory ? localized("開くアプリを選ぶ", "choose an app")
                                       : localized("新規ファイルマネージャで開く",
                                                   "new file manager window")},
            {"→", localized("新規ターミナルで開く", "new terminal")},
            {"Shift+→", localized("エディタで開く", "editor")}};
}

BookmarkHint addItem() { return {"Alt+N", localized("項目を追加", "add item")}; }
BookmarkHint addGroup() { return {"Shift+Alt+N", localized("グループを追加", "add group")}; }
BookmarkHint capture() { return {"Alt+C", localized("今見ているものを追加", "capture")}; }
} // namespace

QList<BookmarkHint> forRow(Bookmark::Kind kind, bool isPlainDirectory, bool exists) {
    QList<BookmarkHint> hints = openingHints(kind, isPlainDirectory, exists);
    hints << BookmarkHint{"←", kind == Bookmark::Kind::Url
                                   ? localized("URL をコピー", "copy URL")
                                   : localized("パスをコピー", "copy path")}
          << BookmarkHint{"1–9", localized("番号で開く", "quick open")} << addItem() << addGroup()
          << BookmarkHint{"Alt+E", localized("項目を編集", "edit item")}
          << BookmarkHint{"Shift+Alt+E", localized("グループ名を変更", "rename group")}
          << BookmarkHint{"Alt+↑↓", localized("並べ替え", "reorder")}
          << BookmarkHint{"Shift+Alt+↑↓", localized("グループを移動", "move group")} << capture()
          << BookmarkHint{"Delete", localized("削除", "remove")};
    return hints;
}

QList<BookmarkHint> withoutSelection() { return {addItem(), addGroup(), capture()}; }

} // namespace deskmark::BookmarkHints
