#include "assign/KeystrokePoster.h"

#include "assign/StoredAssignments.h"
#include "assign/UserAssignFile.h"
#include "tests/fakes/FakeKeyEvents.h"
#include "tests/fakes/FakeSystem.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

constexpr KeyCode KeyA = 0;
constexpr KeyCode KeyS = 1;
constexpr KeyCode KeyF5 = 96;

struct Record {
    ArchiveValue flags;
    ArchiveValue keyCode;
    ArchiveValue text;
    ArchiveValue repeats = false;
};

Record chord(ModifierFlags flags, KeyCode keyCode, const char* name)
{
    return { flags, keyCode, QString::fromUtf8(name) };
}

const Record unused { 0, 0, QString() };

// A poster with a live set of empty entries. The workstation is the frontmost application.
class PosterBench {
public:
    PosterBench()
    {
        assignments.setupShortcutKey();
        workspace.applications = { { "Finder", false }, { "Pro Tools", true }, { "Mail", false } };
    }

    // Stores the records in the entry of key `number` (1 to 12), starting with the first record.
    void assign(int number, const std::vector<Record>& records)
    {
        ArchiveArray& entry = *assignments.myUserAssignFile()->getSwitchShortcut(number);
        std::size_t index = 0;
        for (const Record& record : records) {
            entry.replace(index++, record.flags);
            entry.replace(index++, record.keyCode);
            entry.replace(index++, record.text);
            entry.replace(index++, record.repeats);
        }
    }

    std::string post(unsigned int buttonCode)
    {
        poster.eventKeyPost(buttonCode);
        return keys.take();
    }

    FakeDefaultsStore defaults;
    FakeWorkspace workspace;
    FakeKeyEvents keys;
    FakePermissions permissions;
    StoredAssignments assignments { defaults };
    KeystrokePoster poster { assignments, workspace, keys, permissions };
};

TEST(KeystrokePoster, a_press_posts_the_key_with_its_flags_and_then_lets_the_modifier_go)
{
    PosterBench bench;
    bench.assign(6, { chord(Modifier::Command, KeyS, "S") });
    EXPECT_EQ(bench.post(0x45), "key 1 down ⌘; bare 55 up");
    EXPECT_EQ(bench.post(5), "key 1 up ⌘; bare 55 up");
}

TEST(KeystrokePoster, modifiers_are_let_go_in_the_order_control_shift_option_command)
{
    PosterBench bench;
    bench.assign(1, { chord(Modifier::Used, KeyS, "S") });
    EXPECT_EQ(bench.post(64), "key 1 down ⇪^⌥⌘; bare 59 up; bare 56 up; bare 58 up; bare 55 up");
    EXPECT_EQ(bench.post(0), "key 1 up ⇪^⌥⌘; bare 59 up; bare 56 up; bare 58 up; bare 55 up");
}

TEST(KeystrokePoster, release_posts_key_ups_in_the_same_order_as_the_downs)
{
    PosterBench bench;
    bench.assign(2,
        { chord(Modifier::Command, KeyS, "S"), chord(Modifier::Option, KeyF5, "F5"),
            chord(0, KeyA, "A"), chord(Modifier::Shift, KeyS, "S") });
    EXPECT_EQ(bench.post(65),
        "key 1 down ⌘; bare 55 up; key 96 down ⌥; bare 58 up; key 0 down; "
        "key 1 down ⇪; bare 56 up");
    EXPECT_EQ(bench.post(1),
        "key 1 up ⌘; bare 55 up; key 96 up ⌥; bare 58 up; key 0 up; key 1 up ⇪; bare 56 up");
}

TEST(KeystrokePoster, unused_records_between_used_ones_are_skipped)
{
    PosterBench bench;
    bench.assign(3, { chord(0, KeyS, "S"), unused, chord(0, KeyF5, "F5"), unused });
    EXPECT_EQ(bench.post(66), "key 1 down; key 96 down");
}

TEST(KeystrokePoster, a_record_without_text_is_unused_whatever_else_it_holds)
{
    PosterBench bench;
    bench.assign(3, { chord(Modifier::Command, KeyS, "") });
    EXPECT_EQ(bench.post(66), "");
}

TEST(KeystrokePoster, the_first_and_the_last_key_have_the_codes_0_and_11)
{
    PosterBench bench;
    bench.assign(1, { chord(0, KeyA, "A") });
    bench.assign(12, { chord(0, KeyS, "S") });
    EXPECT_EQ(bench.post(64), "key 0 down");
    EXPECT_EQ(bench.post(0), "key 0 up");
    EXPECT_EQ(bench.post(75), "key 1 down");
    EXPECT_EQ(bench.post(11), "key 1 up");
}

TEST(KeystrokePoster, codes_12_and_76_name_the_thirteenth_key_of_the_set)
{
    PosterBench bench;
    EXPECT_EQ(bench.post(12), "");
    EXPECT_EQ(bench.post(76), "");

    auto& table = *bench.assignments.myUserAssignFile()->getShortcutArray();
    auto entry = std::make_shared<ArchiveArray>();
    for (const ArchiveValue& element : { ArchiveValue(0), ArchiveValue(1),
             ArchiveValue(QStringLiteral("S")), ArchiveValue(false) })
        entry->append(element);
    table.set(ArchiveValue(13), ArchiveValue(entry));
    table.set(ArchiveValue(14), ArchiveValue(entry));
    EXPECT_EQ(bench.post(12), "key 1 up") << "the range test lets 12 pass";
    EXPECT_EQ(bench.post(76), "key 1 down");
    EXPECT_EQ(bench.post(13), "") << "and rejects 13 though the set has an entry";
    EXPECT_EQ(bench.post(77), "");
}

TEST(KeystrokePoster, codes_outside_both_ranges_post_nothing)
{
    PosterBench bench;
    for (int number = 1; number <= 12; ++number)
        bench.assign(number, { chord(0, KeyS, "S") });
    for (unsigned int code = 0; code < 256; ++code) {
        const bool isKey = code <= 11 || (code >= 64 && code <= 75);
        EXPECT_EQ(bench.post(code).empty(), !isKey) << code;
    }
    EXPECT_EQ(bench.post(0x10000 + 64), "");
}

TEST(KeystrokePoster, nothing_is_posted_while_another_application_is_in_front)
{
    PosterBench bench;
    bench.assign(1, { chord(0, KeyS, "S") });
    bench.workspace.applications = { { "Finder", true }, { "Pro Tools", false } };
    EXPECT_EQ(bench.post(64), "");
    bench.workspace.applications = { { "Pro Tools Helper", true }, { "pro tools", true } };
    EXPECT_EQ(bench.post(64), "");
    bench.workspace.applications.clear();
    EXPECT_EQ(bench.post(64), "");
}

TEST(KeystrokePoster, a_release_is_not_posted_either_while_another_application_is_in_front)
{
    PosterBench bench;
    bench.assign(1, { chord(Modifier::Command, KeyS, "S") });
    EXPECT_EQ(bench.post(64), "key 1 down ⌘; bare 55 up");
    bench.workspace.applications = { { "Finder", true }, { "Pro Tools", false } };
    EXPECT_EQ(bench.post(0), "");
}

TEST(KeystrokePoster, the_walk_ends_at_the_active_workstation)
{
    PosterBench bench;
    bench.workspace.applications
        = { { "Pro Tools", false }, { "Finder", true }, { "Pro Tools", true }, { "Mail", true } };
    bench.assign(1, { chord(0, KeyS, "S") });
    EXPECT_EQ(bench.post(64), "key 1 down");
    EXPECT_EQ(bench.workspace.visited, 2);
}

TEST(KeystrokePoster, the_applications_are_walked_at_every_event_whatever_its_code)
{
    PosterBench bench;
    for (const unsigned int code : { 64U, 0U, 13U, 255U })
        EXPECT_EQ(bench.post(code), "");
    EXPECT_EQ(bench.workspace.visited, 4);
}

TEST(KeystrokePoster, a_stored_repeat_marks_the_key_down_and_not_the_key_up)
{
    PosterBench bench;
    bench.assign(1, { { 0, KeyS, QStringLiteral("S"), true } });
    EXPECT_EQ(bench.post(64), "key 1 down repeat");
    EXPECT_EQ(bench.post(0), "key 1 up");
    bench.assign(1, { { 0, KeyS, QStringLiteral("S"), 7 } });
    EXPECT_EQ(bench.post(64), "key 1 down repeat");
}

TEST(KeystrokePoster, the_repeat_flag_is_read_as_an_integer)
{
    PosterBench bench;
    for (const ArchiveValue& noInteger :
        { ArchiveValue(0.5), ArchiveValue(QStringLiteral("yes")) }) {
        bench.assign(1, { { 0, KeyS, QStringLiteral("S"), noInteger } });
        EXPECT_EQ(bench.post(64), "key 1 down");
    }
    bench.assign(1, { { 0, KeyS, QStringLiteral("S"), 1.5 } });
    EXPECT_EQ(bench.post(64), "key 1 down repeat");
}

TEST(KeystrokePoster, only_an_empty_text_makes_a_record_unused)
{
    PosterBench bench;
    bench.assign(1, { chord(0, KeyS, " ") });
    EXPECT_EQ(bench.post(64), "key 1 down");
}

TEST(KeystrokePoster, only_the_four_modifiers_pass_from_the_stored_flags)
{
    PosterBench bench;
    bench.assign(1, { chord(Modifier::CapsLock, KeyS, "S") });
    EXPECT_EQ(bench.post(64), "key 1 down");
    bench.assign(1, { chord(0x00A00108 | Modifier::Shift, KeyS, "S") });
    EXPECT_EQ(bench.post(64), "key 1 down ⇪; bare 56 up");
    bench.assign(1, { { -1, KeyS, QStringLiteral("S") } });
    EXPECT_EQ(bench.post(64), "key 1 down ⇪^⌥⌘; bare 59 up; bare 56 up; bare 58 up; bare 55 up");
    bench.assign(1, { { std::int64_t(0x1'0010'0000), KeyS, QStringLiteral("S") } });
    EXPECT_EQ(bench.post(64), "key 1 down ⌘; bare 55 up") << "of which 32 bits are read";
}

TEST(KeystrokePoster, key_codes_are_taken_as_sixteen_bits)
{
    PosterBench bench;
    bench.assign(1, { { 0, 0x10001, QStringLiteral("S") } });
    EXPECT_EQ(bench.post(64), "key 1 down");
    bench.assign(1, { { 0, -1, QStringLiteral("S") } });
    EXPECT_EQ(bench.post(64), "key 65535 down");
}

TEST(KeystrokePoster, an_entry_that_ends_within_a_record_posts_the_whole_records_before_it)
{
    PosterBench bench;
    bench.assign(1,
        { chord(0, KeyS, "S"), chord(0, KeyA, "A"), chord(0, KeyF5, "F5"), chord(0, KeyS, "S") });
    ArchiveArray& entry = *bench.assignments.myUserAssignFile()->getSwitchShortcut(1);
    ArchiveArray shortEntry;
    for (std::size_t i = 0; i < 11; ++i)
        shortEntry.append(entry[i]);
    entry = shortEntry;
    EXPECT_EQ(bench.post(64), "key 1 down; key 0 down");
    entry = ArchiveArray();
    EXPECT_EQ(bench.post(64), "");
}

TEST(KeystrokePoster, of_a_longer_entry_the_first_four_records_are_posted)
{
    PosterBench bench;
    ArchiveArray& entry = *bench.assignments.myUserAssignFile()->getSwitchShortcut(1);
    for (const ArchiveValue& element : { ArchiveValue(0), ArchiveValue(KeyA),
             ArchiveValue(QStringLiteral("A")), ArchiveValue(false) })
        entry.append(element);
    EXPECT_EQ(bench.post(64), "");
    bench.assign(1, { unused, unused, unused, chord(0, KeyS, "S") });
    EXPECT_EQ(bench.post(64), "key 1 down");
}

TEST(KeystrokePoster, what_cannot_be_posted_does_not_keep_the_rest_back)
{
    PosterBench bench;
    bench.assign(1, { chord(Modifier::Command, KeyS, "S"), chord(0, KeyA, "A") });
    for (const auto result : { KeyEvents::Result::NotPermitted, KeyEvents::Result::UnknownKey,
             KeyEvents::Result::Unavailable }) {
        bench.keys.result = result;
        EXPECT_EQ(bench.post(64), "key 1 down ⌘; bare 55 up; key 0 down");
        EXPECT_EQ(bench.post(0), "key 1 up ⌘; bare 55 up; key 0 up");
    }
}

TEST(KeystrokePoster, wrong_types_in_an_entry_are_read_as_nothing)
{
    PosterBench bench;
    bench.assign(
        1, { { QStringLiteral("x"), ArchiveValue(), QStringLiteral("S"), ArchiveValue() } });
    EXPECT_EQ(bench.post(64), "key 0 down");
    bench.assign(1, { { 0, 1, 5, 0 } });
    EXPECT_EQ(bench.post(64), "") << "a number is no text";
}

TEST(KeystrokePoster, before_the_set_is_restored_nothing_is_posted)
{
    PosterBench bench;
    const StoredAssignments empty(bench.defaults);
    KeystrokePoster poster(empty, bench.workspace, bench.keys, bench.permissions);
    poster.eventKeyPost(64);
    EXPECT_EQ(bench.keys.take(), "");
}

TEST(KeystrokePoster, the_permission_is_requested_only_for_what_is_kept_back)
{
    PosterBench bench;
    bench.assign(1, { chord(Modifier::Command, KeyS, "S") });
    bench.post(64);
    EXPECT_EQ(bench.permissions.requests, 0);
    bench.keys.result = KeyEvents::Result::UnknownKey;
    bench.post(64);
    EXPECT_EQ(bench.permissions.requests, 0);
    bench.keys.result = KeyEvents::Result::NotPermitted;
    bench.post(64);
    EXPECT_EQ(bench.permissions.requests, 2) << "the key and the release of its modifier";
}

using Told = std::pair<Keystroke::Outcome, std::string>;
using Outcome = Keystroke::Outcome;

Told told(const Keystroke& stroke)
{
    return { stroke.outcome, std::string(stroke.text.view()) };
}

TEST(KeystrokePoster, tells_which_shortcuts_were_typed_and_released)
{
    PosterBench bench;
    bench.assign(1,
        { chord(Modifier::Command, KeyS, "S"), unused, chord(Modifier::Used, KeyF5, "F5"),
            chord(0, KeyA, "Ä") });
    EXPECT_EQ(told(bench.poster.eventKeyPost(64)), Told(Outcome::Typed, "⌘S, ⇪^⌥⌘F5, Ä"));
    EXPECT_EQ(told(bench.poster.eventKeyPost(0)), Told(Outcome::Released, "⌘S, ⇪^⌥⌘F5, Ä"));
}

TEST(KeystrokePoster, tells_why_nothing_was_typed)
{
    PosterBench bench;
    bench.assign(1, { chord(Modifier::Command, KeyS, "S"), chord(0, KeyA, "A") });
    EXPECT_EQ(told(bench.poster.eventKeyPost(65)), Told(Outcome::NoShortcut, ""));
    EXPECT_EQ(told(bench.poster.eventKeyPost(76)), Told(Outcome::NoSuchKey, ""));
    EXPECT_EQ(told(bench.poster.eventKeyPost(77)), Told(Outcome::NoSuchKey, ""));
    bench.keys.result = KeyEvents::Result::NotPermitted;
    EXPECT_EQ(told(bench.poster.eventKeyPost(64)), Told(Outcome::NotPermitted, "⌘S, A"));
    bench.keys.result = KeyEvents::Result::UnknownKey;
    EXPECT_EQ(told(bench.poster.eventKeyPost(64)), Told(Outcome::KeyUnknown, "⌘S, A"));
    bench.keys.result = KeyEvents::Result::Unavailable;
    EXPECT_EQ(told(bench.poster.eventKeyPost(64)), Told(Outcome::SessionUnavailable, "⌘S, A"));
    bench.workspace.applications = { { "Finder", true }, { "Mail", true }, { "Dock", false } };
    EXPECT_EQ(told(bench.poster.eventKeyPost(64)), Told(Outcome::OtherInFront, "Finder"));
    bench.workspace.applications = {};
    EXPECT_EQ(told(bench.poster.eventKeyPost(64)), Told(Outcome::OtherInFront, ""));
}

TEST(KeystrokePoster, of_several_shortcuts_those_that_were_typed_are_told)
{
    PosterBench bench;
    bench.assign(1, { chord(0, KeyA, "A"), chord(0, KeyS, "S"), chord(0, KeyF5, "F5") });
    bench.keys.unknown = { KeyA };
    EXPECT_EQ(told(bench.poster.eventKeyPost(64)), Told(Outcome::Typed, "S, F5"));
}

TEST(KeystrokePoster, what_is_told_stays_on_one_line_and_is_cut_between_characters)
{
    PosterBench bench;
    bench.assign(1, { chord(0, KeyS, "a\nb\x7F") });
    EXPECT_EQ(told(bench.poster.eventKeyPost(64)).second, "a b ");
    bench.workspace.applications = { { std::string(61, 'x') + "é", true } };
    EXPECT_EQ(told(bench.poster.eventKeyPost(64)).second, std::string(61, 'x'));
    bench.workspace.applications = { { std::string(60, 'x') + "é", true } };
    EXPECT_EQ(told(bench.poster.eventKeyPost(64)).second, std::string(60, 'x') + "é");
}

} // namespace
} // namespace kestrel::test
