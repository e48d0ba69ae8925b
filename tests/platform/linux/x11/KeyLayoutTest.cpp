#include "platform/linux/x11/KeysymCharacters.h"
#include "platform/linux/x11/X11KeyTranslation.h"
#include "tests/platform/linux/x11/PresentLayout.h"
#include "tests/platform/linux/x11/X11Bench.h"

#include <linux/input-event-codes.h>

namespace kestrel::test {
namespace {

constexpr int XOffset = 8; // an X keycode is the evdev code plus this
constexpr std::array CharacterKeys { KEY_GRAVE, KEY_1, KEY_2, KEY_3, KEY_4, KEY_5, KEY_6, KEY_7,
    KEY_8, KEY_9, KEY_0, KEY_MINUS, KEY_EQUAL, KEY_Q, KEY_W, KEY_E, KEY_R, KEY_T, KEY_Y, KEY_U,
    KEY_I, KEY_O, KEY_P, KEY_LEFTBRACE, KEY_RIGHTBRACE, KEY_A, KEY_S, KEY_D, KEY_F, KEY_G, KEY_H,
    KEY_J, KEY_K, KEY_L, KEY_SEMICOLON, KEY_APOSTROPHE, KEY_BACKSLASH, KEY_102ND, KEY_Z, KEY_X,
    KEY_C, KEY_V, KEY_B, KEY_N, KEY_M, KEY_COMMA, KEY_DOT, KEY_SLASH };

// The user types on a keyboard with a layout of their own. The key events are real ones.
class KeyLayout : public X11Bench {
protected:
    using Held = std::vector<int>; // evdev codes

    // As setxkbmap takes it, such as "de" or "us,ru".
    void chooseLayout(const std::string& layout, const std::string& option = {})
    {
        stage::ChildProcess process(
            { "setxkbmap", "-layout", layout, "-option", "", "-option", option },
            server->environment());
        ASSERT_EQ(process.wait(stage::milliseconds(10000)), 0);
        settle();
        m_present.emplace(workstation->xcb());
    }
    // What the program reads from the event of that key.
    [[nodiscard]] std::optional<TranslatedKey> captured(int evdev, const Held& held = {})
    {
        for (const int key : held)
            user->press(xKey(key));
        user->press(xKey(evdev));
        const auto event = lastPress();
        user->release(xKey(evdev));
        for (const int key : held)
            user->release(xKey(key));
        settle();
        return m_translation.translate({ event.detail, m_present->keysym(event), event.state, {} });
    }
    [[nodiscard]] std::string name(int evdev, const Held& held = {})
    {
        return captured(evdev, held)->charactersIgnoringModifiers;
    }
    // The characters of the key that the program then posts, as the workstation sees it.
    [[nodiscard]] std::string typed(const TranslatedKey& key)
    {
        EXPECT_EQ(press(key.keyCode, key.flags), KeyEvents::Result::Posted);
        const auto event = lastPress();
        releaseShortcut(key.keyCode, key.flags);
        settle();
        return charactersOfKeysym(m_present->keysym(event));
    }

private:
    static xcb_keycode_t xKey(int evdev) { return static_cast<xcb_keycode_t>(evdev + XOffset); }

    [[nodiscard]] xcb_key_press_event_t lastPress()
    {
        static_cast<void>(received());
        EXPECT_FALSE(workstation->presses().empty());
        return workstation->presses().empty() ? xcb_key_press_event_t {}
                                              : workstation->presses().back();
    }

    std::optional<PresentLayout> m_present;
    X11KeyTranslation m_translation { session };
};

TEST_F(KeyLayout, altgr_does_not_count_on_a_german_keyboard)
{
    chooseLayout("de");
    EXPECT_EQ(name(KEY_Q), "q");
    EXPECT_EQ(name(KEY_Q, { KEY_RIGHTALT }), "q") << "with AltGr it types @";
    EXPECT_EQ(name(KEY_Q, { KEY_RIGHTALT, KEY_LEFTSHIFT }), "Q");
    EXPECT_EQ(name(KEY_7, { KEY_RIGHTALT }), "7") << "with AltGr it types {";
    EXPECT_EQ(name(KEY_7, { KEY_LEFTSHIFT }), "/");
    EXPECT_EQ(captured(KEY_Q, { KEY_RIGHTALT })->flags, captured(KEY_Q)->flags);
}

TEST_F(KeyLayout, german_and_french_dead_keys_have_their_accent)
{
    chooseLayout("de");
    EXPECT_EQ(name(KEY_GRAVE), "^");
    EXPECT_EQ(name(KEY_EQUAL), "´");
    EXPECT_EQ(name(KEY_EQUAL, { KEY_LEFTSHIFT }), "`");
    chooseLayout("fr");
    EXPECT_EQ(name(KEY_LEFTBRACE), "^");
    EXPECT_EQ(name(KEY_LEFTBRACE, { KEY_LEFTSHIFT }), "¨");
    EXPECT_EQ(name(KEY_7), "è");
    EXPECT_EQ(name(KEY_7, { KEY_RIGHTALT }), "è") << "with AltGr it types `";
}

TEST_F(KeyLayout, caps_lock_does_not_count)
{
    chooseLayout("de");
    user->press(KEY_CAPSLOCK + XOffset);
    user->release(KEY_CAPSLOCK + XOffset);
    EXPECT_EQ(name(KEY_A), "a");
    EXPECT_EQ(name(KEY_A, { KEY_LEFTSHIFT }), "A");
}

TEST_F(KeyLayout, of_several_layouts_the_chosen_one_counts)
{
    chooseLayout("us,ru,de", "grp:menu_toggle");
    const auto toggle = [this] {
        user->press(KEY_COMPOSE + XOffset);
        user->release(KEY_COMPOSE + XOffset);
    };
    EXPECT_EQ(name(KEY_Y), "y");
    toggle();
    EXPECT_EQ(name(KEY_S, { KEY_LEFTCTRL }), "ы");
    EXPECT_EQ(name(KEY_S, { KEY_LEFTSHIFT }), "Ы");
    toggle();
    EXPECT_EQ(name(KEY_Y), "z");
    EXPECT_EQ(name(KEY_GRAVE), "^");
}

TEST_F(KeyLayout, what_is_shown_is_what_will_be_typed)
{
    for (const char* layout : { "us", "de", "fr" }) {
        chooseLayout(layout);
        for (const int evdev : CharacterKeys) {
            for (const Held& held : { Held {}, Held { KEY_LEFTSHIFT }, Held { KEY_RIGHTALT },
                     Held { KEY_RIGHTALT, KEY_LEFTSHIFT } }) {
                const auto key = captured(evdev, held);
                ASSERT_TRUE(key.has_value()) << layout << " " << evdev;
                EXPECT_NE(key->charactersIgnoringModifiers, "") << layout << " " << evdev;
                EXPECT_EQ(key->charactersIgnoringModifiers, typed(*key))
                    << layout << " " << evdev << " with " << held.size() << " keys held";
            }
        }
    }
}

} // namespace
} // namespace kestrel::test
