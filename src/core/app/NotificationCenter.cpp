#include "core/app/NotificationCenter.h"

namespace deskmark {

NotificationCenter& NotificationCenter::shared() {
    static NotificationCenter center;
    return center;
}

} // namespace deskmark
