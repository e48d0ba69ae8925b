#include "platform/linux/midi/PortPairing.h"

#include "platform/linux/midi/NaturalOrder.h"

#include <algorithm>

namespace kestrel {

namespace {
std::vector<std::string> portsOf(
    std::string_view client, std::span<const PortListing> ports, PortDirection direction)
{
    std::vector<std::string> names;
    for (const PortListing& port : ports) {
        if (port.direction == direction && clientOf(port.name) == client)
            names.push_back(port.name);
    }
    std::sort(names.begin(), names.end(), comesNaturallyBefore);
    return names;
}

PortOwner ownerOf(std::string_view client, std::span<const PortListing> ports)
{
    const auto outputs = portsOf(client, ports, PortDirection::Output);
    const auto inputs = portsOf(client, ports, PortDirection::Input);
    PortOwner owner { std::string(client), {} };
    owner.pairs.resize(std::max(outputs.size(), inputs.size()));
    for (std::size_t i = 0; i < outputs.size(); ++i)
        owner.pairs[i].output = outputs[i];
    for (std::size_t i = 0; i < inputs.size(); ++i)
        owner.pairs[i].input = inputs[i];
    return owner;
}
} // namespace

std::vector<PortOwner> pairPorts(std::span<const PortListing> ports)
{
    std::vector<PortOwner> owners;
    for (const PortListing& port : ports) {
        const std::string_view client = clientOf(port.name);
        const bool known = std::any_of(owners.begin(), owners.end(),
            [client](const PortOwner& owner) { return owner.client == client; });
        if (!known)
            owners.push_back(ownerOf(client, ports));
    }
    return owners;
}

std::string_view clientOf(std::string_view portName)
{
    return portName.substr(0, portName.find(':'));
}

bool isNameFor(std::string_view asked, std::string_view client)
{
    if (!client.starts_with(asked))
        return false;
    const std::string_view rest = client.substr(asked.size());
    return rest.empty()
        || (rest.size() > 1 && rest[0] == '-'
            && rest.find_first_not_of("0123456789", 1) == std::string_view::npos);
}

std::int32_t stableIdentifier(std::string_view portName)
{
    std::uint32_t hash = 2166136261u; // FNV-1a
    for (const char character : portName) {
        hash ^= static_cast<std::uint8_t>(character);
        hash *= 16777619u;
    }
    return static_cast<std::int32_t>(hash);
}

} // namespace kestrel
