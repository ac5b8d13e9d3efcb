#pragma once

#include "core/model/HotKey.h"

#include <QString>

#include <optional>

namespace deskmark {

// What Deskmark tells a user who has no projects yet, once as a desktop notification and
// for as long as there are none in the status item's tool tip: how to name the current
// desktop.
namespace FirstRunNotice {

QString summary();

// Names the rename hot key as the user has it set; when it is cleared, the menu item
// (its title given as the menu shows it).
QString body(const std::optional<HotKey>& renameKey, const QString& menuItemTitle);

} // namespace FirstRunNotice

} // namespace deskmark
