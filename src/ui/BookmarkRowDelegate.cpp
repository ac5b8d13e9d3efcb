#include "ui/BookmarkRowDelegate.h"

#include "core/bookmarks/BookmarkPopupGeometry.h"
#include "core/bookmarks/BookmarkPopupModel.h"
#include "ui/BookmarkListModel.h"
#include "ui/ThemedIcon.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace deskmark {

namespace {
constexpr double kLabelPixels = 14;
constexpr double kTargetPixels = 11.5;
constexpr double kHeaderPixels = 11;
constexpr double kIconSize = 20;
constexpr double kMargin = 10;
} // namespace

BookmarkRowDelegate::BookmarkRowDelegate(const BookmarkPopupModel& popup, QObject* parent)
    : QStyledItemDelegate(parent),
      popup_(popup),
      web_(ThemedIcon::get("applications-internet", QStyle::SP_DriveNetIcon)),
      folder_(ThemedIcon::get("folder", QStyle::SP_DirIcon)),
      file_(ThemedIcon::get("text-x-generic", QStyle::SP_FileIcon)),
      missing_(ThemedIcon::get("dialog-warning", QStyle::SP_MessageBoxWarning)) {}

QFont BookmarkRowDelegate::scaledFont(double pixels, double scale, bool bold) {
    QFont font = QApplication::font();
    font.setPixelSize(qRound(pixels * scale));
    font.setBold(bold);
    return font;
}

QSize BookmarkRowDelegate::sizeHint(const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
    const bool header = index.data(BookmarkListModel::IsHeaderRole).toBool();
    const double height =
        header ? BookmarkPopupGeometry::headerHeight(look_.scale)
               : BookmarkPopupGeometry::rowHeight(look_.scale, look_.showLabel, look_.showTarget);
    return {option.rect.width(), qRound(height)};
}

void BookmarkRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (index.data(BookmarkListModel::IsHeaderRole).toBool())
        paintHeader(painter, option.rect, index.data(BookmarkListModel::GroupRole).toString(),
                    option.palette);
    else
        paintRow(painter, option, index.data(BookmarkListModel::RowIndexRole).toInt());
    painter->restore();
}

QRect BookmarkRowDelegate::headerButton(const QRect& header, bool up) const {
    const int size = header.height();
    const int right = header.right() - qRound(kMargin * look_.scale) - (up ? size : 0);
    return {right - size + 1, header.top(), size, size};
}

void BookmarkRowDelegate::paintHeader(QPainter* painter, const QRect& rect, const QString& name,
                                      const QPalette& palette) const {
    const double s = look_.scale;
    painter->setFont(scaledFont(kHeaderPixels, s, true));
    painter->setPen(palette.color(QPalette::PlaceholderText));
    const QRect text = rect.adjusted(qRound(kMargin * s), qRound(6 * s), -qRound(kMargin * s), 0);
    painter->drawText(text, Qt::AlignLeft | Qt::AlignVCenter, name.toUpper());
    painter->drawText(headerButton(rect, true).adjusted(0, qRound(6 * s), 0, 0), Qt::AlignCenter,
                      QStringLiteral("▲"));
    painter->drawText(headerButton(rect, false).adjusted(0, qRound(6 * s), 0, 0), Qt::AlignCenter,
                      QStringLiteral("▼"));
}

const QIcon& BookmarkRowDelegate::iconFor(int row) const {
    const BookmarkPopupModel::Row& item = popup_.rows()[row];
    if (!item.exists)
        return missing_;
    if (item.bookmark.kind == Bookmark::Kind::Url)
        return web_;
    return item.isPlainDirectory ? folder_ : file_;
}

void BookmarkRowDelegate::paintRow(QPainter* painter, const QStyleOptionViewItem& option,
                                   int row) const {
    const BookmarkPopupModel::Row& item = popup_.rows()[row];
    const double s = look_.scale;
    const QPalette& palette = option.palette;
    const QRect rect = option.rect.adjusted(qRound(4 * s), 1, -qRound(4 * s), -1);
    const bool selected = row == popup_.selection();
    if (selected || (option.state & QStyle::State_MouseOver)) {
        QColor fill = palette.color(QPalette::Highlight);
        if (!selected)
            fill.setAlphaF(0.25f);
        painter->setPen(Qt::NoPen);
        painter->setBrush(fill);
        painter->drawRoundedRect(rect, 6 * s, 6 * s);
    }
    const QColor text = palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    QColor dim = text;
    dim.setAlphaF(0.65f);

    const int margin = qRound(kMargin * s);
    const int icon = qRound(kIconSize * s);
    iconFor(row).paint(painter, QRect(rect.left() + margin, rect.center().y() - icon / 2, icon, icon));

    // Right-hand side: the quick-open number and the branch.
    int right = rect.right() - margin;
    if (row < 9) {
        painter->setFont(scaledFont(kTargetPixels, s));
        painter->setPen(dim);
        const QString number = QString::number(row + 1);
        const int width = painter->fontMetrics().horizontalAdvance(number);
        painter->drawText(QRect(right - width, rect.top(), width, rect.height()),
                          Qt::AlignVCenter, number);
        right -= width + margin;
    }
    if (item.branch) {
        painter->setFont(scaledFont(kTargetPixels, s));
        painter->setPen(dim);
        const QString branch = QStringLiteral("⎇ ") + *item.branch;
        const int width = std::min(painter->fontMetrics().horizontalAdvance(branch), rect.width() / 3);
        painter->drawText(QRect(right - width, rect.top(), width, rect.height()), Qt::AlignVCenter,
                          painter->fontMetrics().elidedText(branch, Qt::ElideRight, width));
        right -= width + margin;
    }

    const int left = rect.left() + margin * 2 + icon;
    const int width = std::max(0, right - left);
    const bool both = look_.showLabel && look_.showTarget;
    const QString first = look_.showLabel || !look_.showTarget ? item.label : item.target;
    QRect firstLine(left, rect.top(), width, both ? rect.height() / 2 + qRound(2 * s) : rect.height());
    painter->setFont(scaledFont(kLabelPixels, s, look_.showLabel));
    painter->setPen(item.exists ? text : dim);
    painter->drawText(firstLine, both ? Qt::AlignBottom : Qt::AlignVCenter,
                      painter->fontMetrics().elidedText(first, Qt::ElideRight, width));
    if (both) {
        painter->setFont(scaledFont(kTargetPixels, s));
        painter->setPen(dim);
        const QRect second(left, firstLine.bottom() + qRound(2 * s), width,
                           rect.bottom() - firstLine.bottom() - qRound(2 * s));
        painter->drawText(second, Qt::AlignTop,
                          painter->fontMetrics().elidedText(item.target, Qt::ElideMiddle, width));
    }
}

} // namespace deskmark
