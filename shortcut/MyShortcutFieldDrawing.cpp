// The part of the field that draws. The window draws the focus ring around the field and its clear
// button.

#include "shortcut/ClearButton.h"
#include "shortcut/ControlDrawing.h"
#include "shortcut/FieldAdvice.h"
#include "shortcut/MyShortcutField.h"

#include <QPainter>

namespace kestrel {

namespace {

constexpr double Inset = 5;
constexpr qsizetype MostLines = 2;
constexpr QColor QuietColor(126, 131, 134);
constexpr QColor WarningColor(255, 128, 96);

} // namespace

void MyShortcutField::paintEvent(QPaintEvent*)
{
    drawRect();
}

void MyShortcutField::drawRect()
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    const bool isWaiting = hasFocus() && m_stringValue.isEmpty() && !holdsKey();
    if (isWaiting)
        painter.setPen(QuietColor);
    else
        painter.setPen(m_bNotAvailable ? WarningColor : QColor(Qt::white));
    const QString text = isWaiting ? FieldAdvice::PressAKey : m_stringValue;
    const QStringList lines = text.split(u'\n').mid(0, MostLines);
    // The clear button covers the right end.
    const bool isCovered = m_myClearButton && !m_myClearButton->isHidden();
    const double right = isCovered ? m_myClearButton->x() - x() : width() - Inset;
    const double lineHeight = painter.fontMetrics().height();
    double top = (height() - lineHeight * static_cast<double>(lines.size())) / 2;
    for (const QString& line : lines) {
        const QString shown = line.left(MostShownUnits);
        const QRectF place(Inset, top, right - Inset, lineHeight);
        painter.setFont(tightened(font(), shown, place.width()));
        painter.drawText(place, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, shown);
        top += lineHeight;
    }
}

} // namespace kestrel
