#pragma once

#include <QColor>

namespace kestrel::test {

enum class ColourVision { Usual, NoRedCones, NoGreenCones, NoBlueCones };

// How an eye of that kind sees a colour, after the matrices of Machado, Oliveira and Fernandes
// (2009) for complete deficiency.
[[nodiscard]] QColor seenBy(ColourVision vision, const QColor& colour);

// The difference of two colours, CIEDE2000. 1 is just visible side by side.
[[nodiscard]] double difference(const QColor& left, const QColor& right);

} // namespace kestrel::test
