#pragma once

#include <QCollator>

namespace deskmark {

// Natural order, as file browsers sort names: case-insensitive, digit runs compared by
// value. The C locale would make QCollator fall back to a plain code-unit comparison
// without numeric mode, so a session running in it sorts as English does.
QCollator naturalCollator();

} // namespace deskmark
