#pragma once

#include "core/bookmarks/BookmarkPopupModel.h"

#include <QAbstractListModel>

namespace deskmark {

// The popup's entries as a list model for a QListView: one item per group header or
// bookmark, drawn by BookmarkRowDelegate. Only the items on screen are ever painted, so
// a long list costs no widgets.
class BookmarkListModel : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        IsHeaderRole = Qt::UserRole + 1,
        RowIndexRole, // the index into BookmarkPopupModel::rows(), -1 for a header
        GroupRole,    // the header's group name
    };

    explicit BookmarkListModel(BookmarkPopupModel& popup, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // The list position of a bookmark row.
    int entryOfRow(int row) const;
    const BookmarkPopupModel& popup() const { return popup_; }

private:
    BookmarkPopupModel& popup_;
    QList<int> entryOfRow_;
};

} // namespace deskmark
