#pragma once

#include "platform/linux/x11/KeyLedger.h"

#include <string>
#include <string_view>

namespace kestrel {

// Records in a file which keys this program holds down on one display. When a run is killed, the
// file stays, and the next start releases the keys that the killed run left down. The file is eight
// bytes that mark a journal, then one bit per keycode. Each change is one call that writes all of
// it, so a file that another program has truncated or overwritten is sound again after the next
// change; a mapping of a truncated file would raise a fatal signal. A journal that cannot be
// opened, or that another running instance has locked, records nothing.
class HeldKeysJournal {
public:
    // The path of the journal in the session's folder. Empty when there is none. `display` is a
    // display's name as in $DISPLAY; its screen number plays no part.
    [[nodiscard]] static std::string pathFor(std::string_view display);

    // The keys in the journal at `path`, which stays as it is, also while another program has it
    // open. None when there is no journal.
    [[nodiscard]] static XKeySet keysIn(const std::string& path);

    HeldKeysJournal() = default;
    explicit HeldKeysJournal(const std::string& path);
    ~HeldKeysJournal();
    HeldKeysJournal(HeldKeysJournal&& other) noexcept;
    HeldKeysJournal& operator=(HeldKeysJournal&& other) noexcept;

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    // The keys in the journal. None when the file was not a journal before.
    [[nodiscard]] const XKeySet& keys() const { return m_keys; }
    void enter(const XKeySet& keys);
    void strike(const XKeySet& keys);

private:
    void change(const XKeySet& keys);
    [[nodiscard]] bool write() const;
    void close();

    int m_descriptor = -1;
    XKeySet m_keys;
};

} // namespace kestrel
