#include "panel/DisplayMessage.h"

#include <algorithm>

namespace kestrel {

namespace {
constexpr std::size_t CommandAt = 6;
constexpr std::uint8_t LargeDisplay = 0x12;
constexpr std::size_t FirstRecordAt = 7;
constexpr std::size_t RecordLength = 1 + PanelLayout::ZoneLength;
constexpr std::uint8_t EndOfExclusive = 0xF7;
} // namespace

std::bitset<PanelLayout::StoredZones> storeDisplayMessage(
    std::span<const std::uint8_t> data, PanelZones& zones)
{
    std::bitset<PanelLayout::StoredZones> stored;
    if (data.size() <= FirstRecordAt || data[CommandAt] != LargeDisplay)
        return stored;
    for (auto rest = data.subspan(FirstRecordAt);
         rest.size() >= RecordLength && rest.front() != EndOfExclusive;
         rest = rest.subspan(RecordLength)) {
        const std::size_t zone = rest.front();
        if (zone >= zones.size())
            continue;
        std::copy_n(rest.begin() + 1, PanelLayout::ZoneLength, zones[zone].begin());
        stored.set(zone);
    }
    return stored;
}

} // namespace kestrel
