#pragma once

#include "panel/DisplayMessage.h"
#include "panel/KnobRing.h"

#include <QString>

// What the panel shows, in words for assistive technology.
namespace kestrel::PanelText {

// A display character as its glyph reads, a space where the glyph is blank.
[[nodiscard]] QString glyph(std::uint8_t code);

// One of the two rows (0 = upper), its four zones separated by a space, without trailing blanks.
[[nodiscard]] QString row(const PanelZones& zones, std::size_t row);

[[nodiscard]] QString knobName(std::size_t knob);
[[nodiscard]] QString ring(KnobRing ring); // which of its lamps are lit

[[nodiscard]] QString switchName(std::size_t lamp); // as engraved
[[nodiscard]] QString lampState(bool isLit);

} // namespace kestrel::PanelText
