#pragma once

#include "platform/linux/x11/KeyLedger.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kestrel {

// Records in a file which keys this program holds down on one display. When a run is killed, the
// file stays, and the next start releases the keys that the killed run left down. Writing is a few
// plain stores into mapped memory. A journal that cannot be opened, or that another running
// instance has locked, records nothing.
class HeldKeysJournal {
public:
    // The path of the journal in the session's folder. Empty when there is none. `display` is a
    // display's name as in $DISPLAY; its screen number plays no part.
    [[nodiscard]] static std::string pathFor(std::string_view display);

    HeldKeysJournal() = default;
    explicit HeldKeysJournal(const std::string& path);
    ~HeldKeysJournal();
    HeldKeysJournal(HeldKeysJournal&& other) noexcept;
    HeldKeysJournal& operator=(HeldKeysJournal&& other) noexcept;

    [[nodiscard]] bool isOpen() const { return m_content != nullptr; }
    // The keys in the journal. None when the file was not a journal before.
    [[nodiscard]] XKeySet keys() const;
    void enter(XKeyCode key);
    void strike(XKeyCode key);

    // Eight bytes that mark a journal, then one bit per keycode.
    static constexpr std::size_t FileSize = 40;

private:
    struct Content;

    int m_descriptor = -1;
    Content* m_content = nullptr;
};

} // namespace kestrel
