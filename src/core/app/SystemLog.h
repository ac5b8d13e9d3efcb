#pragma once

#include <QString>

namespace deskmark {

// Writes one line to the system log. On Linux that is standard error, which the
// session's journal collects. Every line begins with "Deskmark: " by convention of
// the callers; this function adds nothing.
void systemLog(const QString& line);

} // namespace deskmark
