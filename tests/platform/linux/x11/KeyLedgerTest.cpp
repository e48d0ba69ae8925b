#include "platform/linux/x11/KeyLedger.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrel::test {

namespace {
using Direction = KeyEvents::Direction;
using AutoRepeat = KeyEvents::AutoRepeat;

constexpr XKeyCode A = 38, S = 39, Control = 37, Shift = 50, Alt = 64, Super = 133;

std::string text(const KeyPlan& plan)
{
    std::string text;
    for (const KeyStep& step : plan) {
        text.append(text.empty() ? "" : " ").append(std::to_string(step.key));
        text.append(step.direction == Direction::Down ? "d" : "u");
        if (step.delayMs > 0)
            text.append("+").append(std::to_string(step.delayMs)).append("ms");
    }
    return text;
}

XKeySet keys(std::initializer_list<XKeyCode> members)
{
    XKeySet set;
    for (const XKeyCode key : members)
        set.set(key);
    return set;
}

class Ledger : public ::testing::Test {
protected:
    Ledger() { ledger.setForeignKeys({}); }

    std::string press(XKeyCode key, const std::vector<XKeyCode>& modifiers = {},
        AutoRepeat autoRepeat = AutoRepeat::No)
    {
        return text(ledger.press(key, modifiers, autoRepeat));
    }
    std::string release(XKeyCode key) { return text(ledger.release(key)); }
    std::string userHolds(std::initializer_list<XKeyCode> members)
    {
        ledger.setForeignKeys(keys(members));
        return text(ledger.setUserModifiers(keys(members)));
    }
    std::string releaseAll() { return text(ledger.releaseAll()); }

    KeyLedger ledger;
};
} // namespace

TEST_F(Ledger, a_press_puts_the_named_modifiers_in_front_in_the_order_given)
{
    EXPECT_EQ(press(S, { Control, Shift, Alt, Super }), "37d 50d 64d 133d 39d");
    EXPECT_EQ(ledger.held(), keys({ Control, Shift, Alt, Super, S }));
}

TEST_F(Ledger, a_named_modifier_that_another_program_holds_is_neither_pressed_nor_released)
{
    ledger.setForeignModifiers(keys({ Shift }));
    EXPECT_EQ(press(S, { Control, Shift }), "37d 39d");
    EXPECT_EQ(ledger.held(), keys({ Control, S }));
    EXPECT_EQ(release(Shift), "");
    EXPECT_EQ(releaseAll(), "39u 37u");
}

TEST_F(Ledger, the_releases_that_follow_let_go_of_each)
{
    press(S, { Control, Super });
    EXPECT_EQ(release(Control), "37u");
    EXPECT_EQ(release(Super), "133u");
    EXPECT_EQ(release(S), "39u");
    EXPECT_TRUE(ledger.held().none());
}

TEST_F(Ledger, a_release_of_what_is_not_held_is_no_step)
{
    EXPECT_EQ(release(S), "");
    press(S);
    release(S);
    EXPECT_EQ(release(S), "");
}

TEST_F(Ledger, a_press_takes_back_what_an_earlier_one_left_of_its_modifiers)
{
    press(S, { Super, Alt });
    EXPECT_EQ(press(A, { Super }), "64u 38d");
    EXPECT_EQ(press(A), "133u 38u 38d+2ms");
}

TEST_F(Ledger, a_held_key_is_pressed_anew_a_tick_later_but_repeats_at_once)
{
    press(S);
    EXPECT_EQ(press(S), "39u 39d+2ms");
    EXPECT_EQ(press(S, {}, AutoRepeat::Yes), "39u 39d");
    EXPECT_EQ(ledger.held(), keys({ S }));
}

TEST_F(Ledger, a_modifier_key_may_be_the_key_itself)
{
    EXPECT_EQ(press(Shift, { Shift, Alt }), "64d 50d");
    EXPECT_EQ(release(Shift), "50u");
    EXPECT_EQ(release(Alt), "64u");
    EXPECT_EQ(release(Shift), "");
}

TEST_F(Ledger, a_key_that_nobody_holds_is_only_pressed)
{
    EXPECT_EQ(press(S), "39d");
    EXPECT_EQ(press(S), "39u 39d+2ms");
    EXPECT_EQ(release(S), "39u");
    EXPECT_EQ(text(ledger.pressBare(S)), "39d");
}

TEST_F(Ledger, a_key_that_somebody_else_holds_is_released_first)
{
    ledger.setForeignKeys(keys({ A }));
    EXPECT_EQ(press(A), "38u 38d+2ms");
    EXPECT_EQ(release(A), "38u");
    EXPECT_EQ(press(A, {}, AutoRepeat::Yes), "38u 38d");
    EXPECT_EQ(release(A), "38u");
    EXPECT_EQ(text(ledger.pressBare(A)), "38u 38d");
    EXPECT_EQ(press(S), "39d");
}

TEST_F(Ledger, a_modifier_that_another_program_holds_is_released_before_it_is_pressed_itself)
{
    ledger.setForeignModifiers(keys({ Shift }));
    EXPECT_EQ(press(Shift), "50u 50d+2ms");
}

TEST_F(Ledger, every_key_may_be_down_until_it_is_told)
{
    EXPECT_EQ(text(KeyLedger().press(S, {}, AutoRepeat::No)), "39u 39d+2ms");
}

TEST_F(Ledger, a_bare_press_touches_no_modifier)
{
    userHolds({ Shift });
    press(S, { Super });
    EXPECT_EQ(text(ledger.pressBare(A)), "38d");
    EXPECT_EQ(ledger.held(), keys({ S, A, Super, Shift }));
}

TEST_F(Ledger, what_the_user_holds_unnamed_is_taken_away_and_given_back)
{
    userHolds({ Shift });
    EXPECT_EQ(press(S, { Super }), "50u 133d 39d 50d");
    EXPECT_EQ(press(A), "50u 133u 38d 50d");
    EXPECT_EQ(userHolds({}), "50u");
    EXPECT_EQ(ledger.held(), keys({ S, A }));
}

TEST_F(Ledger, what_the_user_holds_and_a_press_names_stays_with_the_user)
{
    userHolds({ Super });
    EXPECT_EQ(press(S, { Super }), "133d 39d");
    EXPECT_EQ(release(Super), "");
    EXPECT_EQ(press(A, { Super }), "38d");
    EXPECT_EQ(release(Super), "");
    EXPECT_EQ(userHolds({}), "133u");
}

TEST_F(Ledger, a_stand_in_that_is_named_is_let_go_of_as_named_once_the_user_has_gone)
{
    userHolds({ Super });
    press(A);
    press(S, { Super });
    EXPECT_EQ(userHolds({}), "");
    EXPECT_EQ(release(Super), "133u");
}

TEST_F(Ledger, a_key_that_the_user_holds_as_a_modifier_can_be_pressed_itself)
{
    userHolds({ Shift });
    EXPECT_EQ(press(Shift), "50u 50u 50d+2ms");
    EXPECT_EQ(release(Shift), "");
    EXPECT_EQ(userHolds({}), "50u");
}

TEST_F(Ledger, letting_go_of_all_begins_with_the_keys_and_ends_with_their_modifiers)
{
    press(S, { Control });
    press(A, { Control, Super });
    EXPECT_EQ(releaseAll(), "38u 39u 37u 133u");
    EXPECT_EQ(releaseAll(), "");
    EXPECT_TRUE(ledger.held().none());
}

TEST_F(Ledger, letting_go_of_all_leaves_the_user_what_is_the_users)
{
    userHolds({ Shift });
    press(S, { Super });
    EXPECT_EQ(releaseAll(), "39u 133u");
    EXPECT_EQ(ledger.held(), keys({ Shift }));
    EXPECT_EQ(userHolds({}), "50u");
    EXPECT_TRUE(ledger.held().none());
}

TEST_F(Ledger, forgetting_is_no_step_and_leaves_nothing_to_let_go_of)
{
    userHolds({ Shift });
    press(S, { Super });
    ledger.forget();
    EXPECT_TRUE(ledger.held().none());
    EXPECT_EQ(releaseAll(), "");
    EXPECT_EQ(press(A), "50u 38d 50d");
}

} // namespace kestrel::test
