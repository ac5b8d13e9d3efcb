#pragma once

#include "core/model/PresetStore.h"
#include "core/model/ProjectStore.h"
#include "core/model/SettingsStore.h"
#include "platform/fake/MemoryDefaults.h"

#include <QTemporaryDir>

// The three stores that every label reads, over a fresh folder and in-memory settings;
// the label fixtures add their Space source, screens and windows beside them.
struct LabelStores {
    QTemporaryDir folder;
    deskmark::ProjectStore projects{folder.path()};
    deskmark::PresetStore presets{folder.path()};
    deskmark::MemoryDefaults defaults;
    deskmark::SettingsStore settings{defaults, {}};
};
