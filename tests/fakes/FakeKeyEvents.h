#pragma once

#include "platform/KeyEvents.h"

#include <set>
#include <string>
#include <vector>

namespace kestrel::test {

// Records posted events in words: "key 1 down ⌘" for the session tap, with "repeat" added for an
// auto-repeat, and "bare 55 up" for the HID tap.
class FakeKeyEvents final : public KeyEvents {
public:
    [[nodiscard]] Result post(
        KeyCode keyCode, Direction direction, ModifierFlags flags, AutoRepeat autoRepeat) override
    {
        posted.push_back("key " + std::to_string(keyCode) + word(direction) + glyphs(flags)
            + (autoRepeat == AutoRepeat::Yes ? " repeat" : ""));
        return unknown.contains(keyCode) ? Result::UnknownKey : result;
    }

    [[nodiscard]] Result postBare(KeyCode keyCode, Direction direction) override
    {
        posted.push_back("bare " + std::to_string(keyCode) + word(direction));
        return result;
    }

    void releaseAll() override { posted.emplace_back("release all"); }

    // All events since the last call, joined with "; ".
    [[nodiscard]] std::string take()
    {
        std::string text;
        for (const auto& event : posted)
            text.append(text.empty() ? "" : "; ").append(event);
        posted.clear();
        return text;
    }

    Result result = Result::Posted;
    std::set<KeyCode> unknown; // keys that the keyboard does not have
    std::vector<std::string> posted;

private:
    static std::string word(Direction direction)
    {
        return direction == Direction::Down ? " down" : " up";
    }

    static std::string glyphs(ModifierFlags flags)
    {
        std::string text;
        text += flags & Modifier::Shift ? "⇪" : "";
        text += flags & Modifier::Control ? "^" : "";
        text += flags & Modifier::Option ? "⌥" : "";
        text += flags & Modifier::Command ? "⌘" : "";
        if (const ModifierFlags other = flags & ~Modifier::Used)
            text.append("+").append(std::to_string(other));
        return text.empty() ? text : std::string(" ").append(text);
    }
};

} // namespace kestrel::test
