#pragma once

// The stores and the in-memory desktop that the bookmark popup tests share: one project
// shown on "desktop-1", settings in memory, the opener installed against a FakeWorkspace.

#include "core/StoreTestFiles.h"
#include "core/bookmarks/AppCandidateStore.h"
#include "core/bookmarks/BookmarkOpener.h"
#include "core/bookmarks/BookmarkPopupModel.h"
#include "core/model/ProjectStore.h"
#include "core/model/SettingsStore.h"
#include "platform/fake/FakeScheduler.h"
#include "platform/fake/FakeWorkspace.h"
#include "platform/fake/MemoryDefaults.h"

#include <memory>

namespace deskmark::testfiles {

struct BookmarkTestDesktop {
    TempFolder dir;
    FakeWorkspace desktop;
    FakeScheduler scheduler;
    MemoryDefaults defaults;
    std::unique_ptr<SettingsStore> settings;
    std::unique_ptr<ProjectStore> projects;
    std::unique_ptr<AppCandidateStore> candidates;
    QUuid project;

    // Everything afresh: call from the test's init().
    void reset() {
        dir.reset();
        desktop = FakeWorkspace();
        defaults = MemoryDefaults();
        candidates.reset();
        settings = std::make_unique<SettingsStore>(defaults, SettingsStore::PlatformDefaults{});
        projects = std::make_unique<ProjectStore>(dir.path("data"));
        candidates = std::make_unique<AppCandidateStore>(desktop, *settings);
        BookmarkOpener::install(desktop, desktop, desktop, scheduler);
        projects->set(QStringLiteral("Work"), std::nullopt, QStringLiteral("desktop-1"));
        project = projects->projectForSpace(QStringLiteral("desktop-1"))->id;
    }

    BookmarkPopupModel::Services services() {
        return {*projects, *settings, *candidates, scheduler};
    }
};

} // namespace deskmark::testfiles
