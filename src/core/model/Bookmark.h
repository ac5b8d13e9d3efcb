#pragma once

#include <QString>
#include <QUuid>

#include <optional>

namespace deskmark {

// One entry of a project's bookmark list: a web address or a file-system path.
struct Bookmark {
    enum class Kind { File, Url };

    QUuid id;
    Kind kind = Kind::Url;
    QString label;
    // The address of a web bookmark; the path of a file bookmark (a leading "~" allowed).
    QString target;
    // Absent or empty means ungrouped.
    std::optional<QString> group;
    // Desktop-file id of the application that opens it, when the user chose one.
    std::optional<QString> appBundleID;

    // The identity used to refuse duplicates: the address exactly as stored for a web
    // bookmark, the absolute, cleaned path (tilde expanded) for a file bookmark.
    QString dedupeKey() const;

    friend bool operator==(const Bookmark&, const Bookmark&) = default;
};

} // namespace deskmark
