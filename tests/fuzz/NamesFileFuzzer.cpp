// The legacy names.json through the migration: every Space of a file that decodes gets
// its name and preset in the project store, and keeps them across a restart.
#include "FuzzFolder.h"
#include "core/model/ProjectFileCodec.h"
#include "core/model/ProjectStore.h"

using namespace deskmark;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::FuzzFolder& folder = fuzz::FuzzFolder::shared();
    folder.reset("names.json", data, size);
    const auto styles = ProjectFileCodec::decodeNames(
        QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    const ProjectStore migrated(folder.path());
    if (!styles) {
        fuzz::require(migrated.projects().isEmpty(), "nothing migrated from a damaged file");
        return 0;
    }
    const ProjectStore restarted(folder.path());
    fuzz::require(restarted.projects() == migrated.projects(), "same projects after a restart");
    for (auto it = styles->cbegin(); it != styles->cend(); ++it) {
        const std::optional<Project> project = restarted.projectForSpace(it.key());
        fuzz::require(project.has_value(), "every Space has its project");
        fuzz::require(project->name == it->name, "the name kept");
        fuzz::require(project->presetID == it->presetID, "the preset kept");
    }
    return 0;
}
