#include "panel/PlugInPanelView.h"

#include "common/KestrelUtilities.h"
#include "panel/KnobRing.h"
#include "panel/PanelAnnouncer.h"
#include "panel/PanelCanvas.h"
#include "panel/PanelLayout.h"

#include <QPaintEvent>
#include <QPainter>

#include <utility>

namespace kestrel {

namespace {
constexpr double LastCode = 127; // the lowest cell or frame of a picture shows it

// The colour of the panel where no picture covers it.
constexpr QColor Ground(16, 17, 18);
} // namespace

struct PlugInPanelView::Ratio {
    double width = 0;
    double height = 0;
};

PlugInPanelView::PlugInPanelView(const QRect& frame, const ImageLoader& imageNamed)
{
    setGeometry(frame);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    prepareAttributes();
    initMessageArry();
    m_imageBack = imageNamed(QStringLiteral("back"));
    m_imageKnob = imageNamed(QStringLiteral("knob67x67"));
    m_imageAscii = imageNamed(QStringLiteral("text"));
    m_imageSwitchGreen = imageNamed(QStringLiteral("btn_green"));
    m_imageSwitchRed = imageNamed(QStringLiteral("btn_red"));
    m_imageSwitchOrange = imageNamed(QStringLiteral("btn_orange"));
    new PanelAnnouncer(*this);
}

// Does nothing: the characters come from a picture and need no text attributes.
void PlugInPanelView::prepareAttributes() { }

void PlugInPanelView::setupMessageArry()
{
    if (m_myZonesArray)
        return;
    m_myZonesArray.emplace(); // every code is 0, which has a cell in the atlas too
    m_isAllStale = true;
}

void PlugInPanelView::initMessageArry()
{
    if (m_myZonesArray) {
        m_myZonesArray.emplace();
        m_isAllStale = true;
    }
    if (!m_mySwitchArray)
        m_mySwitchArray.emplace();
    if (!m_myKnobArray)
        m_myKnobArray.emplace();
}

void PlugInPanelView::updateZone(std::span<const std::uint8_t> data, bool windowVisible)
{
    prepareAttributes();
    setupMessageArry();
    const auto stored = storeDisplayMessage(data, *m_myZonesArray);
    if (!windowVisible || stored.none())
        return;
    QRegion stale;
    for (std::size_t zone = 0; zone < PanelLayout::DrawnZones; ++zone) {
        if (stored[zone])
            stale += zoneRect(zone);
    }
    refresh(stale);
}

void PlugInPanelView::updateDSParea(std::span<const std::uint8_t> data, bool windowVisible)
{
    const auto change = storeDSPMessage(data, *m_myKnobArray, *m_mySwitchArray);
    if (!windowVisible || !change)
        return;
    QRegion stale;
    for (std::size_t knob = 0; knob < PanelLayout::Knobs; ++knob) {
        if (change->knobs[knob])
            stale += knobRect(knob);
    }
    for (std::size_t lamp = 0; lamp < PanelLayout::Switches; ++lamp) {
        if (change->switches[lamp])
            stale += switchRect(lamp);
    }
    refresh(stale);
}

void PlugInPanelView::setNeedsDisplay()
{
    refresh({});
}

// Repaints the whole panel if `stale` is empty: a message may store only values that are not drawn.
void PlugInPanelView::refresh(const QRegion& stale)
{
    const bool isAllStale = std::exchange(m_isAllStale, false) || stale.isEmpty();
    m_refresh.request(isAllStale ? QRegion(rect()) : stale);
    emit contentChanged();
}

void PlugInPanelView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    drawRect(painter, event->rect());
    m_refresh.painted();
}

void PlugInPanelView::drawRect(QPainter& painter, const QRect& dirtyRect)
{
    PanelCanvas canvas(painter, rect(), dirtyRect, m_sprites);
    // SourceIn paints only onto opaque pixels. An opaque picture replaces them all.
    if (!m_imageBack.isOpaque())
        canvas.fill(Ground);
    canvas.draw(m_imageBack, QRectF(0, 0, PanelLayout::Width, PanelLayout::Height), rect(),
        QPainter::CompositionMode_SourceIn);
    drawString(canvas, dirtyRect);
    drawSwitch(canvas);
    drawKnob(canvas);
}

void PlugInPanelView::drawString(PanelCanvas& canvas, const QRect&)
{
    if (!m_myZonesArray)
        return;
    for (std::size_t zone = 0; zone < PanelLayout::DrawnZones; ++zone) {
        for (std::size_t k = 0; k < PanelLayout::ZoneLength; ++k)
            drawCharacter(canvas, PanelLayout::cell(zone, k), (*m_myZonesArray)[zone][k]);
    }
}

void PlugInPanelView::drawCharacter(PanelCanvas& canvas, const QRectF& rect, std::uint8_t chara)
{
    using PanelLayout::CellHeight;
    const double atlasWidth = m_imageAscii.width();
    const auto code = static_cast<std::int8_t>(chara); // negative codes lie above the atlas
    const auto [width, height] = drawRatio(true);
    canvas.draw(m_imageAscii, { 0, (LastCode - code) * CellHeight, atlasWidth, CellHeight },
        { rect.x() * width, rect.y() * height, atlasWidth * width, CellHeight * height },
        QPainter::CompositionMode_SourceOver);
}

void PlugInPanelView::drawSwitch(PanelCanvas& canvas)
{
    const double side = m_imageSwitchRed.width();
    const auto [width, height] = drawRatio(false);
    for (std::size_t i = 0; i < PanelLayout::Switches; ++i) {
        const auto& [lamp, left] = PanelLayout::SwitchTable[i];
        const bool lit = PanelLayout::isLit((*m_mySwitchArray)[i]);
        canvas.draw(lampImage(lamp), { 0, lit ? 0 : side, side, side },
            { left * width, PanelLayout::SwitchBottom * height, side * width, side * width },
            QPainter::CompositionMode_SourceOver);
    }
}

void PlugInPanelView::drawKnob(PanelCanvas& canvas)
{
    const double side = m_imageKnob.width();
    const auto [width, height] = drawRatio(false);
    for (std::size_t i = 0; i < PanelLayout::Knobs; ++i) {
        const KnobRing ring((*m_myKnobArray)[i]);
        if (!ring.hasPicture())
            continue;
        canvas.draw(m_imageKnob, { 0, (LastCode - ring.frame()) * side, side, side },
            { PanelLayout::knobLeft(i) * width, PanelLayout::KnobBottom * height, side * width,
                side * width },
            QPainter::CompositionMode_SourceOver);
    }
}

// The view fills the window's content, so its rectangle gives the ratio.
PlugInPanelView::Ratio PlugInPanelView::drawRatio(bool viewDisplay) const
{
    Ratio ratio;
    KestrelUtilities::getDrawRatio(
        QRectF(rect()), m_imageBack, ratio.width, ratio.height, viewDisplay);
    return ratio;
}

const InterfaceImage& PlugInPanelView::lampImage(PanelLayout::Lamp lamp) const
{
    switch (lamp) {
    case PanelLayout::Lamp::Red:
        return m_imageSwitchRed;
    case PanelLayout::Lamp::Orange:
        return m_imageSwitchOrange;
    case PanelLayout::Lamp::Green:
        return m_imageSwitchGreen;
    }
    return m_imageSwitchRed;
}

QRect PlugInPanelView::zoneRect(std::size_t zone) const
{
    const auto [width, height] = drawRatio(true);
    const QRectF first = PanelLayout::cell(zone, 0);
    const double right
        = PanelLayout::cell(zone, PanelLayout::ZoneLength - 1).x() + m_imageAscii.width();
    return PanelCanvas::covered({ first.x() * width, first.y() * height,
                                    (right - first.x()) * width, first.height() * height },
        rect());
}

QRect PlugInPanelView::rowRect(std::size_t row) const
{
    const std::size_t first = row * PanelLayout::ZonesPerRow;
    return zoneRect(first) | zoneRect(first + PanelLayout::ZonesPerRow - 1);
}

QRect PlugInPanelView::knobRect(std::size_t knob) const
{
    return squareRect(PanelLayout::knobLeft(knob), PanelLayout::KnobBottom, m_imageKnob.width());
}

QRect PlugInPanelView::switchRect(std::size_t lamp) const
{
    return squareRect(
        PanelLayout::SwitchTable[lamp].left, PanelLayout::SwitchBottom, m_imageSwitchRed.width());
}

QRect PlugInPanelView::squareRect(double left, double bottom, double side) const
{
    const auto [width, height] = drawRatio(false);
    return PanelCanvas::covered(
        { left * width, bottom * height, side * width, side * width }, rect());
}

} // namespace kestrel
