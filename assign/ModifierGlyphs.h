#pragma once

#include "platform/KeyCodes.h"

#include <QStringView>

#include <array>

namespace kestrel {

struct ModifierGlyph {
    QStringView glyph;
    ModifierFlags flag;
};

// In the order of shortcut texts.
inline constexpr std::array<ModifierGlyph, 4> ModifierGlyphs { {
    { u"⇪", Modifier::Shift },
    { u"^", Modifier::Control },
    { u"⌥", Modifier::Option },
    { u"⌘", Modifier::Command },
} };

} // namespace kestrel
