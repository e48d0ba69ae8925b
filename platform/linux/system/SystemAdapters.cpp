#include "platform/linux/system/SystemAdapters.h"

#include "platform/linux/system/LinuxPermissions.h"
#include "platform/linux/system/ProcProcessTable.h"
#include "platform/linux/system/SessionNotices.h"
#include "platform/linux/system/XattrFileAttributes.h"

namespace kestrel {

std::unique_ptr<ProcessTable> makeProcessTable()
{
    return std::make_unique<ProcProcessTable>();
}

std::unique_ptr<FileAttributes> makeFileAttributes()
{
    return std::make_unique<XattrFileAttributes>();
}

std::unique_ptr<Permissions> makePermissions()
{
    return std::make_unique<LinuxPermissions>();
}

std::unique_ptr<Notices> makeNotices()
{
    return std::make_unique<SessionNotices>(SessionNotices::sessionOfEnvironment());
}

} // namespace kestrel
