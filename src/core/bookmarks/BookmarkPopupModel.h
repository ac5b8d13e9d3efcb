#pragma once

#include "core/bookmarks/BookmarkHints.h"
#include "core/bookmarks/GroupNameRequest.h"
#include "core/bookmarks/RunningApp.h"
#include "core/model/Bookmark.h"
#include "core/model/Project.h"
#include "core/overlay/ScreenInfo.h"

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace deskmark {

class AppCandidateStore;
class ProjectStore;
class Scheduler;
class SettingsStore;

// Everything the bookmark popup decides: which project it lists, its entries in group
// order, the selection, what each key does, how a row opens, copying, reordering,
// grouping, capturing and removing. The view draws the entries and forwards input; what
// only a view can do (a beep, the clipboard, a menu or a dialog) it is asked by a signal.
class BookmarkPopupModel : public QObject {
    Q_OBJECT
public:
    // A bookmark as the list shows it.
    struct Row {
        Bookmark bookmark;
        QString label;  // displayLabel
        QString target; // displayTarget
        bool exists = true;
        bool isPlainDirectory = false;
        std::optional<QString> branch;
    };
    // One line of the list: a group header, or a bookmark row (an index into rows()).
    struct Entry {
        QString identity; // "header-" + group name, or "row-" + the bookmark's id
        std::optional<QString> header;
        int row = -1;
    };
    struct Banner {
        QString text;
        bool copied = false; // the copy banner has its own symbol
    };
    // One item of the menu a plain folder opens with.
    struct FolderApp {
        QString name;
        QString appURL; // empty for the file manager (the folder's default application)
        QString iconName;
    };

    struct Services {
        ProjectStore& projects;
        SettingsStore& settings;
        AppCandidateStore& candidates;
        Scheduler& scheduler;
    };
    // The popup of the given Space, opened on the display `displayUUID`; captureSource is
    // the application that was active before the popup.
    BookmarkPopupModel(Services services, std::optional<QString> spaceUUID,
                       std::optional<QString> displayUUID,
                       std::optional<RunningApp> captureSource, QObject* parent = nullptr);

    void reload();

    const std::optional<Project>& project() const { return project_; }
    const QList<Entry>& entries() const { return entries_; }
    // The bookmark rows in list order: the selection and the number keys index it.
    const QList<Row>& rows() const { return rows_; }
    int selection() const { return selection_; }
    const Row* selectedRow() const;
    int headerCount() const { return int(entries_.size() - rows_.size()); }
    const std::optional<Banner>& banner() const { return banner_; }
    QList<BookmarkHint> hints() const;
    // The empty state's title and message; empty texts when there are bookmarks.
    QString emptyTitle() const;
    QString emptyMessage() const;
    double scale() const;
    const std::optional<QString>& displayUUID() const { return displayUUID_; }

    // The key's action; false when the popup does not use the key.
    bool handleKey(int key, Qt::KeyboardModifiers modifiers);
    void setSelection(int row);
    void moveSelection(int by);
    void stepScale(bool up);

    // Opening. `screen` is the screen that holds the popup: a new browser window goes there.
    void setPopupScreen(const std::optional<ScreenInfo>& screen) { popupScreen_ = screen; }
    void openSelected(bool alternate, bool editor);
    void open(int row, bool alternate, bool editor);
    void quickOpen(int position);
    QList<FolderApp> folderApps() const;
    void openFolderWith(int row, const QString& appURL);
    void openGroup(const QString& group);
    void copySelected();
    void captureFrontmost();

    // Editing.
    void moveSelectedBookmark(bool up);
    void moveSelectedGroup(bool up);
    void moveGroup(const QString& group, bool up);
    void assignGroup(int row, const std::optional<QString>& group);
    void promptNewGroup(int rowToAssign = -1);
    void promptRenameGroup(const QString& group);
    void removeGroup(const QString& group);
    void editSelected();
    void removeSelected();
    // Adds each path as a file bookmark; false when none was new.
    bool addFiles(const QStringList& paths);

    void showBanner(const QString& text, bool copied = false);

Q_SIGNALS:
    void changed();
    void selectionChanged();
    void bannerChanged();
    void scaleChanged();
    void beep();
    void closeRequested();
    void copyRequested(const QString& text);
    void folderMenuRequested(int row);
    void formRequested(const std::optional<Bookmark>& editing,
                       const std::optional<Bookmark>& prefill);
    void groupNameRequested(const GroupNameRequest& request);
    void deleteConfirmRequested(const Bookmark& bookmark);

private:
    void reloadKeeping(const std::optional<QUuid>& selected);
    // Runs a store edit of the project; beeps when it left the project as it was.
    template <typename Edit>
    void editProject(Edit edit);

    Services services_;
    std::optional<QString> spaceUUID_;
    std::optional<QString> displayUUID_;
    std::optional<RunningApp> captureSource_;
    std::optional<ScreenInfo> popupScreen_;
    std::optional<Project> project_;
    QList<Entry> entries_;
    QList<Row> rows_;
    int selection_ = -1;
    std::optional<Banner> banner_;
    int bannerSerial_ = 0;
};

} // namespace deskmark
