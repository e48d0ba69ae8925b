#pragma once

#include <QStyledItemDelegate>

namespace kestrel {

struct ActivityColours;
class ActivityEvent;

// Draws a cell of the list of events. Much faster than a style, so that a flood of events leaves
// the main thread to the keys.
class ActivityRowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // The width of a column in which its usual words have room.
    [[nodiscard]] static int usualWidth(const QFont& font, int column);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;

private:
    static void drawAcross(QPainter& painter, const QStyleOptionViewItem& option,
        const QModelIndex& index, const QColor& colour);
    // The room that the mark before an outcome takes from the text.
    static int drawMark(
        QPainter& painter, const QRect& cell, const ActivityEvent& event, const QColor& colour);
};

} // namespace kestrel
