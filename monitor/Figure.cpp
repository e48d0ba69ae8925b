#include "monitor/Figure.h"

#include "monitor/ActivityColours.h"

#include <QPainter>

namespace kestrel {

namespace {
constexpr int Gap = 3; // between name and value
}

Figure::Figure(const QString& name, QWidget* parent)
    : QWidget(parent)
    , m_name(name)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Figure::setValue(const QString& value)
{
    if (value == m_value)
        return;
    m_value = value;
    update();
}

void Figure::setWarning(bool warning)
{
    if (warning == m_isWarning)
        return;
    m_isWarning = warning;
    update();
}

QFont Figure::nameFont() const
{
    QFont font = this->font();
    font.setPointSizeF(font.pointSizeF() * 0.75);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 0.8);
    return font;
}

QFont Figure::valueFont() const
{
    QFont font = this->font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    return font;
}

QSize Figure::sizeHint() const
{
    const QFontMetrics name(nameFont());
    const QFontMetrics value(valueFont());
    return { name.horizontalAdvance(m_name.toUpper()) + 6, name.height() + Gap + value.height() };
}

void Figure::paintEvent(QPaintEvent*)
{
    const ActivityColours& colours = ActivityColours::of(palette());
    QPainter painter(this);
    painter.setFont(nameFont());
    painter.setPen(colours.dim);
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignTop, m_name.toUpper());
    painter.setFont(valueFont());
    painter.setPen(m_isWarning ? colours.warning : colours.text);
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignBottom, m_value);
}

} // namespace kestrel
