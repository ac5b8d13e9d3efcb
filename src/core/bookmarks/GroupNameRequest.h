#pragma once

#include <QString>

#include <functional>

namespace deskmark {

// What the group-name prompt asks and what happens with the answer.
struct GroupNameRequest {
    QString title;
    QString message;
    QString buttonTitle;
    QString initial;
    // An empty name may be committed: renaming uses it to delete the group.
    bool allowsEmpty = false;
    std::function<void(const QString&)> onCommit;

    // Trims the text and hands it to onCommit; false (nothing happens) for an empty name
    // unless allowsEmpty.
    bool commit(const QString& text) const;

    // The prompt that creates a group.
    static GroupNameRequest newGroup(std::function<void(const QString&)> onCommit);
    // The prompt that renames `name`; an empty answer deletes the group.
    static GroupNameRequest renameGroup(const QString& name,
                                        std::function<void(const QString&)> onCommit);
};

} // namespace deskmark
