#include "tests/panel/look/DisplayFigures.h"

#include "artwork/NearestPixel.h"
#include "panel/PanelCanvas.h"
#include "tests/panel/look/Luminance.h"
#include "tests/panel/look/NaturalSize.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::test {

using artwork::nearestPixel;

namespace {
constexpr double BrightestShare = 0.05;

using Bytes = std::vector<std::uint8_t>;

void show(PlugInPanelView& view, std::uint8_t zone, std::string_view text)
{
    Bytes message { 0xF0, 0x00, 0x00, 0x66, 0x05, 0x00, 0x12, zone };
    for (std::size_t k = 0; k < PanelLayout::ZoneLength; ++k)
        message.push_back(k < text.size() ? static_cast<std::uint8_t>(text[k]) : ' ');
    message.push_back(0xF7);
    view.updateZone(message, false);
}

// A panel and its picture, for measuring in device pixels.
class Painting {
public:
    Painting(PlugInPanelView& view, double density)
        : m_image(paintedAt(view, density))
        , m_horizontal(m_image.width() / PanelLayout::Width)
        , m_vertical(m_image.height() / PanelLayout::Height)
    {
    }

    // The device pixels of a character's cell, as the panel rounds them.
    [[nodiscard]] QRect cell(std::size_t zone, std::size_t k) const
    {
        const QRectF units = PanelCanvas::fromBottomLeft(
            PanelLayout::cell(zone, k), QRectF(0, 0, PanelLayout::Width, PanelLayout::Height));
        return { QPoint(
                     nearestPixel(units.x() * m_horizontal), nearestPixel(units.y() * m_vertical)),
            QSize(nearestPixel(units.width() * m_horizontal),
                nearestPixel(units.height() * m_vertical)) };
    }

    [[nodiscard]] double luminanceAt(int x, int y) const { return luminance(m_image.pixel(x, y)); }

    void collect(const QRect& area, std::vector<double>& values) const
    {
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                values.push_back(luminanceAt(x, y));
        }
    }

    // The brightest column of the area, or with `transposed` the brightest row.
    [[nodiscard]] double brightestLine(const QRect& area, bool transposed) const
    {
        double brightest = 0;
        const int lines = transposed ? area.height() : area.width();
        const int length = transposed ? area.width() : area.height();
        for (int line = 0; line < lines; ++line) {
            double sum = 0;
            for (int i = 0; i < length; ++i)
                sum += transposed ? luminanceAt(area.left() + i, area.top() + line)
                                  : luminanceAt(area.left() + line, area.top() + i);
            brightest = std::max(brightest, sum / length);
        }
        return brightest;
    }

    // The brightest row of each group of rows that have at least half the light of the brightest.
    [[nodiscard]] std::vector<double> brightGroups(const QRect& area) const
    {
        const double enough = brightestLine(area, true) / 2;
        std::vector<double> groups;
        bool isInside = false;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            const double light = brightestLine(QRect(area.left(), y, area.width(), 1), true);
            if (light >= enough && isInside)
                groups.back() = std::max(groups.back(), light);
            else if (light >= enough)
                groups.push_back(light);
            isInside = light >= enough;
        }
        return groups;
    }

private:
    QImage m_image;
    double m_horizontal;
    double m_vertical;
};

double median(std::vector<double>& values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double meanOfBrightest(std::vector<double>& values)
{
    std::sort(values.begin(), values.end());
    const auto count = static_cast<std::ptrdiff_t>(
        std::max(1.0, BrightestShare * static_cast<double>(values.size())));
    return std::accumulate(values.end() - count, values.end(), 0.0) / static_cast<double>(count);
}

// Calls `action` with the zone and the place in it of each character.
template <typename Do> void forEachCharacter(const Do& action)
{
    for (std::size_t zone = 0; zone < PanelLayout::DrawnZones; ++zone) {
        for (std::size_t k = 0; k < PanelLayout::ZoneLength; ++k)
            action(zone, k);
    }
}

double textContrast(PlugInPanelView& view, double density)
{
    showEditing(view);
    const Painting painting(view, density);
    std::vector<double> text;
    std::vector<double> glass;
    forEachCharacter([&](std::size_t zone, std::size_t k) {
        painting.collect(painting.cell(zone, k), text);
        if ((*view.myZonesArray())[zone][k] == ' ')
            painting.collect(painting.cell(zone, k), glass);
    });
    return contrastOf(meanOfBrightest(text), median(glass));
}

struct Range {
    double dimmest = 1;
    double brightest = 0;

    void include(double value)
    {
        dimmest = std::min(dimmest, value);
        brightest = std::max(brightest, value);
    }
    [[nodiscard]] double evenness() const { return brightest > 0 ? dimmest / brightest : 0; }
};

void showEverywhere(PlugInPanelView& view, const std::string& text)
{
    for (std::uint8_t zone = 0; zone < PanelLayout::DrawnZones; ++zone)
        show(view, zone, text);
}

// The columns of "H" without their ends, which its neighbours may light.
double stemEvenness(PlugInPanelView& view, double density)
{
    showEverywhere(view, "H|H|H|H|H|");
    const Painting painting(view, density);
    Range stems;
    forEachCharacter([&](std::size_t zone, std::size_t k) {
        QRect cell = painting.cell(zone, k);
        cell.setHeight(std::max(1, cell.height() * 3 / 13)); // above the bar of "H"
        if (k % 2 == 1)
            return stems.include(painting.brightestLine(cell, false));
        const int half = cell.width() / 2;
        stems.include(painting.brightestLine(cell.adjusted(0, 0, half - cell.width(), 0), false));
        stems.include(painting.brightestLine(cell.adjusted(half, 0, 0, 0), false));
    });
    return stems.evenness();
}

double barEvenness(PlugInPanelView& view, double density)
{
    showEverywhere(view, "EEEEEEEEEE");
    const Painting painting(view, density);
    Range bars;
    forEachCharacter([&](std::size_t zone, std::size_t k) {
        const QRect cell = painting.cell(zone, k);
        // All bars have the second to the fourth dot.
        const QRect inside(cell.left() + cell.width() / 4, cell.top(),
            std::max(1, cell.width() * 3 / 8), cell.height());
        const std::vector<double> found = painting.brightGroups(inside);
        bars.include(found.size() == 3 ? *std::min_element(found.begin(), found.end()) : 0);
        bars.include(*std::max_element(found.begin(), found.end()));
    });
    return bars.evenness();
}
} // namespace

QImage paintedAt(PlugInPanelView& view, double density)
{
    QImage image((QSizeF(view.size()) * density).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(density);
    QPainter painter(&image);
    view.drawRect(painter, view.rect());
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

void showEditing(PlugInPanelView& view)
{
    const std::array texts { "Threshold", "Ratio", "Attack", "Gain", "-24.0 dB", "4.0:1", "10 ms",
        "+6.5 dB" };
    for (std::size_t zone = 0; zone < texts.size(); ++zone)
        show(view, static_cast<std::uint8_t>(zone), texts[zone]);
    const std::array<std::uint8_t, 4> rings { 0x24, 0x46, 0x02, 0x18 };
    for (std::size_t i = 0; i < rings.size(); ++i)
        view.updateDSParea(Bytes { 0xB0, static_cast<std::uint8_t>(0x18 + i), rings[i] }, false);
    for (const int litLamp : { 0x41, 0x42, 0x46 })
        view.updateDSParea(Bytes { 0xB0, 0x2C, static_cast<std::uint8_t>(litLamp) }, false);
}

DisplayFigures displayFigures(int width, double density)
{
    PlugInPanelView view(QRect(QPoint(), naturalSize(width)));
    return { textContrast(view, density), stemEvenness(view, density), barEvenness(view, density) };
}

} // namespace kestrel::test
