#pragma once

#include <QStringView>
#include <QTextBoundaryFinder>

#include <vector>

// Places the lines of text on a user-assignable button and breaks a name into lines. Lengths are in
// units. `measure` returns the drawn width of a text.
namespace kestrel::TitleLayout {

inline constexpr int MostLines = 4;

[[nodiscard]] inline double lineHeight(int lineCount, double height)
{
    if (lineCount == 2)
        return height / 4;
    return height / (lineCount < MostLines ? 5 : 6);
}

[[nodiscard]] inline double firstLineTop(int lineCount, double height)
{
    return (lineCount < 2 ? 2 : 1) * lineHeight(lineCount, height);
}

// The number of lines that a name of that width needs. The usable width is at least 1.
[[nodiscard]] inline int lineCount(double nameWidth, double usableWidth)
{
    const bool hasRest = static_cast<int>(nameWidth) % static_cast<int>(usableWidth) != 0;
    return static_cast<int>(nameWidth / usableWidth) + (hasRest ? 1 : 0);
}

// Returns the first lines of the name, at most `mostLines`. Lines break between grapheme clusters.
// Each line holds at least one, even if that one is too wide.
template <typename Measure>
[[nodiscard]] std::vector<QStringView> brokenName(
    QStringView name, double usableWidth, int mostLines, Measure measure)
{
    std::vector<QStringView> lines;
    QTextBoundaryFinder characters(
        QTextBoundaryFinder::Grapheme, name.data(), name.size(), nullptr, 0);
    qsizetype start = 0;
    while (start < name.size() && static_cast<int>(lines.size()) < mostLines) {
        characters.setPosition(start);
        qsizetype lastBegin = start;
        qsizetype end = characters.toNextBoundary();
        double width = measure(name.sliced(start, end - start));
        while (width < usableWidth && end < name.size()) {
            lastBegin = end;
            end = characters.toNextBoundary();
            width = measure(name.sliced(start, end - start));
        }
        if (width > usableWidth && lastBegin > start)
            end = lastBegin;
        lines.push_back(name.sliced(start, end - start));
        start = end;
    }
    return lines;
}

} // namespace kestrel::TitleLayout
