#pragma once

#include "core/bookmarks/BookmarkFormModel.h"

#include <QDialog>

#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;

namespace deskmark {

class BookmarkTargetTextView;

// The form that adds or edits one bookmark, 460 wide: URL or path, name, group (with a
// field for a new group's name) and, for an address or a folder, the application that
// opens it. Save (or Return in the URL field) saves through the model and closes; a
// duplicate keeps the form open with the message. Deletes itself once closed.
class BookmarkFormView : public QDialog {
    Q_OBJECT
public:
    explicit BookmarkFormView(std::unique_ptr<BookmarkFormModel> model, QWidget* parent = nullptr);
    ~BookmarkFormView() override;

    BookmarkFormModel& model() { return *model_; }
    void save();

private:
    void refreshAppOptions();
    void chooseOtherApp();
    void renderGroups();

    std::unique_ptr<BookmarkFormModel> model_;
    BookmarkTargetTextView* target_;
    QLineEdit* label_;
    QComboBox* group_;
    QLineEdit* newGroup_;
    QLabel* appLabel_;
    QComboBox* app_;
    QLabel* appCaption_;
    QLabel* duplicate_;
};

} // namespace deskmark
