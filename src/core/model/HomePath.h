#pragma once

#include <QString>

namespace deskmark {

// "~" and a leading "~/" stand for the home folder; any other path is returned unchanged.
QString expandTilde(const QString& path);
// The home folder at the start of an absolute path written back as "~".
QString abbreviateWithTilde(const QString& path);

} // namespace deskmark
