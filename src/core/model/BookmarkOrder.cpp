#include "core/model/BookmarkOrder.h"

#include <QHash>

#include <utility>

namespace deskmark::BookmarkOrder {

namespace {

bool isGrouped(const Bookmark& bookmark) {
    return bookmark.group.has_value() && !bookmark.group->isEmpty();
}

// The distinct names seen so far, in order of first appearance. A project has a handful
// of groups, for which a linear search beats building a hash; the hash is built only
// once the list grows long, so that no input makes the lookups quadratic.
class NameIndex {
public:
    // The position of name, which is appended when it is new.
    qsizetype findOrAppend(const QString& name) {
        if (byName_.isEmpty()) {
            if (const qsizetype found = names_.indexOf(name); found >= 0)
                return found;
        } else if (const auto it = byName_.constFind(name); it != byName_.cend()) {
            return *it;
        }
        names_.append(name);
        if (names_.size() > kLinearLimit) {
            if (byName_.isEmpty())
                for (qsizetype i = 0; i < names_.size(); ++i)
                    byName_.insert(names_[i], i);
            else
                byName_.insert(name, names_.size() - 1);
        }
        return names_.size() - 1;
    }

    const QStringList& names() const { return names_; }

private:
    static constexpr qsizetype kLinearLimit = 16;
    QStringList names_;
    QHash<QString, qsizetype> byName_;
};

// Calls visit(bookmark, position of its group in index, or -1 when ungrouped) for each
// bookmark. A stored list is grouped already, so the group mostly equals the previous
// bookmark's and is looked up only about once per group.
template <typename Visit>
void forEachGroupPosition(const QList<Bookmark>& bookmarks, NameIndex& index, Visit visit) {
    const QString* previous = nullptr;
    qsizetype previousPosition = -1;
    for (const Bookmark& bookmark : bookmarks) {
        if (!isGrouped(bookmark)) {
            visit(-1);
            continue;
        }
        if (!previous || *previous != *bookmark.group) {
            previous = &*bookmark.group;
            previousPosition = index.findOrAppend(*previous);
        }
        visit(previousPosition);
    }
}

} // namespace

QStringList withUsedGroups(const QStringList& groups, const QList<Bookmark>& bookmarks) {
    NameIndex index;
    for (const QString& name : groups)
        index.findOrAppend(name);
    const qsizetype listed = index.names().size();
    forEachGroupPosition(bookmarks, index, [](qsizetype) {});
    if (index.names().size() == listed)
        return groups;
    return groups + index.names().mid(listed);
}

QList<Bookmark> groupedOrder(QList<Bookmark> bookmarks, const QStringList& groups) {
    // Every section gets a rank: 0 for ungrouped, then the listed groups in order (a
    // repeated name keeps its first place), then the unlisted ones as they first appear.
    NameIndex index;
    for (const QString& name : groups)
        index.findOrAppend(name);
    QList<qsizetype> ranks;
    ranks.reserve(bookmarks.size());
    bool inOrder = true;
    forEachGroupPosition(bookmarks, index, [&](qsizetype position) {
        const qsizetype rank = position + 1;
        inOrder = inOrder && (ranks.isEmpty() || rank >= ranks.last());
        ranks.append(rank);
    });
    // The common case, a list that is grouped already, is handed back as it is.
    if (inOrder)
        return bookmarks;

    // Bucketing by rank keeps each section's relative order in one pass.
    QList<QList<qsizetype>> buckets(index.names().size() + 1);
    for (qsizetype i = 0; i < bookmarks.size(); ++i)
        buckets[ranks[i]].append(i);
    QList<Bookmark> ordered;
    ordered.reserve(bookmarks.size());
    for (const QList<qsizetype>& bucket : buckets)
        for (qsizetype i : bucket)
            ordered.append(std::move(bookmarks[i]));
    return ordered;
}

} // namespace deskmark::BookmarkOrder
