#include "tools/selftest/utility/NativeSide.h"

namespace kestrel::selftest {

// The simulated console is a JACK client, and each client is a device.
std::vector<MIDIEntity> simulatedConsole()
{
    return {};
}

// Other programs see all of it on X11, and the self-test asks the X server.
std::string nativeFacts(const QWidget&)
{
    return {};
}

std::string statusItemFacts()
{
    return {};
}

void setApplicationHidden(bool) { }

} // namespace kestrel::selftest
