#include "tools/artwork/SetupLettering.h"

#include "artwork/Canvas.h"
#include "artwork/Engraving.h"

namespace kestrel::artwork {

namespace {

constexpr int KeyCount = 12;
constexpr int RowHeight = 13;
constexpr double RowTop = 3; // from the row to its capitals
constexpr QColor LampAmber(255, 186, 92);

} // namespace

void engraveModifier(Canvas& canvas, QPointF at, QStringView sign, const char* name)
{
    Lettering lettering { .paint = QColor(150, 154, 156) };
    engrave(canvas, sign.toString(), at + QPointF(4, 0), lettering);
    lettering.tracking = 2.4;
    lettering.anchor = Lettering::Anchor::Left;
    engrave(canvas, QLatin1String(name), at + QPointF(14, 0), lettering);
}

QImage drawModifierNames(ModifierNames names, int scale)
{
    Canvas canvas(QSize(84, 33), scale, Canvas::Backing::Transparent);
    const bool isApple = names == ModifierNames::OptionCommand;
    engraveModifier(canvas, { 4, 5 }, u"\u2325", isApple ? "OPTION" : "ALT");
    engraveModifier(canvas, { 4, 24 }, u"\u2318", isApple ? "COMMAND" : "SUPER");
    return canvas.take();
}

QImage drawKeyNumbers(NumberStyle style, int scale)
{
    const bool isHeading = style == NumberStyle::InHeading;
    const int width = isHeading ? 46 : 30;
    Canvas canvas(QSize(width, KeyCount * RowHeight), scale, Canvas::Backing::Transparent);
    Lettering lettering { .tracking = 2.4, .paint = QColor(164, 168, 170) };
    if (isHeading)
        lettering = { .tracking = 3.0, .paint = LampAmber, .anchor = Lettering::Anchor::Left };
    const QString format = isHeading ? QStringLiteral("\u00B7 U%1") : QStringLiteral("U%1");
    for (int key = 0; key < KeyCount; ++key)
        engrave(canvas, format.arg(key + 1),
            { isHeading ? 3.0 : width / 2.0, key * RowHeight + RowTop }, lettering);
    return canvas.take();
}

} // namespace kestrel::artwork
