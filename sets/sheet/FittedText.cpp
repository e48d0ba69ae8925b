#include "sets/sheet/FittedText.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <algorithm>

namespace kestrel {

namespace {
constexpr int SizeStep = 5;
// No place has room for more. Measuring more would cost time for nothing.
constexpr qsizetype MostUnits = 400;

struct Line {
    qsizetype start = 0;
    QString text;
};

std::vector<Line> broken(
    const QString& text, const QFont& font, double width, QTextOption::WrapMode mode)
{
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(mode);
    layout.setTextOption(option);
    layout.beginLayout();
    std::vector<Line> lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines.push_back(
            { line.textStart(), text.mid(line.textStart(), line.textLength()).trimmed() });
    }
    layout.endLayout();
    return lines;
}

QStringList textsOf(const std::vector<Line>& lines)
{
    QStringList texts;
    for (const Line& line : lines)
        texts.append(line.text);
    return texts;
}

bool areInside(const QStringList& lines, const QFont& font, double width)
{
    const QFontMetricsF metrics(font);
    return std::all_of(lines.begin(), lines.end(), [&](const QString& line) {
        return std::max(metrics.horizontalAdvance(line), metrics.boundingRect(line).width())
            <= width;
    });
}
} // namespace

FittedText FittedText::of(const QString& whole, QFont font, const Limits& limits)
{
    const QString text = whole.left(MostUnits);
    for (int size = limits.largest; size >= limits.smallest; size -= SizeStep) {
        font.setPixelSize(size);
        const QStringList lines = textsOf(broken(text, font, limits.width, QTextOption::WordWrap));
        if (lines.size() <= limits.lines && areInside(lines, font, limits.width))
            return { lines, font };
    }
    auto lines = broken(text, font, limits.width, QTextOption::WrapAtWordBoundaryOrAnywhere);
    lines.resize(std::min(lines.size(), static_cast<std::size_t>(limits.lines)));
    lines.back().text = QFontMetricsF(font).elidedText(
        text.mid(lines.back().start), Qt::ElideRight, limits.width);
    return { textsOf(lines), font };
}

} // namespace kestrel
