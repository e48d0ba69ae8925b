#include "platform/linux/system/SystemAdapters.h"

#include "platform/linux/system/LinuxPermissions.h"
#include "platform/linux/system/ProcProcessTable.h"
#include "platform/linux/system/SessionNotices.h"
#include "platform/linux/system/XattrDocumentFiles.h"

namespace kestrel {

std::unique_ptr<ProcessTable> makeProcessTable()
{
    return std::make_unique<ProcProcessTable>();
}

std::unique_ptr<DocumentFiles> makeDocumentFiles()
{
    return std::make_unique<XattrDocumentFiles>();
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
