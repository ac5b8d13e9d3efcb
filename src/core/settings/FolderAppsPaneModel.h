#pragma once

#include <QString>

namespace deskmark {

class AppCandidateStore;
class SettingsStore;

// The folder-application list of the Bookmarks pane: ▲▼ move an application one place
// in the order the folder menu uses, a check box shows or hides it.
class FolderAppsPaneModel {
public:
    FolderAppsPaneModel(const AppCandidateStore& candidates, SettingsStore& settings);

    // Stores the whole order as shown with the application moved one place, so that
    // applications that had no place yet keep the one they are shown in. Entries of
    // applications that are not installed stay at the end. Nothing at either edge.
    void move(const QString& bundleID, bool up);
    void setShown(const QString& bundleID, bool shown);

private:
    const AppCandidateStore& candidates_;
    SettingsStore& settings_;
};

} // namespace deskmark
