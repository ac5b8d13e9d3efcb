#include "core/bookmarks/AppCandidateStore.h"

#include "core/app/Language.h"
#include "core/bookmarks/Workspace.h"
#include "core/model/NaturalOrder.h"
#include "core/model/SettingsStore.h"

#include <QSet>
#include <QThread>

#include <algorithm>

namespace deskmark {

const QString AppCandidateStore::folderType = QStringLiteral("inode/directory");
const QString AppCandidateStore::browserType = QStringLiteral("x-scheme-handler/https");

namespace {

using App = AppCandidateStore::App;

App appAt(const Workspace& workspace, const QString& location, const QString& id) {
    return App{workspace.applicationName(location), id, location,
               workspace.applicationIconName(location)};
}

// One entry per application (the first location found wins when two copies carry the same
// id in any letter case), sorted by name as a file browser sorts: digits by value, case ignored.
QList<App> apps(const Workspace& workspace, const QStringList& locations,
                const QString& leaveOut = {}) {
    QList<App> result;
    QSet<QString> taken;
    if (!leaveOut.isEmpty())
        taken.insert(leaveOut.toLower());
    for (const QString& location : locations) {
        const QString id = workspace.applicationID(location);
        if (id.isEmpty() || taken.contains(id.toLower()))
            continue;
        taken.insert(id.toLower());
        result << appAt(workspace, location, id);
    }
    const QCollator collator = naturalCollator();
    std::stable_sort(result.begin(), result.end(), [&](const App& a, const App& b) {
        return collator.compare(a.name, b.name) < 0;
    });
    return result;
}

} // namespace

AppCandidateStore::AppCandidateStore(Workspace& workspace, SettingsStore& settings,
                                     QObject* parent)
    : QObject(parent), workspace_(workspace), settings_(settings) {}

AppCandidateStore::~AppCandidateStore() {
    if (worker_)
        worker_->wait();
}

AppCandidateStore::Lists AppCandidateStore::build(const Workspace& workspace) {
    Lists lists;
    // The default file manager plays the part of the one file manager every user has.
    QString fileManagerID;
    if (const std::optional<QString> location = workspace.defaultApplicationForType(folderType)) {
        fileManagerID = workspace.applicationID(*location);
        if (!fileManagerID.isEmpty()) {
            lists.finder = appAt(workspace, *location, fileManagerID);
            lists.finder->name = localized("ファイルマネージャ（既定）", "File Manager (default)");
        }
    }
    lists.folderApps = apps(workspace, workspace.applicationsForType(folderType), fileManagerID);
    lists.browserApps = apps(workspace, workspace.applicationsForType(browserType));
    return lists;
}

void AppCandidateStore::ensureLoaded() {
    if (!loaded_)
        store(build(workspace_));
}

void AppCandidateStore::refreshInBackground() {
    if (refreshing_)
        return;
    refreshing_ = true;
    worker_.reset(QThread::create([this] {
        Lists lists = build(workspace_);
        QMetaObject::invokeMethod(
            this,
            [this, lists = std::move(lists)]() mutable {
                worker_->wait();
                worker_.reset();
                refreshing_ = false;
                store(std::move(lists));
            },
            Qt::QueuedConnection);
    }));
    worker_->start();
}

void AppCandidateStore::store(Lists lists) {
    folderApps_ = std::move(lists.folderApps);
    browserApps_ = std::move(lists.browserApps);
    finder_ = std::move(lists.finder);
    loaded_ = true;
    Q_EMIT changed();
}

QList<AppCandidateStore::App> AppCandidateStore::orderedFolderApps() const {
    const QStringList& order = settings_.folderAppOrder();
    auto rank = [&](const App& app) {
        const qsizetype at = order.indexOf(app.bundleID);
        return at < 0 ? order.size() : at;
    };
    QList<App> result = folderApps_;
    std::stable_sort(result.begin(), result.end(),
                     [&](const App& a, const App& b) { return rank(a) < rank(b); });
    return result;
}

QList<AppCandidateStore::App> AppCandidateStore::visibleFolderApps() const {
    const QStringList& hidden = settings_.folderAppHidden();
    QList<App> result = orderedFolderApps();
    result.removeIf([&](const App& app) { return hidden.contains(app.bundleID); });
    return result;
}

std::optional<AppCandidateStore::App> AppCandidateStore::app(const QString& bundleID) const {
    for (const QList<App>* list : {&folderApps_, &browserApps_}) {
        for (const App& candidate : *list) {
            if (candidate.bundleID == bundleID)
                return candidate;
        }
    }
    if (finder_ && finder_->bundleID == bundleID)
        return finder_;
    return std::nullopt;
}

} // namespace deskmark
