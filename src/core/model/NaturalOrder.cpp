#include "core/model/NaturalOrder.h"

#include <QLocale>

namespace deskmark {

QCollator naturalCollator() {
    QLocale locale;
    if (locale.language() == QLocale::C)
        locale = QLocale(QLocale::English, QLocale::UnitedStates);
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

} // namespace deskmark
