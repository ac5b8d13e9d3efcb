#include "ui/ApplicationChooser.h"

#include "core/app/Language.h"

#include <QFileDialog>

namespace deskmark {

QString ApplicationChooser::choose(QWidget* parent) {
    return QFileDialog::getOpenFileName(
        parent, localized("アプリケーションを選択", "Choose Application"),
        QStringLiteral("/usr/share/applications"),
        localized("アプリケーション (*.desktop)", "Applications (*.desktop)"));
}

} // namespace deskmark
