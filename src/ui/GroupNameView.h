#pragma once

#include "core/bookmarks/GroupNameRequest.h"

#include <QDialog>

class QLineEdit;

namespace deskmark {

// The prompt for a group's name, 420 wide: the request's title and message, a name field
// and the buttons Cancel and the request's own. Deletes itself once closed.
class GroupNameView : public QDialog {
    Q_OBJECT
public:
    explicit GroupNameView(GroupNameRequest request, QWidget* parent = nullptr);

    // Hands the name to the request and closes; an empty name the request refuses keeps
    // the prompt open.
    void commit();

private:
    GroupNameRequest request_;
    QLineEdit* name_;
};

} // namespace deskmark
