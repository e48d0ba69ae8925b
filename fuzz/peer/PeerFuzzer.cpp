#include "archive/ArchiveError.h"
#include "archive/KeyedArchive.h"
#include "fuzz/Target.h"
#include "fuzz/peer/PeerProcess.h"
#include "fuzz/peer/PeerText.h"

namespace kestrel {
namespace {

std::string difference(ByteView archive, const std::string& ours, const char* whose)
{
    static fuzz::PeerProcess peer(KESTREL_PEER);
    const auto text = peer.read(archive);
    return !text || *text == ours
        ? ""
        : "GNUstep reads in " + std::string(whose) + ":\n" + *text + "\nand we:\n" + ours;
}

} // namespace
} // namespace kestrel

// What we read from an archive, GNUstep reads too, and it reads the same from what we make of it.
std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    try {
        const ArchiveValue value = KeyedArchive::unarchivedRoot(input);
        const auto ours = peerText(value);
        if (!ours)
            return {};
        const std::string fault = difference(input, ours->toStdString(), "the input");
        return !fault.empty() ? fault
                              : difference(KeyedArchive::archivedData(value), ours->toStdString(),
                                  "what we have written");
    } catch (const ArchiveError&) {
        return {};
    }
}
