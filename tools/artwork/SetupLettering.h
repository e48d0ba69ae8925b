#pragma once

#include <QImage>
#include <QPointF>
#include <QString>

namespace kestrel::artwork {

class Canvas;

enum class NumberStyle { BelowKey, InHeading };
enum class ModifierNames { OptionCommand, AltSuper };

// Engraves the sign of a modifier beside the name of its key.
void engraveModifier(Canvas& canvas, QPointF at, QStringView sign, const char* name);

// The modifiers whose names differ between keyboards, 84 × 33 units.
[[nodiscard]] QImage drawModifierNames(ModifierNames names, int scale);

// The numbers of the twelve keys, one below the other, in rows of 13 units. They are 30 units wide
// and centred for the places below the keys, 46 units wide and lit for the heading.
[[nodiscard]] QImage drawKeyNumbers(NumberStyle style, int scale);

} // namespace kestrel::artwork
