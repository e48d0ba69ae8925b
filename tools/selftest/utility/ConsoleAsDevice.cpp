#include "tools/selftest/utility/ConsoleAsDevice.h"

namespace kestrel::selftest {

std::optional<MIDIClient> ConsoleAsDevice::createClient(
    std::string_view name, NotifyProc notify, void* refCon)
{
    return m_services->createClient(name, notify, refCon);
}

std::optional<MIDIPort> ConsoleAsDevice::createInputPort(
    MIDIClient client, std::string_view name, ReadProc read, void* refCon)
{
    return m_services->createInputPort(client, name, read, refCon);
}

std::optional<MIDIPort> ConsoleAsDevice::createOutputPort(MIDIClient client, std::string_view name)
{
    return m_services->createOutputPort(client, name);
}

std::vector<MIDIDevice> ConsoleAsDevice::devices()
{
    auto devices = m_services->devices();
    if (auto entities = m_entities(); !entities.empty())
        devices.push_back({ .model = "ZENTA", .entities = std::move(entities) });
    return devices;
}

bool ConsoleAsDevice::connectSource(MIDIPort inputPort, MIDIEndpoint source, void* srcConnRefCon)
{
    return m_services->connectSource(inputPort, source, srcConnRefCon);
}

bool ConsoleAsDevice::answersFor(MIDIEndpoint source, std::int32_t uniqueID)
{
    return m_services->answersFor(source, uniqueID);
}

bool ConsoleAsDevice::send(MIDIPort outputPort, MIDIEndpoint destination, const MIDIPacket& packet)
{
    return m_services->send(outputPort, destination, packet);
}

void ConsoleAsDevice::setPacketsLost(std::function<void()> packetsLost)
{
    m_services->setPacketsLost(std::move(packetsLost));
}

} // namespace kestrel::selftest
