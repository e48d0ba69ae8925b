#include "monitor/ActivityRowDelegate.h"

#include "activity/OutcomeWords.h"
#include "monitor/ActivityColours.h"
#include "monitor/ActivityModel.h"

#include <QFontDatabase>
#include <QPainter>
#include <QTableView>

namespace kestrel {

namespace {
using Outcome = ActivityEvent::Outcome;
using Kind = ActivityEvent::Kind;

constexpr int Margin = 8;
constexpr int FirstMargin = 20; // in line with what stands above the list
constexpr int MarkRoom = 16;

bool isTrouble(const ActivityEvent& event)
{
    switch (event.kind()) {
    case Kind::Packet:
        return OutcomeWords::isKeptBack(event) || event.outcome() == Outcome::NotAnswered;
    case Kind::LinkOpened:
    case Kind::WorkstationFound:
        return false;
    default:
        return true;
    }
}

QColor outcomeColour(const ActivityEvent& event, const ActivityColours& colours)
{
    if (isTrouble(event))
        return event.outcome() == Outcome::NotPermitted ? colours.bad : colours.warning;
    return event.outcome() == Outcome::Typed ? colours.good : colours.dim;
}

// True for routine outcomes, which are drawn dim.
bool isQuiet(const ActivityEvent& event)
{
    return event.outcome() == Outcome::Ignored || event.outcome() == Outcome::Answered
        || event.outcome() == Outcome::Awaited;
}

QColor textColour(const ActivityEvent& event, int column, const ActivityColours& colours)
{
    switch (column) {
    case ActivityModel::Event:
        if (event.kind() != Kind::Packet)
            return isTrouble(event) ? colours.warning : colours.good;
        return isQuiet(event) ? colours.dim : colours.text;
    case ActivityModel::Outcome:
        return outcomeColour(event, colours);
    default:
        return colours.dim;
    }
}

QFont cellFont(const QFont& font, int column)
{
    if (column == ActivityModel::Event || column == ActivityModel::Outcome)
        return font;
    static const QFont systemFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    QFont fixed = systemFont;
    fixed.setPointSizeF(font.pointSizeF() * 0.9);
    return fixed;
}
} // namespace

// A disc: typed. A ring: something else was done. A bar: kept back.
int ActivityRowDelegate::drawMark(
    QPainter& painter, const QRect& cell, const ActivityEvent& event, const QColor& colour)
{
    const QPointF centre(cell.left() + 4, cell.center().y() + 1);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.4));
    painter.setBrush(Qt::NoBrush);
    if (isTrouble(event)) {
        painter.setPen(QPen(colour, 2.4, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(centre - QPointF(3, 0), centre + QPointF(3, 0));
    } else if (event.outcome() == Outcome::Typed) {
        painter.setBrush(colour);
        painter.drawEllipse(centre, 3.2, 3.2);
    } else {
        painter.drawEllipse(centre, 2.4, 2.4);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    return MarkRoom;
}

int ActivityRowDelegate::usualWidth(const QFont& font, int column)
{
    const auto widthOf = [&](const QString& longest) {
        return QFontMetrics(cellFont(font, column)).horizontalAdvance(longest) + 2 * Margin;
    };
    switch (column) {
    case ActivityModel::Time:
        return widthOf(QStringLiteral("00:00:00.000")) + FirstMargin;
    case ActivityModel::Event:
        return widthOf(QStringLiteral("Knob 1: 11 of 11, from the middle"));
    case ActivityModel::Outcome:
        return widthOf(QStringLiteral("nothing: the permission to post keys is missing"))
            + MarkRoom;
    default:
        return widthOf(QStringLiteral("F0 00 00 66 05 00 12 04 …"));
    }
}

void ActivityRowDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const ActivityColours& colours = ActivityColours::of(option.palette);
    const bool isSelected = option.state & QStyle::State_Selected;
    const bool isBand = index.row() % 2 != 0;
    painter->fillRect(option.rect,
        isSelected   ? colours.selected
            : isBand ? colours.band
                     : colours.list);
    const auto* const model = static_cast<const ActivityModel*>(index.model());
    const ActivityEvent* const event = model->eventAt(index.row());
    if (!event)
        return;
    if (event->kind() != Kind::Packet && index.column() >= ActivityModel::Event)
        return drawAcross(
            *painter, option, index, textColour(*event, ActivityModel::Event, colours));
    const int left = index.column() == 0 ? FirstMargin : Margin;
    QRect cell = option.rect.adjusted(left, 0, -Margin, 0);
    const QString text = index.data().toString();
    const QColor colour = textColour(*event, index.column(), colours);
    if (index.column() == ActivityModel::Outcome && !text.isEmpty())
        cell.setLeft(cell.left() + drawMark(*painter, cell, *event, colour));
    const QFont font = cellFont(option.font, index.column());
    painter->setFont(font);
    painter->setPen(isSelected ? colours.text : colour);
    const QFontMetrics metrics(font);
    const QString shown = metrics.horizontalAdvance(text) > cell.width()
        ? metrics.elidedText(text, Qt::ElideRight, cell.width())
        : text;
    painter->drawText(cell, Qt::AlignLeft | Qt::AlignVCenter, shown);
}

// What happens to the link has no outcome and no bytes, so its words go across their columns. Each
// cell draws its part, because cells are repainted one by one.
void ActivityRowDelegate::drawAcross(QPainter& painter, const QStyleOptionViewItem& option,
    const QModelIndex& index, const QColor& colour)
{
    const auto* const list = qobject_cast<const QTableView*>(option.widget);
    if (!list)
        return;
    QRect words = option.rect;
    words.setLeft(list->columnViewportPosition(ActivityModel::Event) + Margin);
    words.setRight(list->viewport()->width() - Margin);
    painter.save();
    painter.setClipRect(option.rect, Qt::IntersectClip);
    painter.setFont(option.font);
    painter.setPen(colour);
    painter.drawText(words, Qt::AlignLeft | Qt::AlignVCenter,
        index.siblingAtColumn(ActivityModel::Event).data().toString());
    painter.restore();
}

} // namespace kestrel
