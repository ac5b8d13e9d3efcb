#pragma once

#include "core/model/Bookmark.h"

#include <QString>

#include <optional>

namespace deskmark {

// What capturing from the active application gave: a new bookmark, an application that
// cannot be captured from, or an attempt that produced nothing.
struct CaptureResult {
    enum class Kind { Bookmark, Unsupported, Failed };

    Kind kind = Kind::Failed;
    // Set for Kind::Bookmark.
    std::optional<deskmark::Bookmark> bookmark;
    // For Kind::Unsupported: the application's display name.
    QString appName;
    // For Kind::Unsupported: how the user can make the application capturable, when
    // there is a way (a Chromium browser started without accessibility); else empty.
    QString hint;

    static CaptureResult ofBookmark(deskmark::Bookmark captured);
    static CaptureResult unsupported(const QString& name, const QString& hint = {});
    static CaptureResult failed();

    // The banner the popup shows for an unsupported or failed capture (empty for a
    // bookmark), in the interface language.
    QString bannerText() const;

    friend bool operator==(const CaptureResult&, const CaptureResult&) = default;
};

} // namespace deskmark
