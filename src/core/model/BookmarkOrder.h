#pragma once

#include "core/model/Bookmark.h"

#include <QList>
#include <QStringList>

namespace deskmark {

// The one ordering rule of a project's bookmark list.
namespace BookmarkOrder {

// groups followed by the non-empty group names that the bookmarks use but groups lacks,
// in order of first appearance.
QStringList withUsedGroups(const QStringList& groups, const QList<Bookmark>& bookmarks);

// The bookmarks reordered: the ungrouped ones first, then the bookmarks of each name of
// `groups` in turn, then those of groups that `groups` does not list (in order of first
// appearance). Each part keeps the relative order the bookmarks had. Pass the list as an
// rvalue where it is replaced anyway: its entries are then moved rather than copied.
QList<Bookmark> groupedOrder(QList<Bookmark> bookmarks, const QStringList& groups);

} // namespace BookmarkOrder

} // namespace deskmark
