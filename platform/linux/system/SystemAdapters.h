#pragma once

#include "platform/DocumentFiles.h"
#include "platform/Notices.h"
#include "platform/Permissions.h"
#include "platform/ProcessTable.h"

#include <memory>

namespace kestrel {

// Adapters that need only the kernel.
[[nodiscard]] std::unique_ptr<ProcessTable> makeProcessTable();
[[nodiscard]] std::unique_ptr<DocumentFiles> makeDocumentFiles();
[[nodiscard]] std::unique_ptr<Permissions> makePermissions();

// Notices about what the desktop session denies the program.
[[nodiscard]] std::unique_ptr<Notices> makeNotices();

} // namespace kestrel
