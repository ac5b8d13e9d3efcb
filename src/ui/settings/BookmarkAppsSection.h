#pragma once

#include "core/settings/FolderAppsPaneModel.h"
#include "ui/settings/SettingsContext.h"

#include <QWidget>

class QComboBox;
class QListWidget;

namespace deskmark {

// The applications bookmarks open with: the terminal and the editor, and the folder
// menu's applications with their order and visibility.
class BookmarkAppsSection : public QWidget {
    Q_OBJECT
public:
    explicit BookmarkAppsSection(const SettingsContext& context, QWidget* parent = nullptr);

private:
    void renderPickers();
    void renderFolderApps();

    const SettingsContext& context_;
    FolderAppsPaneModel folderApps_;
    QComboBox* terminal_;
    QComboBox* editor_;
    QListWidget* folderList_;
};

} // namespace deskmark
