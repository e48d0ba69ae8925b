#pragma once

#include "platform/FileAttributes.h"
#include "platform/Notices.h"
#include "platform/Permissions.h"
#include "platform/ProcessTable.h"

#include <memory>

namespace kestrel {

// The seams that the kernel serves alone.
[[nodiscard]] std::unique_ptr<ProcessTable> makeProcessTable();
[[nodiscard]] std::unique_ptr<FileAttributes> makeFileAttributes();
[[nodiscard]] std::unique_ptr<Permissions> makePermissions();

// What the kind of the desktop's session keeps from the program.
[[nodiscard]] std::unique_ptr<Notices> makeNotices();

} // namespace kestrel
