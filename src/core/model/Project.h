#pragma once

#include "core/model/Bookmark.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace deskmark {

// A named record that one or more Spaces show: its name, its colour preset and its
// bookmarks. Identified by id.
struct Project {
    QUuid id;
    QString name;
    // No preset means the default colours; "default" itself is never stored.
    std::optional<QString> presetID;
    // Kept in group order: ungrouped first, then each group of `groups` in turn.
    QList<Bookmark> bookmarks;
    // The bookmark group names in display order.
    QStringList groups;

    friend bool operator==(const Project&, const Project&) = default;
};

} // namespace deskmark
