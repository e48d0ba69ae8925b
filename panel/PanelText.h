#pragma once

#include "panel/DisplayMessage.h"
#include "panel/KnobRing.h"

#include <QString>

#include <optional>

// Describes the state of the panel in words, for assistive technology.
namespace kestrel::PanelText {

// The text of the glyph that a character code shows; a space for a blank glyph.
[[nodiscard]] QString glyph(std::uint8_t code);

// The text of row 0 (upper) or 1: its four zones, separated by spaces, without trailing blanks.
[[nodiscard]] QString row(const PanelZones& zones, std::size_t row);

// The two zones above the knob, such as "Threshold, −24.0 dB". A blank upper zone, or no zones at
// all, give the knob its number for a name.
[[nodiscard]] QString knobName(const std::optional<PanelZones>& zones, std::size_t knob);
// The parameter that the two zones show, as one sentence: "Threshold −24.0 dB". Empty if both are
// blank.
[[nodiscard]] QString parameter(const PanelZones& zones, std::size_t knob);
[[nodiscard]] QString ring(KnobRing ring); // which of its lamps are lit

[[nodiscard]] QString switchName(std::size_t lamp); // the engraving of the panel
[[nodiscard]] QString lampState(bool isLit);

} // namespace kestrel::PanelText
