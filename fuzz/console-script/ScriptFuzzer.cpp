#include "fuzz/Target.h"
#include "tools/zenta-console/ConsoleCommand.h"
#include "tools/zenta-console/LineReader.h"

#include <sys/mman.h>
#include <unistd.h>

namespace kestrel::console {
namespace {

constexpr auto LongestTime = std::chrono::hours(1);
constexpr auto LatestMoment = std::chrono::hours(25);

// A file in memory, from which scripts are read as from standard input.
class ScriptFile {
public:
    // Returns a descriptor at the beginning of a file with these bytes.
    int with(std::span<const std::uint8_t> bytes) const
    {
        if (::ftruncate(m_descriptor, 0) != 0
            || ::pwrite(m_descriptor, bytes.data(), bytes.size(), 0) != std::ssize(bytes)
            || ::lseek(m_descriptor, 0, SEEK_SET) != 0)
            std::abort();
        return m_descriptor;
    }

private:
    int m_descriptor = ::memfd_create("script", MFD_CLOEXEC);
};

struct Check {
    const std::string& line;

    std::string operator()(const Nothing&) const { return {}; }
    std::string operator()(const SwitchHeartbeat&) const { return {}; }
    std::string operator()(const Show&) const { return {}; }
    std::string operator()(const Quit&) const { return {}; }
    std::string operator()(const Wait& wait) const { return time(wait.duration); }
    std::string operator()(const ExpectAnswer& expected) const { return time(expected.within); }
    std::string operator()(const ExpectListener& expected) const { return time(expected.within); }
    // What comes at a time is a command that comes at no time of its own.
    std::string operator()(const At& at) const
    {
        if (at.time.count() < 0 || at.time > LatestMoment)
            return "a moment out of range";
        const Command command = parseCommand(at.command);
        return std::holds_alternative<At>(command) || std::holds_alternative<Malformed>(command)
            ? "a moment without a command"
            : "";
    }
    std::string operator()(const Malformed& malformed) const
    {
        if (malformed.column < 1 || malformed.column > line.size() + 1)
            return "refused outside the line";
        return malformed.reason.empty() ? "refused without a reason" : "";
    }
    // Each packet, written out as bytes, is the same packet again.
    std::string operator()(const Send& send) const
    {
        for (const Bytes& packet : send.packets) {
            if (packet.empty()
                || parseCommand("send " + hexText(packet)) != Command(Send { { packet } }))
                return "sends what cannot be written out: " + hexText(packet);
        }
        return send.packets.empty() ? "sends nothing" : "";
    }

    static std::string time(std::chrono::milliseconds duration)
    {
        return duration.count() < 0 || duration > LongestTime ? "a time out of range" : "";
    }
};

std::string scriptFault(std::span<const std::uint8_t> input)
{
    static const ScriptFile file;
    LineReader reader(file.with(input));
    std::string lines;
    while (!reader.isAtEnd()) {
        reader.readMore();
        while (const auto line = reader.next()) {
            lines += *line + '\n';
            if (auto fault = std::visit(Check { *line }, parseCommand(*line)); !fault.empty())
                return fault + " in: " + *line;
        }
    }
    std::string expected(input.begin(), input.end());
    if (!expected.empty() && expected.back() != '\n')
        expected += '\n';
    return lines == expected ? "" : "the lines are not those of the script";
}

} // namespace
} // namespace kestrel::console

std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    return console::scriptFault(input);
}
