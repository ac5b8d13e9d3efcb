#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

namespace deskmark {

class BookmarkPopupModel;

// Paints the popup's entries: a group header as a small caption, a bookmark as its icon,
// label, target, git branch and quick-open number, at the popup's scale. Text is laid
// out at the scaled font size, not magnified.
class BookmarkRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    struct Look {
        double scale = 1.0;
        bool showLabel = true;
        bool showTarget = true;
    };

    BookmarkRowDelegate(const BookmarkPopupModel& popup, QObject* parent = nullptr);

    void setLook(const Look& look) { look_ = look; }
    const Look& look() const { return look_; }
    // The application font at `pixels` × scale.
    static QFont scaledFont(double pixels, double scale, bool bold = false);

    // A group header's move-up or move-down button, inside the header's rect.
    QRect headerButton(const QRect& header, bool up) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void paintHeader(QPainter* painter, const QRect& rect, const QString& name,
                     const QPalette& palette) const;
    void paintRow(QPainter* painter, const QStyleOptionViewItem& option, int row) const;
    const QIcon& iconFor(int row) const;

    const BookmarkPopupModel& popup_;
    Look look_;
    QIcon web_, folder_, file_, missing_;
};

} // namespace deskmark
