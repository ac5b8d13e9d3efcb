#pragma once

#include <QString>

namespace deskmark {

// One row of a fixed application table: the name shown in menus and pickers and the
// application's identifier (a macOS bundle identifier or a Linux desktop-file id without
// ".desktop").
struct CandidateApp {
    QString name;
    QString bundleID;

    friend bool operator==(const CandidateApp&, const CandidateApp&) = default;
};

} // namespace deskmark
