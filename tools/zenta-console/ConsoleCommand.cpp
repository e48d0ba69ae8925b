#include "tools/zenta-console/ConsoleCommand.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace kestrel::console {

namespace {
constexpr std::string_view Blanks = " \t\r";
constexpr int MaxMilliseconds = 3600 * 1000;
constexpr std::size_t MaxPacketBytes = 32720; // the largest MIDI event that JACK carries

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    return text.substr(0, text.find_last_not_of(Blanks) + 1);
}

// Cuts the next word off the front of `text` and returns it. Empty when there is no further word.
std::string_view takeWord(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(Blanks));
    text.remove_prefix(word.size());
    return word;
}

std::vector<std::string_view> wordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    while (!trimmed(text).empty())
        words.push_back(takeWord(text));
    return words;
}

std::optional<int> parseNumber(std::string_view text, int base = 10)
{
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number, base);
    if (text.empty() || result.ec != std::errc() || result.ptr != end)
        return {};
    return number;
}

// Reads a decimal number, or a hexadecimal one after 0x. No value outside `least` to `most`.
std::optional<int> numberBetween(std::string_view text, int least, int most)
{
    const bool isHex = text.starts_with("0x");
    const auto number = isHex ? parseNumber(text.substr(2), 16) : parseNumber(text);
    if (!number || *number < least || *number > most)
        return {};
    return number;
}

Malformed expected(const std::string& what)
{
    return { "expected " + what };
}

std::string range(int least, int most)
{
    return std::to_string(least) + ".." + std::to_string(most);
}

Command parseButton(std::string_view arguments, Motion motion)
{
    const auto button = numberBetween(trimmed(arguments), FirstButton, LastButton);
    if (!button)
        return expected("one button, " + range(FirstButton, LastButton));
    return Send { userButton(*button, motion) };
}

// The text begins one blank after the zone number and keeps its own blanks.
Command parseDisplay(std::string_view arguments)
{
    const auto zone = numberBetween(takeWord(arguments), 0, LastZone);
    if (!zone)
        return expected("a zone, " + range(0, LastZone));
    if (!arguments.empty())
        arguments.remove_prefix(1);
    if (arguments.ends_with('\r'))
        arguments.remove_suffix(1);
    if (arguments.size() > ConsoleProtocol::ZoneCharacters)
        return expected(
            "at most " + std::to_string(ConsoleProtocol::ZoneCharacters) + " characters");
    const bool isPlain = std::all_of(arguments.begin(), arguments.end(),
        [](char character) { return static_cast<unsigned char>(character) < 0x80; });
    if (!isPlain)
        return expected("characters of 7 bits");
    return Send { { displayText(*zone, arguments) } };
}

Command parseKnob(std::string_view arguments)
{
    const auto words = wordsOf(arguments);
    const auto knob
        = words.size() == 2 ? numberBetween(words[0], FirstKnob, LastKnob) : std::nullopt;
    const auto value = knob ? numberBetween(words[1], 0, 127) : std::nullopt;
    if (!value)
        return expected("a knob, " + range(FirstKnob, LastKnob) + ", and a value, 0..127");
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
    const auto words = wordsOf(arguments);
    const auto lamp = words.size() == 2 ? numberBetween(words[0], 0, LastLamp) : std::nullopt;
    const auto on = lamp ? parseSwitch(words[1]) : std::nullopt;
    if (!on)
        return expected("a lamp, " + range(0, LastLamp) + ", and on or off");
    return Send { lampMessage(*lamp, *on ? Lamp::On : Lamp::Off) };
}

Command parseHeartbeat(std::string_view arguments)
{
    const auto on = parseSwitch(trimmed(arguments));
    if (!on)
        return expected("on or off");
    return SwitchHeartbeat { *on };
}

Command parseSend(std::string_view arguments)
{
    Bytes packet;
    for (const std::string_view word : wordsOf(arguments)) {
        const auto byte = word.size() <= 2 ? parseNumber(word, 16) : std::nullopt;
        if (!byte || *byte < 0)
            return Malformed { std::string("\"").append(word).append(
                "\" is not a byte of two hex digits") };
        packet.push_back(static_cast<std::uint8_t>(*byte));
    }
    if (packet.empty() || packet.size() > MaxPacketBytes)
        return expected("1.." + std::to_string(MaxPacketBytes) + " bytes");
    return Send { { packet } };
}

Command parseWait(std::string_view arguments)
{
    const auto duration = numberBetween(trimmed(arguments), 0, MaxMilliseconds);
    if (!duration)
        return expected("milliseconds, " + range(0, MaxMilliseconds));
    return Wait { std::chrono::milliseconds(*duration) };
}

Command parseExpect(std::string_view arguments)
{
    const bool isAnswer = takeWord(arguments) == "answer";
    const auto within = numberBetween(trimmed(arguments), 0, MaxMilliseconds);
    if (!isAnswer || !within)
        return expected("\"answer\" and milliseconds, " + range(0, MaxMilliseconds));
    return ExpectAnswer { std::chrono::milliseconds(*within) };
}

Command parseShow(std::string_view arguments)
{
    if (!trimmed(arguments).empty())
        return expected("nothing after show");
    return Show {};
}

Command parseQuit(std::string_view arguments)
{
    if (!trimmed(arguments).empty())
        return expected("nothing after quit");
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
    Verb { "expect", parseExpect },
    Verb { "show", parseShow },
    Verb { "quit", parseQuit },
};
} // namespace

Command parseCommand(std::string_view line)
{
    std::string_view rest = line;
    const std::string_view name = takeWord(rest);
    if (name.empty() || name.starts_with('#'))
        return Nothing {};
    const auto verb = std::find_if(
        Verbs.begin(), Verbs.end(), [name](const Verb& known) { return known.name == name; });
    if (verb == Verbs.end())
        return Malformed { "unknown command \"" + std::string(name) + "\"" };
    return verb->parse(rest);
}

std::string_view commandSummary()
{
    return "Commands, one a line; empty lines and lines that begin with # are skipped:\n"
           "  press N            user button N = 1..12 goes down (two packets)\n"
           "  release N          user button N = 1..12 goes up (two packets)\n"
           "  display ZONE TEXT  up to 10 characters of the large display, zone 0..9\n"
           "  knob N VALUE       knob N = 1..4 shows VALUE = 0..127\n"
           "  lamp N on|off      lamp N = 0..7 (two packets)\n"
           "  heartbeat on|off   the beat of every second\n"
           "  send HEX...        one packet as it stands\n"
           "  wait MS            the next command comes after MS milliseconds\n"
           "  expect answer MS   the heartbeat is answered within MS milliseconds from now\n"
           "  show               plays a scene of a few seconds: an equaliser is edited on the\n"
           "                     display, the knobs and the lamps; prints \"shown\" at its end\n"
           "  quit               ends the program when all is sent\n";
}

} // namespace kestrel::console
