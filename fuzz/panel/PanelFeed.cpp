#include "fuzz/panel/PanelFeed.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <vector>

namespace kestrel {

namespace {
InterfaceImage plain(QSize size, const QColor& colour)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(colour);
    return InterfaceImage(image);
}

// Made once: what is painted matters less than that there is something to paint.
InterfaceImage pictureNamed(const QString& name)
{
    static const InterfaceImage back = plain({ 782, 220 }, Qt::black);
    static const InterfaceImage text = plain({ 8, 128 * 13 }, QColor(255, 255, 255, 100));
    static const InterfaceImage knob = plain({ 67, 128 * 67 }, QColor(255, 0, 0, 200));
    static const InterfaceImage lamp = plain({ 67, 2 * 67 }, QColor(0, 255, 0, 200));
    if (name == QLatin1String("back"))
        return back;
    if (name == QLatin1String("text"))
        return text;
    return name == QLatin1String("knob67x67") ? knob : lamp;
}
} // namespace

PanelFeed::PanelFeed()
    : m_view(QRect(0, 0, 782, 220), &pictureNamed)
{
}

std::string PanelFeed::run(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const std::size_t length = std::min<std::size_t>(bytes.front(), bytes.size() - 1);
        feed(bytes.subspan(1, length));
        if (auto text = difference(); !text.empty())
            return text;
        bytes = bytes.subspan(1 + length);
    }
    paint();
    return {};
}

void PanelFeed::feed(std::span<const std::uint8_t> message)
{
    // In memory of its own, so that a byte read beyond its end is noticed.
    const std::vector<std::uint8_t> data(message.begin(), message.end());
    if (!data.empty() && data[0] == 0xF0) {
        m_view.updateZone(data, false);
        expectDisplay(data);
    } else {
        m_view.updateDSParea(data, false);
        expectDSP(data);
    }
}

void PanelFeed::expectDisplay(std::span<const std::uint8_t> b)
{
    const std::size_t n = b.size();
    if (n < 8 || b[6] != 0x12)
        return;
    for (std::size_t p = 7; p < n && b[p] != 0xF7; p += 11) {
        if (b[p] > 9 || p + 10 >= n)
            continue;
        for (std::size_t k = 0; k < 10; ++k)
            m_zones[b[p]][k] = b[p + 1 + k];
    }
}

void PanelFeed::expectDSP(std::span<const std::uint8_t> b)
{
    const std::size_t n = b.size();
    if (n < 2)
        return;
    const unsigned low = b[1] % 16u;
    if (low >= 8 && low <= 11) {
        for (std::size_t j = 1; j + 1 < n; j += 2)
            m_knobs[low - 8] = b[j + 1];
    } else if (b[1] == 0x0C || b[1] == 0x2C) {
        for (std::size_t j = b[1] == 0x0C ? 4 : 2; j < n; j += 2) {
            const int lamp = b[j] >= 64 ? b[j] - 64 : b[j];
            if (lamp < 8)
                m_switches[static_cast<std::size_t>(lamp)] = b[j];
        }
    }
}

void PanelFeed::paint()
{
    QImage image(m_view.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    m_view.drawRect(painter, m_view.rect());
}

std::string PanelFeed::difference() const
{
    if (m_view.myZonesArray() && *m_view.myZonesArray() != m_zones)
        return "the display differs";
    if (*m_view.myKnobArray() != m_knobs)
        return "the knobs differ";
    if (*m_view.mySwitchArray() != m_switches)
        return "the lamps differ";
    return {};
}

} // namespace kestrel
