#include "tools/zenta-console/ConsoleCommand.h"

#include <gtest/gtest.h>

#include <ostream>

namespace kestrel::test {

using namespace console;

namespace {

using std::chrono::milliseconds;

Command sends(std::vector<Bytes> packets)
{
    return Send { std::move(packets) };
}

std::string reasonFor(std::string_view line)
{
    const Command command = parseCommand(line);
    const auto* malformed = std::get_if<Malformed>(&command);
    return malformed ? malformed->reason : "(accepted)";
}

TEST(ConsoleCommand, buttons_are_pressed_and_released_by_their_number)
{
    EXPECT_EQ(parseCommand("press 7"), sends({ { 0xB0, 0x0F, 0x40 }, { 0xB0, 0x2F, 0x46 } }));
    EXPECT_EQ(parseCommand("release 7"), sends({ { 0xB0, 0x0F, 0x40 }, { 0xB0, 0x2F, 0x06 } }));
}

TEST(ConsoleCommand, blanks_around_words_do_not_matter)
{
    EXPECT_EQ(parseCommand("  press\t 7 \r"), parseCommand("press 7"));
    EXPECT_EQ(parseCommand(" knob  2   5 "), parseCommand("knob 2 5"));
}

TEST(ConsoleCommand, empty_lines_and_comments_are_nothing)
{
    EXPECT_EQ(parseCommand(""), Command(Nothing {}));
    EXPECT_EQ(parseCommand(" \t\r"), Command(Nothing {}));
    EXPECT_EQ(parseCommand("  # press 7"), Command(Nothing {}));
}

TEST(ConsoleCommand, the_blanks_of_a_display_text_are_part_of_it)
{
    EXPECT_EQ(parseCommand("display 3  a b "), sends({ displayText(3, " a b ") }));
    EXPECT_EQ(parseCommand("display 0 0123456789"), sends({ displayText(0, "0123456789") }));
    EXPECT_EQ(parseCommand("display 9"), sends({ displayText(9, "") }));
}

TEST(ConsoleCommand, knobs_and_lamps_take_two_arguments)
{
    EXPECT_EQ(parseCommand("knob 1 127"), sends({ { 0xB0, 0x18, 0x7F } }));
    EXPECT_EQ(parseCommand("knob 4 0x45"), sends({ { 0xB0, 0x1B, 0x45 } }));
    EXPECT_EQ(parseCommand("lamp 0 on"), sends({ { 0xB0, 0x0C, 0x1C }, { 0xB0, 0x2C, 0x40 } }));
    EXPECT_EQ(parseCommand("lamp 7 off"), sends({ { 0xB0, 0x0C, 0x1C }, { 0xB0, 0x2C, 0x07 } }));
}

TEST(ConsoleCommand, raw_bytes_make_one_packet)
{
    EXPECT_EQ(parseCommand("send b0 0C 1c 2C 41"), sends({ { 0xB0, 0x0C, 0x1C, 0x2C, 0x41 } }));
    EXPECT_EQ(parseCommand("send 5"), sends({ { 0x05 } }));
}

TEST(ConsoleCommand, the_rest_of_the_language)
{
    EXPECT_EQ(parseCommand("heartbeat on"), Command(SwitchHeartbeat { true }));
    EXPECT_EQ(parseCommand("heartbeat off"), Command(SwitchHeartbeat { false }));
    EXPECT_EQ(parseCommand("wait 1500"), Command(Wait { milliseconds(1500) }));
    EXPECT_EQ(parseCommand("expect answer 500"), Command(ExpectAnswer { milliseconds(500) }));
    EXPECT_EQ(parseCommand("show"), Command(Show {}));
    EXPECT_EQ(parseCommand("quit"), Command(Quit {}));
}

TEST(ConsoleCommand, a_command_can_come_at_a_moment)
{
    using std::chrono::microseconds;
    EXPECT_EQ(parseCommand("at 1.5 press 7"), Command(At { microseconds(1500000), " press 7" }));
    EXPECT_EQ(parseCommand("at 0.000001 quit"), Command(At { microseconds(1), " quit" }));
    EXPECT_EQ(parseCommand("at 31622400"), Command(At { std::chrono::hours(366 * 24), "" }));
    EXPECT_EQ(
        parseCommand("at 0 display 1  a "), Command(At { microseconds(0), " display 1  a " }));
    EXPECT_EQ(parseCommand("expect listener 250"), Command(ExpectListener { milliseconds(250) }));
}

TEST(ConsoleCommand, a_moment_that_is_none_or_without_a_sound_command_is_refused)
{
    for (const auto* line : { "at", "at x quit", "at -1 quit", "at 1. quit", "at .5 quit",
             "at 1.0000001 quit", "at 31622401 quit", "at 1,5 quit" })
        EXPECT_EQ(reasonFor(line), "expected seconds, 0..31622400") << line;
    EXPECT_EQ(reasonFor("at 1 at 2 quit"), "expected another command than \"at\"");
    std::string many;
    for (int i = 0; i < 1'000'000; ++i)
        many += "at 0 ";
    EXPECT_EQ(reasonFor(many), "expected another command than \"at\"");
    EXPECT_EQ(reasonFor("at 1 press 13"), "expected one button, 1..12");
}

TEST(ConsoleCommand, a_refusal_names_the_column_of_the_word)
{
    const auto column
        = [](std::string_view line) { return std::get<Malformed>(parseCommand(line)).column; };
    EXPECT_EQ(column("pres 7"), 1U);
    EXPECT_EQ(column("  pres 7"), 3U);
    EXPECT_EQ(column("press 13"), 7U);
    EXPECT_EQ(column("press"), 6U);
    EXPECT_EQ(column("knob 9 5"), 6U);
    EXPECT_EQ(column("knob 1 x"), 8U);
    EXPECT_EQ(column("knob 1"), 7U);
    EXPECT_EQ(column("knob 1 2 3"), 10U);
    EXPECT_EQ(column("lamp 1 On"), 8U);
    EXPECT_EQ(column("display 0 01234567890"), 21U);
    EXPECT_EQ(column("display 0 ab\xC3\xA9"), 13U);
    EXPECT_EQ(column("send 90 0g"), 9U);
    EXPECT_EQ(column("at 1.5 knob 1 x"), 15U);
    EXPECT_EQ(column("at 1 at 2 quit"), 6U);
    EXPECT_EQ(column("expect it 5"), 8U);
    EXPECT_EQ(column("expect answer x"), 15U);
}

TEST(ConsoleCommand, an_unknown_command_is_named)
{
    EXPECT_EQ(reasonFor("pres 7"), "unknown command \"pres\"");
    EXPECT_EQ(reasonFor("Press 7"), "unknown command \"Press\"");
}

TEST(ConsoleCommand, a_button_outside_1_to_12_or_none_is_refused)
{
    for (const auto* line : { "press", "press 0", "press 13", "press -1", "press x", "press 1x",
             "press 1 2", "press 99999999999", "release 0x", "release 1.5" })
        EXPECT_EQ(reasonFor(line), "expected one button, 1..12") << line;
}

TEST(ConsoleCommand, a_display_text_that_does_not_fit_is_refused)
{
    EXPECT_EQ(reasonFor("display"), "expected a zone, 0..9");
    EXPECT_EQ(reasonFor("display 10 a"), "expected a zone, 0..9");
    EXPECT_EQ(reasonFor("display 0 01234567890"), "expected at most 10 characters");
    EXPECT_EQ(reasonFor("display 0 \xC3\xA9"), "expected characters of 7 bits");
}

TEST(ConsoleCommand, knobs_and_lamps_out_of_range_are_refused)
{
    for (const auto* line :
        { "knob", "knob 1", "knob 0 1", "knob 5 1", "knob 1 128", "knob 1 2 3" })
        EXPECT_EQ(reasonFor(line), "expected a knob, 1..4, and a value, 0..127") << line;
    for (const auto* line : { "lamp", "lamp 1", "lamp 8 on", "lamp 1 On", "lamp 1 on off" })
        EXPECT_EQ(reasonFor(line), "expected a lamp, 0..7, and on or off") << line;
}

TEST(ConsoleCommand, raw_bytes_that_are_none_are_refused)
{
    EXPECT_EQ(reasonFor("send"), "expected 1..32720 bytes");
    EXPECT_EQ(reasonFor("send 90 0g"), "\"0g\" is not a byte of two hex digits");
    EXPECT_EQ(reasonFor("send 900"), "\"900\" is not a byte of two hex digits");
    EXPECT_EQ(reasonFor("send -1"), "\"-1\" is not a byte of two hex digits");
    std::string tooLong = "send";
    for (int i = 0; i < 32721; ++i)
        tooLong += " 00";
    EXPECT_EQ(reasonFor(tooLong), "expected 1..32720 bytes");
}

TEST(ConsoleCommand, what_is_left_over_is_refused)
{
    EXPECT_EQ(reasonFor("heartbeat"), "expected on or off");
    EXPECT_EQ(reasonFor("heartbeat maybe"), "expected on or off");
    EXPECT_EQ(reasonFor("wait"), "expected milliseconds, 0..3600000");
    EXPECT_EQ(reasonFor("wait 3600001"), "expected milliseconds, 0..3600000");
    EXPECT_EQ(reasonFor("wait 1 2"), "expected milliseconds, 0..3600000");
    EXPECT_EQ(
        reasonFor("expect 5"), "expected \"answer\" or \"listener\" and milliseconds, 0..3600000");
    EXPECT_EQ(reasonFor("expect listener"), "expected \"listener\" and milliseconds, 0..3600000");
    EXPECT_EQ(reasonFor("expect answer"), "expected \"answer\" and milliseconds, 0..3600000");
    EXPECT_EQ(reasonFor("show it"), "expected nothing after show");
    EXPECT_EQ(reasonFor("quit now"), "expected nothing after quit");
}

TEST(ConsoleCommand, the_summary_names_every_command)
{
    for (const auto* name : { "press N", "release N", "display ZONE TEXT", "knob N VALUE",
             "lamp N on|off", "heartbeat on|off", "send HEX", "wait MS", "at SECONDS COMMAND",
             "expect listener MS", "expect answer MS", "show", "quit" })
        EXPECT_NE(commandSummary().find(name), std::string_view::npos) << name;
}

} // namespace
} // namespace kestrel::test
