#include "sets/sheet/KeySheet.h"

#include "sets/SetWords.h"
#include "sets/sheet/FittedText.h"

#include <QFontMetricsF>

namespace kestrel {

namespace {
// The keys lie in three rows of four, as in the setup window.
constexpr int Columns = 4;
constexpr int Rows = UserAssignFile::ButtonCount / Columns;

constexpr double Margin = 400; // of the page
constexpr double Gap = 160; // between keys
constexpr double HeadingHeight = 420;
constexpr double Inset = 110; // from the edge of a key to its texts
constexpr double NumberHeight = 150;
constexpr double NameShare = 0.40; // of what is left of the height
constexpr int Grey = 90;

QFont baseFont(int size, QFont::Weight weight)
{
    QFont font;
    font.setFamilies({ QStringLiteral("Helvetica Neue"), QStringLiteral("DejaVu Sans") });
    font.setStyleHint(QFont::SansSerif);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

// The texts of lines that stand in the middle of the place.
void addLines(std::vector<KeySheet::Text>& texts, const FittedText& fitted, const QRectF& place)
{
    const QFontMetricsF metrics(fitted.font);
    const double height = metrics.height() * static_cast<double>(fitted.lines.size());
    double baseline = place.center().y() - height / 2 + metrics.ascent();
    for (const QString& line : fitted.lines) {
        const double left = place.center().x() - metrics.horizontalAdvance(line) / 2;
        texts.push_back({ line, fitted.font, { left, baseline }, place });
        baseline += metrics.height();
    }
}
} // namespace

KeySheet::KeySheet(const UserAssignFile& set, const QString& heading, Paper paper)
    : m_paper(paper)
    , m_heading(SetWords::printable(heading).simplified())
{
    const QRectF place(Margin, Margin, size().width() - 2 * Margin, HeadingHeight * 0.7);
    const FittedText fitted
        = FittedText::of(m_heading, baseFont(180, QFont::Bold), { place.width(), 1, 180, 100 });
    const double ascent = QFontMetricsF(fitted.font).ascent();
    m_texts.push_back(
        { fitted.lines.value(0), fitted.font, place.topLeft() + QPointF(0, ascent), place });
    for (int number = 1; number <= UserAssignFile::ButtonCount; ++number)
        addKey(set, number);
}

QSizeF KeySheet::size() const
{
    constexpr double Millimetres = 25.4;
    return m_paper == Paper::A4
        ? QSizeF(297 / Millimetres * UnitsPerInch, 210 / Millimetres * UnitsPerInch)
        : QSizeF(11 * UnitsPerInch, 8.5 * UnitsPerInch);
}

void KeySheet::addKey(const UserAssignFile& set, int number)
{
    const QRectF area(Margin, Margin + HeadingHeight, size().width() - 2 * Margin,
        size().height() - 2 * Margin - HeadingHeight);
    const double width = (area.width() - (Columns - 1) * Gap) / Columns;
    const double height = (area.height() - (Rows - 1) * Gap) / Rows;
    const int column = (number - 1) % Columns;
    const int row = (number - 1) / Columns;
    const QRectF key(
        area.x() + column * (width + Gap), area.y() + row * (height + Gap), width, height);
    m_keys.push_back(key);

    const QRectF inside = key.adjusted(Inset, Inset, -Inset, -Inset);
    const QFont font = baseFont(90, QFont::Normal);
    m_texts.push_back({ QString::number(number), font,
        inside.topLeft() + QPointF(0, QFontMetricsF(font).capHeight()), inside, Grey });
    const QRectF below = inside.adjusted(0, NumberHeight, 0, 0);
    const QString name
        = SetWords::printable(set.getShortcutTitle(number).value_or(QString())).simplified();
    // Without a name, the shortcuts stand in the middle.
    const double nameHeight = name.isEmpty() ? 0 : below.height() * NameShare;
    addName(name, { below.topLeft(), QSizeF(below.width(), nameHeight) });
    addShortcuts(set.getSwitchShortcut(number), below.adjusted(0, nameHeight, 0, 0));
}

void KeySheet::addName(const QString& name, const QRectF& place)
{
    if (!name.isEmpty())
        addLines(m_texts,
            FittedText::of(name, baseFont(150, QFont::Bold), { place.width(), 2, 150, 90 }), place);
}

// One line for each shortcut, all of one size.
void KeySheet::addShortcuts(const ButtonEntry& entry, const QRectF& place)
{
    QStringList texts;
    for (std::size_t record = 0; entry && record < ShortcutRecordCount; ++record) {
        if (const QString text = SetWords::shortcut(*entry, record); !text.isEmpty())
            texts.append(text);
    }
    FittedText all { {}, baseFont(130, QFont::Normal) };
    for (const QString& text : texts) {
        const int size = all.font.pixelSize();
        all.font = FittedText::of(text, all.font, { place.width(), 1, size, 90 }).font;
    }
    for (const QString& text : texts)
        all.lines += FittedText::of(
            text, all.font, { place.width(), 1, all.font.pixelSize(), all.font.pixelSize() })
                         .lines;
    addLines(m_texts, all, place);
}

} // namespace kestrel
