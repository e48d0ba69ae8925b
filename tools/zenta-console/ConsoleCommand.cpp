#include "tools/zenta-console/ConsoleCommand.h"

#include "tools/zenta-console/ScriptWords.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kestrel::console {

namespace {
constexpr int MaxMilliseconds = 3600 * 1000;
constexpr std::size_t MaxPacketBytes = 32720; // the largest MIDI event that JACK carries

// What parseCommand() returns as Malformed.
struct Refusal {
    std::string reason;
    const char* where; // in the line
};

[[noreturn]] void refuse(std::string_view where, std::string reason)
{
    throw Refusal { std::move(reason), where.data() };
}

[[noreturn]] void refuseExpecting(std::string_view where, const std::string& expected)
{
    refuse(where, "expected " + expected);
}

std::string range(int least, int most)
{
    return std::to_string(least) + ".." + std::to_string(most);
}

Command parseButton(std::string_view arguments, Motion motion)
{
    const auto button = numberBetween(trimmed(arguments), FirstButton, LastButton);
    if (!button)
        refuseExpecting(trimmed(arguments), "one button, " + range(FirstButton, LastButton));
    return Send { userButton(*button, motion) };
}

// The text begins one blank after the zone number and keeps its own blanks.
Command parseDisplay(std::string_view arguments)
{
    const std::string_view word = takeWord(arguments);
    const auto zone = numberBetween(word, 0, LastZone);
    if (!zone)
        refuseExpecting(word, "a zone, " + range(0, LastZone));
    if (!arguments.empty())
        arguments.remove_prefix(1);
    if (arguments.ends_with('\r'))
        arguments.remove_suffix(1);
    constexpr std::size_t Most = ConsoleProtocol::ZoneCharacters;
    if (arguments.size() > Most)
        refuseExpecting(arguments.substr(Most), "at most " + std::to_string(Most) + " characters");
    const auto other = std::find_if(arguments.begin(), arguments.end(),
        [](char character) { return static_cast<unsigned char>(character) >= 0x80; });
    if (other != arguments.end())
        refuseExpecting(arguments.substr(static_cast<std::size_t>(other - arguments.begin())),
            "characters of 7 bits");
    return Send { { displayText(*zone, arguments) } };
}

// The two words of a command. Refuses at the first one that is missing or too many.
std::array<std::string_view, 2> twoWords(std::string_view arguments, const std::string& expected)
{
    const auto words = wordsOf(arguments);
    if (words.size() < 2)
        refuseExpecting(arguments.substr(arguments.size()), expected);
    if (words.size() > 2)
        refuseExpecting(words[2], expected);
    return { words[0], words[1] };
}

Command parseKnob(std::string_view arguments)
{
    const std::string expected = "a knob, " + range(FirstKnob, LastKnob) + ", and a value, 0..127";
    const auto [first, second] = twoWords(arguments, expected);
    const auto knob = numberBetween(first, FirstKnob, LastKnob);
    const auto value = numberBetween(second, 0, 127);
    if (!knob || !value)
        refuseExpecting(knob ? second : first, expected);
    return Send { { knobPosition(*knob, static_cast<std::uint8_t>(*value)) } };
}

std::optional<bool> parseSwitch(std::string_view text)
{
    if (text == "on")
        return true;
    if (text == "off")
        return false;
    return {};
}

Command parseLamp(std::string_view arguments)
{
    const std::string expected = "a lamp, " + range(0, LastLamp) + ", and on or off";
    const auto [first, second] = twoWords(arguments, expected);
    const auto lamp = numberBetween(first, 0, LastLamp);
    const auto on = parseSwitch(second);
    if (!lamp || !on)
        refuseExpecting(lamp ? second : first, expected);
    return Send { lampMessage(*lamp, *on ? Lamp::On : Lamp::Off) };
}

Command parseHeartbeat(std::string_view arguments)
{
    const auto on = parseSwitch(trimmed(arguments));
    if (!on)
        refuseExpecting(trimmed(arguments), "on or off");
    return SwitchHeartbeat { *on };
}

Command parseSend(std::string_view arguments)
{
    Bytes packet;
    for (const std::string_view word : wordsOf(arguments)) {
        const auto byte = word.size() <= 2 ? parseNumber(word, 16) : std::nullopt;
        if (!byte || *byte < 0)
            refuse(
                word, std::string("\"").append(word).append("\" is not a byte of two hex digits"));
        packet.push_back(static_cast<std::uint8_t>(*byte));
    }
    if (packet.empty() || packet.size() > MaxPacketBytes)
        refuseExpecting(trimmed(arguments), "1.." + std::to_string(MaxPacketBytes) + " bytes");
    return Send { { packet } };
}

std::chrono::milliseconds parseMilliseconds(std::string_view text, const std::string& before = "")
{
    const auto number = numberBetween(text, 0, MaxMilliseconds);
    if (!number)
        refuseExpecting(text, before + "milliseconds, " + range(0, MaxMilliseconds));
    return std::chrono::milliseconds(*number);
}

Command parseWait(std::string_view arguments)
{
    return Wait { parseMilliseconds(trimmed(arguments)) };
}

Command parseExpect(std::string_view arguments)
{
    const std::string_view what = takeWord(arguments);
    const std::string_view time = trimmed(arguments);
    if (what == "answer")
        return ExpectAnswer { parseMilliseconds(time, "\"answer\" and ") };
    if (what == "listener")
        return ExpectListener { parseMilliseconds(time, "\"listener\" and ") };
    refuseExpecting(
        what, "\"answer\" or \"listener\" and milliseconds, " + range(0, MaxMilliseconds));
}

Command parseTimed(std::string_view arguments);

Command parseShow(std::string_view arguments)
{
    if (!trimmed(arguments).empty())
        refuseExpecting(trimmed(arguments), "nothing after show");
    return Show {};
}

Command parseQuit(std::string_view arguments)
{
    if (!trimmed(arguments).empty())
        refuseExpecting(trimmed(arguments), "nothing after quit");
    return Quit {};
}

struct Verb {
    std::string_view name;
    Command (*parse)(std::string_view arguments);
};

constexpr std::array Verbs {
    Verb { "press", [](std::string_view rest) { return parseButton(rest, Motion::Press); } },
    Verb { "release", [](std::string_view rest) { return parseButton(rest, Motion::Release); } },
    Verb { "display", parseDisplay },
    Verb { "knob", parseKnob },
    Verb { "lamp", parseLamp },
    Verb { "heartbeat", parseHeartbeat },
    Verb { "send", parseSend },
    Verb { "wait", parseWait },
    Verb { "at", parseTimed },
    Verb { "expect", parseExpect },
    Verb { "show", parseShow },
    Verb { "quit", parseQuit },
};

Command parseLine(std::string_view line)
{
    std::string_view rest = line;
    const std::string_view name = takeWord(rest);
    if (name.empty() || name.starts_with('#'))
        return Nothing {};
    const auto verb = std::find_if(
        Verbs.begin(), Verbs.end(), [name](const Verb& known) { return known.name == name; });
    if (verb == Verbs.end())
        refuse(name, "unknown command \"" + std::string(name) + "\"");
    return verb->parse(rest);
}

Command parseTimed(std::string_view arguments)
{
    const std::string_view word = takeWord(arguments);
    const auto time = parseSeconds(word);
    if (!time)
        refuseExpecting(word, "seconds, " + range(0, MaxSeconds));
    std::string_view rest = arguments;
    if (takeWord(rest) == "at")
        refuseExpecting(trimmed(arguments), "another command than \"at\"");
    static_cast<void>(parseLine(arguments)); // throws what is wrong
    return At { *time, std::string(arguments) };
}
} // namespace

Command parseCommand(std::string_view line)
{
    try {
        return parseLine(line);
    } catch (const Refusal& refusal) {
        return Malformed { refusal.reason,
            static_cast<std::size_t>(refusal.where - line.data()) + 1 };
    }
}

} // namespace kestrel::console
