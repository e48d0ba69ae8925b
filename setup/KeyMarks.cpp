#include "setup/KeyMarks.h"

#include "assign/PostedStroke.h"
#include "assign/WorkingSet.h"
#include "common/KestrelUtilities.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <utility>

namespace kestrel {

namespace {

constexpr double Size = 10;
constexpr double Inset = 5; // from the edges of the key
constexpr QColor Plate(38, 34, 28);
constexpr QColor Amber(255, 196, 104);
constexpr QColor Ivory(244, 240, 230);

using Strokes = std::vector<PostedStroke>;

Strokes strokesOf(const ButtonEntry& entry)
{
    Strokes strokes;
    for (std::size_t record = 0; entry && record < ShortcutRecordCount; ++record) {
        if (const auto stroke = postedStroke(*entry, shortcutRecordOffset(record)))
            strokes.push_back(*stroke);
    }
    return strokes;
}

bool has(const Strokes& strokes, const PostedStroke& wanted)
{
    return std::find(strokes.begin(), strokes.end(), wanted) != strokes.end();
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
    const ButtonEntry entry = set.entry(number);
    std::array<Strokes, UserAssignFile::ButtonCount> others;
    for (int other = 1; other <= UserAssignFile::ButtonCount; ++other) {
        if (other != number)
            others[static_cast<std::size_t>(other - 1)] = strokesOf(set.entry(other));
    }
    std::vector<Twin> twins;
    Strokes told;
    for (std::size_t record = 0; entry && record < ShortcutRecordCount; ++record) {
        const std::size_t offset = shortcutRecordOffset(record);
        const auto stroke = postedStroke(*entry, offset);
        if (!stroke || has(told, *stroke))
            continue;
        told.push_back(*stroke);
        Twin twin;
        for (std::size_t other = 0; other < others.size(); ++other) {
            if (has(others[other], *stroke))
                twin.keys.push_back(static_cast<int>(other) + 1);
        }
        if (twin.keys.empty())
            continue;
        twin.shortcut = KestrelUtilities::getShortcutKey(
            stroke->flags, stroke->code, (*entry)[offset + ShortcutRecord::Text].text());
        twins.push_back(std::move(twin));
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
