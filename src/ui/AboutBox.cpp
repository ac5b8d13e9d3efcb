#include "ui/AboutBox.h"

#include "core/app/Language.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QIcon>
#include <QMessageBox>
#include <QSpacerItem>

namespace deskmark {

namespace {
constexpr int kIconSize = 64;
} // namespace

void AboutBox::exec(QWidget* parent) {
    QMessageBox box(parent);
    const QString title = localized("Deskmark について", "About Deskmark");
    box.setWindowTitle(title);
    const QIcon icon(QStringLiteral(":/icons/io.github.deskmark.Deskmark.svg"));
    box.setWindowIcon(icon);
    box.setIconPixmap(icon.pixmap(kIconSize));
    box.setTextFormat(Qt::RichText);
    box.setText(QStringLiteral("<h3>Deskmark</h3><p>%1%2</p><p>%3</p><p>%4</p>")
                    .arg(localized("バージョン ", "Version "), QStringLiteral(DESKMARK_VERSION),
                         localized("仮想デスクトップに名前を付け、名前で切り替えます。",
                                   "Names your virtual desktops and switches between them by "
                                   "name."),
                         localized("MIT ライセンスで配布されています。",
                                   "Distributed under the MIT License.")));
    box.setStandardButtons(QMessageBox::Close);
    // A message box sizes itself to its text, which would cut the window title short:
    // the layout gets a row as wide as the title needs with room for the frame's buttons.
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout())) {
        const int titleWidth = QFontMetrics(box.font()).horizontalAdvance(title) + 200;
        grid->addItem(new QSpacerItem(titleWidth, 0, QSizePolicy::Minimum, QSizePolicy::Fixed),
                      grid->rowCount(), 0, 1, grid->columnCount());
    }
    box.exec();
}

} // namespace deskmark
