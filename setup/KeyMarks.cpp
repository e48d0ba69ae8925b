#include "setup/KeyMarks.h"

#include "assign/WorkingSet.h"
#include "common/KestrelUtilities.h"
#include "platform/KeyCodes.h"

#include <QPainter>

#include <algorithm>

namespace kestrel {

namespace {

constexpr double Size = 10;
constexpr double Inset = 5; // from the edges of the key
constexpr QColor Plate(38, 34, 28);
constexpr QColor Amber(255, 196, 104);
constexpr QColor Ivory(244, 240, 230);

// What the program posts for one record of an entry.
struct Stroke {
    ModifierFlags flags = 0;
    KeyCode code = 0;
    QString shown;
};

std::vector<Stroke> strokesOf(const ButtonEntry& entry)
{
    std::vector<Stroke> strokes;
    for (std::size_t record = 0; entry && record < ShortcutRecordCount; ++record) {
        const auto element = [&](std::size_t place) -> const ArchiveValue& {
            return entry->at(record * ShortcutRecordSize + place);
        };
        const auto flags = static_cast<ModifierFlags>(element(ShortcutRecord::Modifiers).toInt32())
            & Modifier::Used;
        const KeyCode code = element(ShortcutRecord::KeyCode).toUInt16();
        const QString name = element(ShortcutRecord::Text).text();
        if (!name.isEmpty())
            strokes.push_back({ flags, code, KestrelUtilities::getShortcutKey(flags, code, name) });
    }
    return strokes;
}

bool has(const std::vector<Stroke>& strokes, const Stroke& wanted)
{
    return std::any_of(strokes.begin(), strokes.end(), [&](const Stroke& stroke) {
        return stroke.flags == wanted.flags && stroke.code == wanted.code;
    });
}

QRectF plate(QPainter& painter, double x)
{
    const QRectF place(x, Inset, Size, Size);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Plate);
    painter.drawEllipse(place);
    return place;
}

} // namespace

std::vector<KeyMarks::Twin> KeyMarks::twinsOf(int number, const WorkingSet& set)
{
    std::vector<Twin> twins;
    std::vector<Stroke> told;
    for (const Stroke& stroke : strokesOf(set.entry(number))) {
        Twin twin { stroke.shown, {} };
        for (int other = 1; other <= UserAssignFile::ButtonCount; ++other) {
            if (other != number && has(strokesOf(set.entry(other)), stroke))
                twin.keys.push_back(other);
        }
        if (!twin.keys.empty() && !has(told, stroke))
            twins.push_back(twin);
        told.push_back(stroke);
    }
    return twins;
}

QStringList KeyMarks::words() const
{
    QStringList sentences;
    if (isUnassigned)
        sentences.append(QStringLiteral("Not assigned: what was typed was left without Assign"));
    for (const Twin& twin : twins) {
        QStringList keys;
        for (const int key : twin.keys)
            keys.append(QStringLiteral("U%1").arg(key));
        sentences.append(
            QStringLiteral("%1 is also on %2").arg(twin.shortcut, keys.join(QStringLiteral(", "))));
    }
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
