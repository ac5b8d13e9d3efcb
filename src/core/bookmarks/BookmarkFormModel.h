#pragma once

#include "core/model/Bookmark.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace deskmark {

class AppCandidateStore;
class ProjectStore;

// The bookmark form's fields and the rules for saving them: adding a new bookmark,
// editing one, or starting from a captured one.
class BookmarkFormModel {
public:
    // Which application picker the target asks for.
    enum class AppPicker { None, Browser, Folder };
    enum class SaveResult { Invalid, Duplicate, Saved };

    // One choice of a picker: the text shown and the tag stored.
    struct Option {
        QString title;
        QString tag;

        friend bool operator==(const Option&, const Option&) = default;
    };

    // The tags of the "New Group…" and "Other…" choices. They begin with the control
    // character 1, which no group name or application id contains.
    static const QString newGroupTag;
    static const QString otherAppTag;

    BookmarkFormModel(ProjectStore& projects, AppCandidateStore& candidates, QUuid projectID,
                      std::optional<Bookmark> editing, std::optional<Bookmark> prefill);

    QString windowTitle() const;
    bool isEditing() const { return editing_.has_value(); }

    // The fields. group is a group name, empty for none, or newGroupTag; appBundleID is an
    // application id, empty for the default one.
    QString target;
    QString label;
    QString group;
    QString newGroup;
    QString appBundleID;

    // Set when the last save was refused as a duplicate.
    bool duplicate() const { return duplicate_; }
    static QString duplicateMessage();

    AppPicker appPicker() const;
    QList<Option> groupOptions() const;
    // The picker's choices: the default first; for a folder, "Other…" last.
    QList<Option> appOptions() const;
    QString appPickerLabel() const;
    QString appPickerCaption() const;
    // Makes the application at a location (chosen through "Other…") the selected one.
    void chooseOtherApp(const QString& appURL);

    // Parses the target and adds or updates the bookmark; on Duplicate the form stays open
    // with the message shown.
    SaveResult save();

private:
    ProjectStore& projects_;
    AppCandidateStore& candidates_;
    QUuid projectID_;
    std::optional<Bookmark> editing_;
    // An application chosen through "Other…": offered in the picker although it is not a
    // folder application.
    std::optional<Option> otherApp_;
    bool duplicate_ = false;
};

} // namespace deskmark
