#include "core/switcher/SwitchDebugLog.h"

#include <QDateTime>
#include <QFile>

namespace deskmark {

SwitchDebugLog::SwitchDebugLog()
    : SwitchDebugLog(QString::fromLatin1(kDefaultPath), swDebugEnabled()) {}

SwitchDebugLog::SwitchDebugLog(QString path, bool enabled)
    : path_(std::move(path)), enabled_(enabled) {}

bool SwitchDebugLog::swDebugEnabled() {
    static const bool enabled = qEnvironmentVariableIsSet("SW_DEBUG");
    return enabled;
}

void SwitchDebugLog::dbg(const QString& message) const {
    if (!enabled_)
        return;
    const double seconds = double(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
    const QByteArray line =
        QByteArray::number(seconds, 'f', 3) + ' ' + message.toUtf8() + '\n';
    // Append mode creates the file when it does not exist yet.
    QFile file(path_);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        file.write(line);
}

} // namespace deskmark
