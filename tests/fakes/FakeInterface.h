#pragma once

#include "common/ApplicationVisibility.h"
#include "common/WindowVisibility.h"
#include "platform/KeyTranslation.h"

#include <string>
#include <vector>

namespace kestrel::test {

// Reads the native numbers of an event as those of macOS: virtual key, modifiers and text are the
// key code, the flags and the characters. A number above 16 bits means a key without a key code.
class FakeKeyTranslation final : public KeyTranslation {
public:
    [[nodiscard]] std::optional<TranslatedKey> translate(const NativeKeyEvent& event) override
    {
        if (event.virtualKey > 0xFFFF)
            return std::nullopt;
        return TranslatedKey { static_cast<KeyCode>(event.virtualKey), event.modifiers,
            std::string(event.text) };
    }
    [[nodiscard]] ModifierNames modifierNames() const override { return names; }

    ModifierNames names = ModifierNames::OptionCommand;
};

class RecordingVisibility final : public ApplicationVisibility {
public:
    explicit RecordingVisibility(std::vector<std::string>& calls)
        : m_calls(calls)
    {
    }
    void hide() override { m_calls.push_back("hide"); }
    void activate() override { m_calls.push_back("activate"); }

private:
    std::vector<std::string>& m_calls;
};

// Records what is done with the plug-in panel's window.
class RecordingPanel final : public WindowVisibility {
public:
    explicit RecordingPanel(std::vector<std::string>& calls)
        : m_calls(calls)
    {
    }
    [[nodiscard]] bool isVisible() const override { return visible; }
    void showWindow() override { m_calls.push_back("show panel"); }

    bool visible = false;

private:
    std::vector<std::string>& m_calls;
};

} // namespace kestrel::test
