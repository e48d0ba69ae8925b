#include "bench/parts/PlainPanel.h"

#include <cstring>

namespace kestrel::bench {

namespace {
constexpr std::size_t BytesPerPixel = 4;

std::uint32_t blended(std::uint32_t over, std::uint32_t under)
{
    const std::uint32_t rest = 255 - (over >> 24);
    std::uint32_t even = (under & 0x00FF00FFu) * rest + 0x00800080u;
    even = ((even + ((even >> 8) & 0x00FF00FFu)) >> 8) & 0x00FF00FFu;
    std::uint32_t odd = ((under >> 8) & 0x00FF00FFu) * rest + 0x00800080u;
    odd = (odd + ((odd >> 8) & 0x00FF00FFu)) & 0xFF00FF00u;
    return over + (even | odd);
}
} // namespace

PlainPanel::PlainPanel(const PlugInPanelView& view, int density)
    : m_view(view)
    , m_density(density)
{
}

const QImage& PlainPanel::picture(const InterfaceImage& image) const
{
    return m_density == 2 ? image.doubled() : image.single();
}

void PlainPanel::copyBackground(QImage& target) const
{
    const QImage& back = picture(m_view.imageBack());
    for (int y = 0; y < target.height(); ++y) {
        std::memcpy(target.scanLine(y), back.constScanLine(y),
            static_cast<std::size_t>(target.width()) * BytesPerPixel);
    }
}

void PlainPanel::paint(QImage& target) const
{
    copyBackground(target);
    for (std::size_t zone = 0; zone < PanelLayout::DrawnZones; ++zone) {
        for (std::size_t k = 0; k < PanelLayout::ZoneLength; ++k) {
            const QRect place = PanelLayout::cell(zone, k).toRect();
            blit(target, m_view.imageAscii(), (*m_view.myZonesArray())[zone][k], place.size(),
                place.left(), place.top());
        }
    }
    const QSize square(67, 67);
    for (std::size_t i = 0; i < PanelLayout::Switches; ++i) {
        const auto& [lamp, left] = PanelLayout::SwitchTable[i];
        const bool lit = PanelLayout::isLit((*m_view.mySwitchArray())[i]);
        const InterfaceImage& image = lamp == PanelLayout::Lamp::Red ? m_view.imageSwitchRed()
            : lamp == PanelLayout::Lamp::Orange                      ? m_view.imageSwitchOrange()
                                                                     : m_view.imageSwitchGreen();
        blit(target, image, lit ? 1 : 0, square, static_cast<int>(left), 38);
    }
    for (std::size_t i = 0; i < PanelLayout::Knobs; ++i) {
        blit(target, m_view.imageKnob(), (*m_view.myKnobArray())[i], square,
            static_cast<int>(PanelLayout::knobLeft(i)), 73);
    }
}

// `cell` counts from the top of the picture, `left` and `bottom` place it on the panel.
void PlainPanel::blit(QImage& target, const InterfaceImage& image, int cell, QSize cellSize,
    int left, int bottom) const
{
    const QImage& from = picture(image);
    const int width = cellSize.width() * m_density;
    const int height = cellSize.height() * m_density;
    const int top = target.height() - bottom * m_density - height;
    for (int y = 0; y < height; ++y) {
        const auto* source
            = reinterpret_cast<const std::uint32_t*>(from.constScanLine(cell * height + y));
        auto* place = reinterpret_cast<std::uint32_t*>(target.scanLine(top + y)) + left * m_density;
        if (image.isOpaque()) {
            std::memcpy(place, source, static_cast<std::size_t>(width) * BytesPerPixel);
            continue;
        }
        for (int x = 0; x < width; ++x)
            place[x] = blended(source[x], place[x]);
    }
}

} // namespace kestrel::bench
