#pragma once

#include "core/model/Bookmark.h"

#include <QList>
#include <QString>

namespace deskmark {

// One badge of the popup's hint box: the keys as Linux users write them and what they do.
// A hint without keys is a plain note.
struct BookmarkHint {
    QString keys;
    QString text;

    friend bool operator==(const BookmarkHint&, const BookmarkHint&) = default;
};

// The hint box's content for the selected row.
namespace BookmarkHints {

// The row's own keys first (how Enter and the arrows open it and what Left copies), then
// the keys that work on any row.
QList<BookmarkHint> forRow(Bookmark::Kind kind, bool isPlainDirectory, bool exists);
// With nothing selected: only the keys that add.
QList<BookmarkHint> withoutSelection();

} // namespace BookmarkHints

} // namespace deskmark
