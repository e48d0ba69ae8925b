#include "panel/DisplayMessage.h"

#include "link/ConsoleProtocol.h"

#include <algorithm>

namespace kestrel {

namespace {
using namespace ConsoleProtocol;

constexpr std::size_t FirstRecordAt = DisplayHeader.size();
constexpr std::size_t RecordLength = 1 + ZoneCharacters;
} // namespace

std::bitset<PanelLayout::StoredZones> storeDisplayMessage(
    std::span<const std::uint8_t> data, PanelZones& zones)
{
    std::bitset<PanelLayout::StoredZones> stored;
    if (data.size() <= FirstRecordAt || data[DisplayCommandAt] != DisplayCommand)
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
