#include "tools/selftest/Check.h"
#include "tools/selftest/Scene.h"

namespace kestrel::selftest {

Checks imageChecks()
{
    return { { "the disk image can be mounted, installed, used, quit and verified",
        { Need::DiskImage }, [](Scene& scene) {
            scene.utility.reset();
            const auto set = scene.writeSet("Installed");
            const std::string fault = scene.studio.tryDiskImage(scene.folder, set.string());
            expect(fault.empty(), fault);
        } } };
}

} // namespace kestrel::selftest
