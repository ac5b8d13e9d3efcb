#include "core/settings/FolderAppsPaneModel.h"

#include "core/bookmarks/AppCandidateStore.h"
#include "core/model/SettingsStore.h"

namespace deskmark {

FolderAppsPaneModel::FolderAppsPaneModel(const AppCandidateStore& candidates,
                                         SettingsStore& settings)
    : candidates_(candidates), settings_(settings) {}

void FolderAppsPaneModel::move(const QString& bundleID, bool up) {
    QStringList order;
    for (const AppCandidateStore::App& app : candidates_.orderedFolderApps())
        order << app.bundleID;
    const qsizetype from = order.indexOf(bundleID);
    const qsizetype to = up ? from - 1 : from + 1;
    if (from < 0 || to < 0 || to >= order.size())
        return;
    order.swapItemsAt(from, to);
    for (const QString& id : settings_.folderAppOrder()) {
        if (!order.contains(id))
            order << id;
    }
    settings_.setFolderAppOrder(order);
}

void FolderAppsPaneModel::setShown(const QString& bundleID, bool shown) {
    QStringList hidden = settings_.folderAppHidden();
    hidden.removeAll(bundleID);
    if (!shown)
        hidden << bundleID;
    settings_.setFolderAppHidden(hidden);
}

} // namespace deskmark
