#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel {

// The application's user defaults: byte data under plain names. Main thread only.
class DefaultsStore {
public:
    using Bytes = std::vector<std::uint8_t>;

    virtual ~DefaultsStore() = default;

    [[nodiscard]] virtual std::optional<Bytes> data(std::string_view key) = 0;

    // Takes effect in this process at once, on disk with synchronise().
    virtual void setData(std::string_view key, std::span<const std::uint8_t> value) = 0;

    // Writes what was set and leaves every other key as it is on disk by now. False, with the
    // old content untouched, when that could not be done.
    [[nodiscard]] virtual bool synchronise() = 0;
};

} // namespace kestrel
