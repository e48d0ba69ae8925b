#include "tools/pro-tools/ReceivedKey.h"

#include <array>

namespace kestrel {

namespace {
struct StateBit {
    std::uint16_t bit;
    const char* name;
    const char* glyph;
};

constexpr std::array StateBits {
    StateBit { 0x01, "Shift", "⇧" },
    StateBit { 0x04, "Control", "⌃" },
    StateBit { 0x08, "Option", "⌥" },
    StateBit { 0x40, "Command", "⌘" },
    StateBit { 0x02, "Lock", "⇪" },
};
} // namespace

std::string ReceivedKey::line() const
{
    std::string names;
    for (const StateBit& each : StateBits) {
        if ((state & each.bit) != 0)
            names.append(names.empty() ? "" : "+").append(each.name);
    }
    std::string line(down ? "down " : "up ");
    line.append(key).append(" ").append(names.empty() ? "none" : names);
    line.append(" repeat=").append(repeat ? "yes" : "no");
    line.append(" t=").append(std::to_string(microseconds));
    return details.empty() ? line : line.append(" ").append(details);
}

std::string ReceivedKey::glyphs() const
{
    std::string text;
    for (const StateBit& each : StateBits) {
        if ((state & each.bit) != 0)
            text += each.glyph;
    }
    return text;
}

} // namespace kestrel
