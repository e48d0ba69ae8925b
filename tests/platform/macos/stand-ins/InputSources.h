#pragma once

#include <Carbon/Carbon.h>

#include <map>
#include <optional>
#include <string>

namespace kestrel::test {

struct LayoutKey {
    std::u16string plain;
    std::u16string withShift;
    bool isDead = false; // without Shift
};

struct Layout {
    std::map<UInt16, LayoutKey> keys; // as they lie on an ANSI keyboard
};

// The input sources of the user.
struct InputSources {
    static constexpr UInt8 Ansi = 40;
    static constexpr UInt8 Iso = 41; // the key codes 10 and 50 change places on its keyboards

    struct Source {
        std::optional<Layout> layout; // no value for one whose layout has no Unicode data
    };

    std::optional<Source> current; // no value: this process is in no session with a display
    std::optional<Source> asciiCapable;
    UInt8 keyboardType = Ansi;
    std::map<UInt32, Layout> known; // by the numbers in the data of the layouts
};

InputSources& inputSources();

} // namespace kestrel::test
