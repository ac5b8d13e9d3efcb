// presets.json through the store: presets read from a file that decodes are written
// back by the next save and read again unchanged.
#include "FuzzFolder.h"
#include "core/model/PresetStore.h"

using namespace deskmark;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::FuzzFolder& folder = fuzz::FuzzFolder::shared();
    folder.reset("presets.json", data, size);
    PresetStore store(folder.path());
    const QList<ColorPreset> loaded = store.presets();
    for (const ColorPreset& preset : loaded)
        store.colors(preset.id);
    store.updatePreset(loaded.first()); // a save with nothing changed
    // A file that did not decode was set aside before that save; nothing to compare.
    if (QFile::exists(folder.file("presets.json.broken")))
        return 0;
    fuzz::require(PresetStore(folder.path()).presets() == loaded, "same presets after a save");
    return 0;
}
