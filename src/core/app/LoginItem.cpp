#include "core/app/LoginItem.h"

#include "core/app/SystemLog.h"

namespace deskmark {

void LoginItem::apply(bool wanted) {
    if (wanted == isEnabled())
        return;
    QString error;
    if (!setEnabled(wanted, &error))
        systemLog(QStringLiteral("Deskmark: launchAtLogin 切り替えに失敗（.app 化前は想定内）: ") +
                  error);
}

} // namespace deskmark
