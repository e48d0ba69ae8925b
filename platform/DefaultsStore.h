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

    // Takes effect in this process at once, and on disk with synchronise().
    virtual void setData(std::string_view key, std::span<const std::uint8_t> value) = 0;

    // Writes the values that were set; other keys keep what is on disk now, even if another process
    // has changed them. False when that failed; the content on disk is then unchanged.
    [[nodiscard]] virtual bool synchronise() = 0;

    // Why the last synchronise() failed, or why reading failed if there was none yet, in a few
    // words. Empty if neither failed.
    [[nodiscard]] virtual std::string problem() const = 0;
};

} // namespace kestrel
