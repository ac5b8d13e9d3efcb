#pragma once

#include "ui/settings/SettingsContext.h"

#include <QUuid>
#include <QWidget>

#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;

namespace deskmark {

// One project's bookmarks in group order and its groups: reorder, regroup and delete
// bookmarks; add, rename, reorder and remove groups. Adding and editing bookmarks
// themselves is the bookmark form's.
class BookmarkListSection : public QWidget {
    Q_OBJECT
public:
    explicit BookmarkListSection(const SettingsContext& context, QWidget* parent = nullptr);

private:
    void render();
    std::optional<QUuid> project() const;
    std::optional<QUuid> selectedBookmark() const;
    std::optional<QString> selectedGroup() const;

    const SettingsContext& context_;
    QComboBox* project_;
    QListWidget* bookmarks_;
    QComboBox* moveTo_;
    QListWidget* groups_;
    QLineEdit* groupName_;
    QLabel* groupError_;
};

} // namespace deskmark
