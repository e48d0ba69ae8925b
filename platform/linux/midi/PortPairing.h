#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel {

// The output ports of other clients are our sources; their input ports are our destinations.
enum class PortDirection { Output, Input };

struct PortListing {
    std::string name; // "client:port"
    PortDirection direction = PortDirection::Output;

    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 misreads a defaulted comparison
    auto operator<=>(const PortListing&) const = default;
};

struct PortPair {
    std::optional<std::string> output;
    std::optional<std::string> input;
};

struct PortOwner {
    std::string client;
    std::vector<PortPair> pairs;
};

// Lists the clients in the order of their first ports. The k-th pair of a client holds its k-th
// output and its k-th input in natural order of the names.
[[nodiscard]] std::vector<PortOwner> pairPorts(std::span<const PortListing> ports);

// The client's name, which is the part of a full port name before the colon.
[[nodiscard]] std::string_view clientOf(std::string_view portName);

// True when JACK may have given the name `client` to a program that asked for `asked`: JACK appends
// a hyphen and a number to a name that is taken.
[[nodiscard]] bool isNameFor(std::string_view asked, std::string_view client);

// A number for a port name. It is the same on every run and every machine.
[[nodiscard]] std::int32_t stableIdentifier(std::string_view portName);

} // namespace kestrel
