#include "archive/ArchiveError.h"
#include "archive/PropertyList.h"
#include "fuzz/Target.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace kestrel {
namespace {

constexpr std::size_t LargeBytes = 1 << 19;
constexpr std::size_t SmallBytes = LargeBytes / 4;
constexpr double SuspiciousSeconds = 0.3;
constexpr double SuspiciousGrowth = 8; // of the time for four times the bytes
constexpr char Separator = '|';

// In a part, these characters stand for a text that is another one in each repetition: its number,
// or one for which libplist computes always the same hash.
constexpr char Counter = '@';
constexpr char OneHash = '~';

double processorSeconds()
{
    timespec now {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

std::string textOfOneHash(std::size_t number)
{
    std::string text;
    for (int bit = 0; bit < 16; ++bit)
        text += (number >> bit & 1) != 0 ? "ab" : "bA";
    return text;
}

// A list with a beginning, a middle that is repeated up to the size, and an end.
std::string grown(const std::array<std::string, 3>& parts, std::size_t size)
{
    std::string list = parts[0];
    for (std::size_t number = 0; list.size() < size; ++number) {
        for (const char character : parts[1]) {
            if (character == Counter)
                list += std::to_string(number);
            else if (character == OneHash)
                list += textOfOneHash(number);
            else
                list += character;
        }
    }
    return list + parts[2];
}

double secondsToRead(const std::string& list)
{
    const double start = processorSeconds();
    try {
        const PropertyList read = PropertyList::fromBytes(
            { reinterpret_cast<const std::uint8_t*>(list.data()), list.size() });
        (void)read.toBinary();
    } catch (const ArchiveError&) {
    }
    return processorSeconds() - start;
}

} // namespace
} // namespace kestrel

// Small inputs take no time, however bad the algorithm. So this target makes large ones of them.
std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    std::array<std::string, 3> parts;
    std::size_t part = 0;
    for (const std::uint8_t byte : input) {
        if (byte == Separator && part < 2)
            ++part;
        else
            parts[part] += static_cast<char>(byte);
    }
    if (parts[1].empty())
        return {};
    const double large = secondsToRead(grown(parts, LargeBytes));
    if (large < SuspiciousSeconds)
        return {};
    const double small = secondsToRead(grown(parts, SmallBytes));
    if (large < SuspiciousGrowth * small)
        return {};
    return "four times the bytes take " + std::to_string(large / small) + " times as long, "
        + std::to_string(large) + " s";
}
