#include "core/app/SystemLog.h"

#include <QDebug>

namespace deskmark {

void systemLog(const QString& line) {
    // Routed through Qt's message handler so tests can expect exact lines with
    // QTest::ignoreMessage; the default handler prints the text alone on stderr.
    qWarning().noquote() << line;
}

} // namespace deskmark
