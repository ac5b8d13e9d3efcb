#pragma once

#include <QDialog>

namespace deskmark {

// Asks before a bookmark is removed, 400 wide: a warning sign, the question naming the
// bookmark's shown label, and Delete and Cancel. Deletes itself once closed.
class BookmarkDeleteConfirmView : public QDialog {
    Q_OBJECT
public:
    explicit BookmarkDeleteConfirmView(const QString& shownLabel, QWidget* parent = nullptr);

Q_SIGNALS:
    void deleteConfirmed();
};

} // namespace deskmark
