#include "monitor/MonitorButton.h"

#include "monitor/ActivityColours.h"

#include <QPainter>

namespace kestrel {

namespace {
constexpr int Height = 28;
constexpr int LampWidth = 14;
} // namespace

MonitorButton::MonitorButton(const QString& text, Kind kind, QWidget* parent)
    : QPushButton(text, parent)
{
    setCheckable(kind == Kind::Switch);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QFont MonitorButton::engravedFont() const
{
    QFont font = this->font();
    font.setPointSizeF(font.pointSizeF() * 0.82);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 0.5);
    font.setWeight(QFont::DemiBold);
    return font;
}

QSize MonitorButton::sizeHint() const
{
    const int lamp = isCheckable() ? LampWidth : 0;
    return { QFontMetrics(engravedFont()).horizontalAdvance(text().toUpper()) + 26 + lamp, Height };
}

void MonitorButton::paintEvent(QPaintEvent*)
{
    const ActivityColours& colours = ActivityColours::of(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF cap = QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5);
    QLinearGradient face(cap.topLeft(), cap.bottomLeft());
    const bool isLow = isDown();
    face.setColorAt(0, isLow ? colours.keyBottom : colours.keyTop);
    face.setColorAt(1, isLow ? colours.keyTop : colours.keyBottom);
    painter.setBrush(face);
    painter.setPen(QPen(colours.keyEdge, 1));
    painter.drawRoundedRect(cap, 4, 4);
    if (underMouse() && isEnabled() && !isLow) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 255, 255, 18));
        painter.drawRoundedRect(cap, 4, 4);
    }
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(colours.focus, 1.6));
        painter.drawRoundedRect(cap.adjusted(-1.5, -1.5, 1.5, 1.5), 5, 5);
    }
    QRectF word = cap;
    if (isCheckable()) {
        const QPointF lamp(cap.left() + 12, cap.center().y());
        painter.setPen(QPen(isChecked() ? colours.good : colours.dim, 1));
        painter.setBrush(isChecked() ? QBrush(colours.good) : QBrush(Qt::NoBrush));
        painter.drawEllipse(lamp, 3, 3);
        word.adjust(LampWidth, 0, 0, 0);
    }
    painter.setFont(engravedFont());
    painter.setPen(isEnabled() && (!isCheckable() || isChecked()) ? colours.text : colours.dim);
    painter.drawText(word, Qt::AlignCenter, text().toUpper());
}

} // namespace kestrel
