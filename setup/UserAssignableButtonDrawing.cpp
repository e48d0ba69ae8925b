// Draws the face of the button: its picture and its text.

#include "common/KestrelUtilities.h"
#include "setup/TitleLayout.h"
#include "setup/UserAssignableButton.h"
#include "shortcut/ControlDrawing.h"

#include <QFontMetricsF>
#include <QPainter>

namespace kestrel {

namespace {

constexpr double NameMargins = 12;
constexpr double LeftMargin = 5; // for names of more than one line
constexpr double CornerRadius = 7;

struct KeyImages {
    InterfaceImage UserAssignableButtonOnImage;
    InterfaceImage UserAssignableButtonOffImage;
};

const KeyImages& keyImages()
{
    static const KeyImages keyImages { KestrelUtilities::imageAtPath(QStringLiteral(
                                           "UserAssignable/User_Assignable_Button/on")),
        KestrelUtilities::imageAtPath(
            QStringLiteral("UserAssignable/User_Assignable_Button/off")) };
    return keyImages;
}

} // namespace

void UserAssignableButton::paintEvent(QPaintEvent*)
{
    drawRect();
}

void UserAssignableButton::drawRect()
{
    QPainter painter(this);
    drawImage(painter,
        state() == State::On ? keyImages().UserAssignableButtonOnImage
                             : keyImages().UserAssignableButtonOffImage,
        {});
    drawTitleButton(painter);
    m_marks.draw(painter, width());
    if (hasFocus())
        drawFocusRing(painter, rect(), CornerRadius);
}

void UserAssignableButton::drawTitleButton(QPainter& painter)
{
    if (!m_uniqueName.isEmpty())
        drawName(painter);
    else if (m_shortcutArray)
        drawShortcuts(painter);
}

void UserAssignableButton::drawShortcuts(QPainter& painter)
{
    const int lineCount = getEntryShortcutNum();
    double top = TitleLayout::firstLineTop(lineCount, height());
    if (lineCount == 0) {
        drawLine(painter, { 0, top }, QStringLiteral("U%1").arg(m_tag + 1));
        return;
    }
    for (std::size_t record = 0; record < ShortcutRecordCount; ++record) {
        const QString text = shortcutText(record);
        if (text.isEmpty())
            continue;
        drawLine(painter, { 0, top }, text);
        top += TitleLayout::lineHeight(lineCount, height());
    }
}

void UserAssignableButton::drawName(QPainter& painter)
{
    const QFontMetricsF metrics(createFontAttribute().font);
    const auto measure
        = [&](QStringView text) { return metrics.horizontalAdvance(text.toString()); };
    const QStringView name = QStringView(m_uniqueName).left(MostShownUnits);
    const double usableWidth = width() - NameMargins;
    const int lineCount = TitleLayout::lineCount(measure(name), usableWidth);
    const auto lines = TitleLayout::brokenName(
        name, usableWidth, std::min(lineCount, TitleLayout::MostLines), measure);
    if (lines.empty())
        return;

    const bool fitsOnOneLine = lines.front().size() == name.size();
    m_attributes.alignment = fitsOnOneLine ? Qt::AlignHCenter : Qt::AlignLeft;
    double top = TitleLayout::firstLineTop(lineCount, height());
    for (const QStringView line : lines) {
        drawLine(painter, { fitsOnOneLine ? 0 : LeftMargin, top }, line);
        top += TitleLayout::lineHeight(lineCount, height());
    }
    m_attributes.alignment = Qt::AlignHCenter;
}

// Qt::AlignAbsolute keeps the text on its side in a right-to-left interface as well.
void UserAssignableButton::drawLine(QPainter& painter, QPointF topLeft, QStringView text) const
{
    painter.setPen(m_attributes.foreground);
    const QRectF place(topLeft, QSizeF(size()));
    const double usableWidth = width() - NameMargins;
    const QString whole = text.left(MostShownUnits).toString();
    painter.setFont(tightened(m_attributes.font, whole, usableWidth));
    const QString shown
        = QFontMetricsF(painter.font()).elidedText(whole, Qt::ElideRight, usableWidth);
    painter.drawText(place,
        static_cast<int>(m_attributes.alignment) | Qt::AlignTop | Qt::AlignAbsolute
            | Qt::TextSingleLine,
        shown);
}

} // namespace kestrel
