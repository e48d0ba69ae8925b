#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel {

// The outputs of other clients are our sources, their inputs our destinations.
enum class PortDirection { Output, Input };

struct PortListing {
    std::string name; // "client:port"
    PortDirection direction = PortDirection::Output;
};

struct PortPair {
    std::optional<std::string> output;
    std::optional<std::string> input;
};

struct PortOwner {
    std::string client;
    std::vector<PortPair> pairs;
};

// The clients in the order of their first ports; the k-th pair of a client holds its k-th output
// and its k-th input in natural order of the names.
[[nodiscard]] std::vector<PortOwner> pairPorts(std::span<const PortListing> ports);

// The part of a full port name that names the client.
[[nodiscard]] std::string_view clientOf(std::string_view portName);

// The same number for the same name on every run and every machine.
[[nodiscard]] std::int32_t stableIdentifier(std::string_view portName);

} // namespace kestrel
