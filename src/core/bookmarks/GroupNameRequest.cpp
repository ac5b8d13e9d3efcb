#include "core/bookmarks/GroupNameRequest.h"

#include "core/app/Language.h"

namespace deskmark {

bool GroupNameRequest::commit(const QString& text) const {
    const QString name = text.trimmed();
    if (name.isEmpty() && !allowsEmpty)
        return false;
    if (onCommit)
        onCommit(name);
    return true;
}

GroupNameRequest GroupNameRequest::newGroup(std::function<void(const QString&)> onCommit) {
    GroupNameRequest request;
    request.title = localized("新しいグループ", "New Group");
    request.message = localized("作成するグループの名前を入力してください。",
                                "Enter a name for the new group.");
    request.buttonTitle = localized("作成", "Create");
    request.onCommit = std::move(onCommit);
    return request;
}

GroupNameRequest GroupNameRequest::renameGroup(const QString& name,
                                               std::function<void(const QString&)> onCommit) {
    GroupNameRequest request;
    request.title = localized("グループ名を変更", "Rename Group");
    request.message =
        localized("グループ「", "Enter a new name for the group “") + name +
        localized("」の新しい名前を入力してください。空にするとグループを削除します"
                  "（項目は残り、グループなしになります）。",
                  "”. Leave it empty to delete the group (its items are kept and become "
                  "ungrouped).");
    request.buttonTitle = localized("名前を変更", "Rename");
    request.initial = name;
    request.allowsEmpty = true;
    request.onCommit = std::move(onCommit);
    return request;
}

} // namespace deskmark
