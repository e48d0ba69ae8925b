#include "setup/KeyMarks.h"

#include <QPainter>
#include <QStringList>

namespace kestrel {

namespace {

constexpr double Size = 10;
constexpr double Inset = 5; // from the edges of the key
constexpr QColor Plate(38, 34, 28);
constexpr QColor Amber(255, 196, 104);
constexpr QColor Ivory(244, 240, 230);

QRectF plate(QPainter& painter, double x)
{
    const QRectF place(x, Inset, Size, Size);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Plate);
    painter.drawEllipse(place);
    return place;
}

} // namespace

QStringList KeyMarks::words() const
{
    QStringList sentences;
    if (isUnassigned)
        sentences.append(QStringLiteral("Not assigned: what was typed was left without Assign"));
    for (const KeyTwin& twin : twins)
        sentences.append(twin.words());
    return sentences;
}

// An exclamation mark in the left corner, an equals sign in the right one. Bars on whole units stay
// crisp at every scale.
void KeyMarks::draw(QPainter& painter, double width) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (isUnassigned) {
        const QRectF place = plate(painter, Inset);
        painter.fillRect(QRectF(place.x() + 4, place.y() + 2, 2, 4), Amber);
        painter.fillRect(QRectF(place.x() + 4, place.y() + 7, 2, 1), Amber);
    }
    if (!twins.empty()) {
        const QRectF place = plate(painter, width - Inset - Size);
        painter.fillRect(QRectF(place.x() + 3, place.y() + 3, 4, 1), Ivory);
        painter.fillRect(QRectF(place.x() + 3, place.y() + 6, 4, 1), Ivory);
    }
    painter.restore();
}

} // namespace kestrel
