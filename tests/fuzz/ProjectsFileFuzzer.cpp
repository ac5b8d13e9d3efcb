// projects.json as the store decodes it: a text that decodes encodes to one that
// decodes to the same projects and assignments.
#include "FuzzFolder.h"
#include "core/model/ProjectFileCodec.h"

using namespace deskmark;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray text(reinterpret_cast<const char*>(data), qsizetype(size));
    const auto document = ProjectFileCodec::decode(text);
    if (!document)
        return 0;
    const auto encoded = ProjectFileCodec::encode(*document, text.size());
    fuzz::require(encoded.has_value(), "encodes");
    const auto again = ProjectFileCodec::decode(*encoded);
    fuzz::require(again.has_value(), "decodes again");
    fuzz::require(again->projects == document->projects, "same projects");
    fuzz::require(again->assignments == document->assignments, "same assignments");
    return 0;
}
