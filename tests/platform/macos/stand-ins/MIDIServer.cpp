#include "tests/platform/macos/stand-ins/MIDIServer.h"

#include "tests/platform/macos/stand-ins/PacketLists.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace kestrel::test {

MIDIServer& MIDIServer::instance()
{
    static MIDIServer server;
    return server;
}

MIDIDeviceRef MIDIServer::addDevice(
    CFStringRef model, std::size_t entities, std::size_t sources, std::size_t destinations)
{
    static SInt32 uniqueID = -2000000000;
    MIDISetup::Device device { MIDISetup::newReference(), CFHolder<CFStringRef>::retained(model),
        {} };
    for (std::size_t i = 0; i < entities; ++i) {
        MIDISetup::Entity entity { MIDISetup::newReference(), {}, {} };
        for (std::size_t j = 0; j < sources; ++j)
            entity.sources.push_back({ MIDISetup::newReference(), ++uniqueID });
        for (std::size_t j = 0; j < destinations; ++j)
            entity.destinations.push_back(MIDISetup::newReference());
        device.entities.push_back(std::move(entity));
    }
    setup.devices.push_back(std::move(device));

    const auto& added = setup.devices.back();
    const auto tell = [this](MIDIObjectRef parent, MIDIObjectType parentType, MIDIObjectRef child,
                          MIDIObjectType childType) {
        notify(kMIDIMsgObjectAdded, parent, parentType, child, childType);
    };
    tell(0, kMIDIObjectType_Other, added.ref, kMIDIObjectType_Device);
    for (const auto& entity : added.entities) {
        tell(added.ref, kMIDIObjectType_Device, entity.ref, kMIDIObjectType_Entity);
        for (const auto& source : entity.sources)
            tell(entity.ref, kMIDIObjectType_Entity, source.ref, kMIDIObjectType_Source);
        for (const auto destination : entity.destinations)
            tell(entity.ref, kMIDIObjectType_Entity, destination, kMIDIObjectType_Destination);
    }
    notify(kMIDIMsgSetupChanged, 0, {}, 0, {});
    return added.ref;
}

void MIDIServer::removeDevice(MIDIDeviceRef device)
{
    const auto found = std::find_if(setup.devices.begin(), setup.devices.end(),
        [device](const auto& each) { return each.ref == device; });
    if (found == setup.devices.end())
        return;
    const auto removed = std::move(*found);
    setup.devices.erase(found);
    const auto tell = [this](MIDIObjectRef parent, MIDIObjectType parentType, MIDIObjectRef child,
                          MIDIObjectType childType) {
        notify(kMIDIMsgObjectRemoved, parent, parentType, child, childType);
    };
    for (const auto& entity : removed.entities) {
        for (const auto& source : entity.sources)
            tell(entity.ref, kMIDIObjectType_Entity, source.ref, kMIDIObjectType_Source);
        for (const auto destination : entity.destinations)
            tell(entity.ref, kMIDIObjectType_Entity, destination, kMIDIObjectType_Destination);
        tell(removed.ref, kMIDIObjectType_Device, entity.ref, kMIDIObjectType_Entity);
    }
    tell(0, kMIDIObjectType_Other, removed.ref, kMIDIObjectType_Device);
    notify(kMIDIMsgSetupChanged, 0, {}, 0, {});
}

void MIDIServer::notify(MIDINotificationMessageID message, MIDIObjectRef parent,
    MIDIObjectType parentType, MIDIObjectRef child, MIDIObjectType childType)
{
    const bool isLong = message != kMIDIMsgSetupChanged;
    const std::size_t size
        = isLong ? sizeof(MIDIObjectAddRemoveNotification) : sizeof(MIDINotification);
    const MIDIObjectAddRemoveNotification notification { message, static_cast<UInt32>(size), parent,
        parentType, child, childType };
    const auto* const bytes = reinterpret_cast<const unsigned char*>(&notification);
    for (const auto& [client, content] : clients)
        m_notifications.emplace_back(client, std::vector(bytes, bytes + size));
}

void MIDIServer::runNotifications()
{
    while (!m_notifications.empty()) {
        const auto [client, message] = std::move(m_notifications.front());
        m_notifications.pop_front();
        const auto found = clients.find(client);
        if (found == clients.end() || !found->second.notify)
            continue;
        found->second.notify(
            reinterpret_cast<const MIDINotification*>(message.data()), found->second.refCon);
    }
}

OSStatus MIDIServer::play(MIDIEndpointRef source, const MIDIPacketList* packets)
{
    const std::scoped_lock lock(m_mutex);
    for (const Connection& connection : m_connections) {
        if (connection.source != source)
            continue;
        const Port& port = ports.at(connection.port);
        receiveThread.deliver(
            { port.read, port.refCon, connection.srcConnRefCon, PacketLists::bytes(packets) });
    }
    return noErr;
}

OSStatus MIDIServer::send(
    MIDIPortRef port, MIDIEndpointRef destination, const MIDIPacketList* packets)
{
    const auto from = ports.find(port);
    if (from == ports.end() || from->second.read)
        return kMIDIInvalidPort;
    const auto to = m_virtual.find(destination);
    if (!setup.hasDestination(destination) && (to == m_virtual.end() || !to->second.read))
        return kMIDIUnknownEndpoint;
    sent.push_back({ port, destination, PacketLists::data(packets) });
    if (to != m_virtual.end())
        receiveThread.deliver(
            { to->second.read, to->second.refCon, nullptr, PacketLists::bytes(packets) });
    return noErr;
}

OSStatus MIDIServer::createClient(Client client, MIDIClientRef* created)
{
    if (m_gone)
        return kMIDIServerStartErr;
    *created = MIDISetup::newReference();
    clients.emplace(*created, std::move(client));
    return noErr;
}

OSStatus MIDIServer::disposeClient(MIDIClientRef client)
{
    const std::scoped_lock lock(m_mutex);
    if (clients.erase(client) == 0)
        return kMIDIInvalidClient;
    std::erase_if(m_connections,
        [this, client](const Connection& each) { return ports.at(each.port).client == client; });
    std::erase_if(ports, [client](const auto& each) { return each.second.client == client; });
    std::erase_if(m_virtual, [client](const auto& each) { return each.second.client == client; });
    m_gone = clients.empty();
    return noErr;
}

OSStatus MIDIServer::createPort(Port port, MIDIPortRef* created)
{
    const std::scoped_lock lock(m_mutex);
    if (!clients.contains(port.client))
        return kMIDIInvalidClient;
    *created = MIDISetup::newReference();
    ports.emplace(*created, port);
    return noErr;
}

OSStatus MIDIServer::disposePort(MIDIPortRef port)
{
    const std::scoped_lock lock(m_mutex);
    std::erase_if(m_connections, [port](const Connection& each) { return each.port == port; });
    return ports.erase(port) == 0 ? OSStatus { kMIDIInvalidPort } : OSStatus { noErr };
}

OSStatus MIDIServer::createEndpoint(VirtualEndpoint endpoint, MIDIEndpointRef* created)
{
    const std::scoped_lock lock(m_mutex);
    if (!clients.contains(endpoint.client))
        return kMIDIInvalidClient;
    *created = MIDISetup::newReference();
    m_virtual.emplace(*created, endpoint);
    return noErr;
}

OSStatus MIDIServer::disposeEndpoint(MIDIEndpointRef endpoint)
{
    const std::scoped_lock lock(m_mutex);
    return m_virtual.erase(endpoint) == 0 ? OSStatus { kMIDIUnknownEndpoint } : OSStatus { noErr };
}

OSStatus MIDIServer::connect(MIDIPortRef port, MIDIEndpointRef source, void* srcConnRefCon)
{
    const std::scoped_lock lock(m_mutex);
    const auto to = ports.find(port);
    if (to == ports.end() || !to->second.read)
        return kMIDIInvalidPort;
    if (!setup.source(source) && !m_virtual.contains(source))
        return kMIDIUnknownEndpoint;
    m_connections.push_back({ port, source, srcConnRefCon });
    return noErr;
}

} // namespace kestrel::test
