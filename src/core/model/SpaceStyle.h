#pragma once

#include <QString>

#include <optional>

namespace deskmark {

// What one Space shows: a name and a colour preset. The unit of the legacy names.json
// and of every per-Space edit of the project store.
struct SpaceStyle {
    QString name;
    std::optional<QString> presetID;

    friend bool operator==(const SpaceStyle&, const SpaceStyle&) = default;
};

} // namespace deskmark
