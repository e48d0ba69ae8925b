#pragma once

#include "platform/DefaultsStore.h"

#include <memory>
#include <string>

namespace kestrel {

// Where the utility keeps its assignments, for the utility and the programs beside it.
struct StoredDefaults {
    std::unique_ptr<DefaultsStore> store;
    std::string recoveryFile; // UTF-8 path for a copy of the live set; empty for none
    std::string place; // for messages, in UTF-8
};

// Each platform folder defines it once.
[[nodiscard]] StoredDefaults openStoredDefaults();

} // namespace kestrel
