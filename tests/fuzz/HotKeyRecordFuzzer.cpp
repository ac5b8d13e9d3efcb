// The stored hot-key record: a record that reads back as a key is written as one that
// reads back as the same key, and every text made from it can be made.
#include "FuzzFolder.h"
#include "core/model/HotKey.h"

using namespace deskmark;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto key =
        HotKey::fromJson(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (!key)
        return 0;
    key->displayString();
    key->keyName();
    key->menuKeyEquivalent();
    key->qtKeyCombination();
    fuzz::require(HotKey::fromJson(key->toJson()) == key, "same key after a save");
    return 0;
}
