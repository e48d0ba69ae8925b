#include "activity/OutcomeWords.h"

#include <gtest/gtest.h>

#include <array>

namespace kestrel::test {

namespace {
using Kind = ActivityEvent::Kind;
using Outcome = ActivityEvent::Outcome;

ActivityEvent pressed(Outcome outcome, std::string_view text = {})
{
    ActivityEvent event(Kind::Packet, {});
    event.setPacket(std::array<std::uint8_t, 5> { 0xB0, 0x0F, 0x40, 0x2F, 0x45 });
    event.setOutcome(outcome);
    event.setText(text);
    return event;
}

std::string words(Outcome outcome, std::string_view text = {})
{
    return OutcomeWords::describe(pressed(outcome, text));
}
} // namespace

TEST(OutcomeWords, a_typed_key_names_its_shortcut)
{
    EXPECT_EQ(words(Outcome::Typed, "⌘S"), "typed ⌘S");
    EXPECT_EQ(words(Outcome::Released, "⌘S"), "let go of ⌘S");
}

TEST(OutcomeWords, a_key_that_typed_nothing_says_why)
{
    EXPECT_EQ(words(Outcome::OtherInFront, "Finder"), "nothing: Finder is in front, not Pro Tools");
    EXPECT_EQ(words(Outcome::OtherInFront), "nothing: no application is in front");
    EXPECT_EQ(words(Outcome::NoShortcut), "nothing: key 6 has no shortcut");
    EXPECT_EQ(words(Outcome::NoSuchKey), "nothing: there is no such key");
    EXPECT_EQ(words(Outcome::NotPermitted), "nothing: the permission to post keys is missing");
    EXPECT_EQ(words(Outcome::KeyUnknown, "F19"), "nothing: the keyboard has no key for F19");
}

TEST(OutcomeWords, a_packet_that_means_nothing_says_whether_it_might_have)
{
    const auto ignored = [](std::array<std::uint8_t, 3> bytes) {
        ActivityEvent event(Kind::Packet, {});
        event.setPacket(bytes);
        event.setOutcome(Outcome::Ignored);
        return OutcomeWords::describe(event);
    };
    EXPECT_EQ(ignored({ 0x80, 0x00, 0x00 }), "nothing: unknown packet");
    EXPECT_EQ(ignored({ 0xB0, 0x07, 0x00 }), "nothing: unknown packet");
    EXPECT_EQ(ignored({ 0xB0, 0x2F, 0x45 }), "nothing: no packet before it selected its zone");
    EXPECT_EQ(ignored({ 0xB0, 0x2C, 0x45 }), "nothing: no packet before it selected its zone");
}

TEST(OutcomeWords, the_key_is_named_in_the_second_of_two_packets_too)
{
    ActivityEvent event(Kind::Packet, {});
    event.setPacket(std::array<std::uint8_t, 3> { 0xB0, 0x2F, 0x00 });
    event.setOutcome(Outcome::NoShortcut);
    EXPECT_EQ(OutcomeWords::describe(event), "nothing: key 1 has no shortcut");
}

TEST(OutcomeWords, events_of_the_link_have_no_outcome)
{
    EXPECT_EQ(OutcomeWords::describe({ Kind::LinkOpened, {} }), "");
}

TEST(OutcomeWords, only_keys_are_kept_back)
{
    EXPECT_TRUE(OutcomeWords::isKeptBack(pressed(Outcome::OtherInFront)));
    EXPECT_TRUE(OutcomeWords::isKeptBack(pressed(Outcome::NoShortcut)));
    EXPECT_FALSE(OutcomeWords::isKeptBack(pressed(Outcome::Typed)));
    EXPECT_FALSE(OutcomeWords::isKeptBack(pressed(Outcome::Ignored)));
}

TEST(ActivityEvent, a_text_that_is_too_long_is_cut_between_two_characters)
{
    const std::string shortcut = "⌘";
    std::string text;
    while (text.size() < ActivityEvent::TextBytes + 2)
        text += shortcut;
    ActivityEvent event;
    event.setText(text);
    const std::size_t whole = ActivityEvent::TextBytes / shortcut.size() * shortcut.size();
    EXPECT_EQ(event.text(), std::string_view(text).substr(0, whole));
}

} // namespace kestrel::test
