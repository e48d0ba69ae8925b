#pragma once

#include "platform/linux/x11/KeyLedger.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kestrel {

// The keys that this program holds down on one display, in a file that outlives it, so that the
// next start can let go of what a killed run left down. Writing is a few plain stores into mapped
// memory. A journal that cannot be had, or that another running instance has, keeps nothing.
class HeldKeysJournal {
public:
    // In $XDG_RUNTIME_DIR, else $XDG_STATE_HOME, else ~/.local/state; empty when there is none.
    // `display` is the display as the X library names it; its screen number plays no part.
    [[nodiscard]] static std::string pathFor(std::string_view display);

    HeldKeysJournal() = default;
    explicit HeldKeysJournal(const std::string& path);
    ~HeldKeysJournal();
    HeldKeysJournal(HeldKeysJournal&& other) noexcept;
    HeldKeysJournal& operator=(HeldKeysJournal&& other) noexcept;

    [[nodiscard]] bool isOpen() const { return m_content != nullptr; }
    // What is written there; nothing from a file that is not a journal.
    [[nodiscard]] XKeySet keys() const;
    void enter(XKeyCode key);
    void strike(XKeyCode key);

    static constexpr std::size_t FileSize = 40; // eight bytes of mark, then one bit a keycode

private:
    struct Content;

    int m_descriptor = -1;
    Content* m_content = nullptr;
};

} // namespace kestrel
