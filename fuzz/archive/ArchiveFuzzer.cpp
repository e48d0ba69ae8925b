#include "fuzz/Target.h"
#include "fuzz/archive/ArchiveRoundTrip.h"

std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    return test::archiveFault(input);
}
