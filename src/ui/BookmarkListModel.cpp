#include "ui/BookmarkListModel.h"

#include "core/app/Language.h"

namespace deskmark {

BookmarkListModel::BookmarkListModel(BookmarkPopupModel& popup, QObject* parent)
    : QAbstractListModel(parent), popup_(popup) {
    const auto rebuild = [this] {
        beginResetModel();
        entryOfRow_.clear();
        const QList<BookmarkPopupModel::Entry>& entries = popup_.entries();
        for (int i = 0; i < entries.size(); ++i) {
            if (entries[i].row >= 0)
                entryOfRow_.append(i);
        }
        endResetModel();
    };
    connect(&popup_, &BookmarkPopupModel::changed, this, rebuild);
    rebuild();
}

int BookmarkListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(popup_.entries().size());
}

QVariant BookmarkListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= popup_.entries().size())
        return {};
    const BookmarkPopupModel::Entry& entry = popup_.entries()[index.row()];
    switch (role) {
    case IsHeaderRole:
        return entry.header.has_value();
    case RowIndexRole:
        return entry.row;
    case GroupRole:
        return entry.header.value_or(QString());
    case Qt::DisplayRole:
        return entry.header ? *entry.header : popup_.rows()[entry.row].label;
    case Qt::ToolTipRole:
        if (entry.header)
            return localized("右クリック: 名前の変更・並べ替え・削除",
                             "Right-click: rename, reorder, delete");
        return popup_.rows()[entry.row].target;
    default:
        return {};
    }
}

Qt::ItemFlags BookmarkListModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled;
}

int BookmarkListModel::entryOfRow(int row) const {
    return row >= 0 && row < entryOfRow_.size() ? entryOfRow_[row] : -1;
}

} // namespace deskmark
