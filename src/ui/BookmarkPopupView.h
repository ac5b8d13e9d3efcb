#pragma once

#include "core/bookmarks/BookmarkPopupModel.h"

#include <QWidget>

class QLabel;
class QListView;
class QToolButton;
class QPushButton;

namespace deskmark {

class BookmarkListModel;
class BookmarkRowDelegate;
class SettingsStore;

// The bookmark popup's content and window: the current project's bookmarks in a list
// (rows drawn by BookmarkRowDelegate), the empty state, the banner, the key hints and the
// footer buttons. It draws a BookmarkPopupModel and forwards keys, clicks and drops to it;
// menus are left to the owner through the signals below.
class BookmarkPopupView : public QWidget {
    Q_OBJECT
public:
    BookmarkPopupView(BookmarkPopupModel& model, SettingsStore& settings,
                      QWidget* parent = nullptr);

    BookmarkPopupModel& model() { return model_; }
    // Lays the popup out for `width` and a list at most `maxListHeight` tall.
    void layOut(double width, double maxListHeight);
    bool pinned() const;
    bool dropTargeted() const { return dropTargeted_; }
    // Where a menu for the row opens: below its label, in global coordinates.
    QPoint menuPosition(int row) const;

Q_SIGNALS:
    void headerMenuRequested(const QString& group, const QPoint& globalPos);
    void rowMenuRequested(int row, const QPoint& globalPos);
    void addFilesRequested();
    void pinnedChanged(bool pinned);
    // The rows, the banner or the hints changed: the popup needs laying out again.
    void contentResized();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void renderList();
    void renderSelection();
    void renderBanner();
    void renderHints();
    void applyScale();
    void setDropTargeted(bool on);
    void listClicked(const QPoint& pos, Qt::MouseButton button, bool doubleClick);

    BookmarkPopupModel& model_;
    SettingsStore& settings_;
    BookmarkListModel* listModel_;
    BookmarkRowDelegate* delegate_;
    QLabel* title_;
    QListView* list_;
    QLabel* emptyTitle_;
    QLabel* emptyMessage_;
    QLabel* banner_;
    QLabel* hints_;
    QPushButton* hintToggle_;
    QToolButton* pin_;
    bool dropTargeted_ = false;
};

} // namespace deskmark
