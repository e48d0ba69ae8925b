#include "common/KestrelUtilities.h"
#include "panel/KnobRing.h"
#include "panel/PanelCanvas.h"
#include "panel/PlugInPanelView.h"

// How the panel is drawn, and where its items lie.
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

// A piece of a picture and its place on the panel, both from the bottom left.
struct PlugInPanelView::Piece {
    const InterfaceImage& image;
    QRectF source;
    QRectF destination;
};

void PlugInPanelView::drawRect(QPainter& painter, const QRect& dirtyRect)
{
    m_painted.paint(painter, rect(), dirtyRect,
        { { m_myZonesArray, *m_myKnobArray, *m_mySwitchArray }, m_imageBack.isOpaque(),
            m_passingSize.isPassing(),
            [this](const PanelState& shown) { return changedSince(shown); },
            [this](PanelCanvas& canvas) { drawAll(canvas); } });
    m_passingSize.painted();
}

void PlugInPanelView::drawAll(PanelCanvas& canvas)
{
    // SourceIn paints only onto opaque pixels. An opaque picture replaces them all.
    if (!m_imageBack.isOpaque())
        canvas.fill(Ground);
    canvas.draw(m_imageBack, QRectF(0, 0, PanelLayout::Width, PanelLayout::Height), rect(),
        QPainter::CompositionMode_SourceIn);
    drawLight(canvas);
    drawString(canvas, rect());
    drawSwitch(canvas);
    drawKnob(canvas);
}

// Light falls on the background alone: whatever stands before it is lit itself or stands out.
void PlugInPanelView::drawLight(PanelCanvas& canvas)
{
    forEachCharacter(canvas, [&](const QRectF& cell, std::uint8_t chara) {
        const Piece piece = character(cell, chara);
        canvas.drawLight(piece.image, piece.source, piece.destination);
    });
    for (std::size_t i = 0; i < PanelLayout::Switches; ++i) {
        const Piece piece = lampKey(i, PanelLayout::isLit((*m_mySwitchArray)[i]));
        canvas.drawLight(piece.image, piece.source, piece.destination);
    }
}

void PlugInPanelView::drawString(PanelCanvas& canvas, const QRect&)
{
    forEachCharacter(canvas,
        [&](const QRectF& cell, std::uint8_t chara) { drawCharacter(canvas, cell, chara); });
}

// Leaves out the characters of which nothing would be painted.
template <typename Do>
void PlugInPanelView::forEachCharacter(const PanelCanvas& canvas, const Do& action) const
{
    for (std::size_t zone = 0; m_myZonesArray && zone < PanelLayout::DrawnZones; ++zone) {
        const QRectF first = litPlace(character(PanelLayout::cell(zone, 0), 0));
        const QRectF last
            = litPlace(character(PanelLayout::cell(zone, PanelLayout::ZoneLength - 1), 0));
        if (!canvas.touches(first | last))
            continue;
        const double pitch = (last.x() - first.x()) / (PanelLayout::ZoneLength - 1);
        for (std::size_t k = 0; k < PanelLayout::ZoneLength; ++k) {
            if (canvas.touches(first.translated(static_cast<double>(k) * pitch, 0)))
                action(PanelLayout::cell(zone, k), (*m_myZonesArray)[zone][k]);
        }
    }
}

PlugInPanelView::Piece PlugInPanelView::character(const QRectF& cell, std::uint8_t chara) const
{
    using PanelLayout::CellHeight;
    const double atlasWidth = m_imageAscii.width();
    const auto code = static_cast<std::int8_t>(chara); // negative codes lie above the atlas
    const auto [width, height] = drawRatio(true);
    return { m_imageAscii, { 0, (LastCode - code) * CellHeight, atlasWidth, CellHeight },
        { cell.x() * width, cell.y() * height, atlasWidth * width, CellHeight * height } };
}

void PlugInPanelView::drawCharacter(PanelCanvas& canvas, const QRectF& rect, std::uint8_t chara)
{
    const Piece piece = character(rect, chara);
    canvas.draw(piece.image, piece.source, piece.destination, QPainter::CompositionMode_SourceOver);
}

PlugInPanelView::Piece PlugInPanelView::lampKey(std::size_t lamp, bool isLit) const
{
    const double side = m_imageSwitchRed.width();
    const auto [width, height] = drawRatio(false);
    const auto& [colour, left] = PanelLayout::SwitchTable[lamp];
    return { lampImage(colour), { 0, isLit ? 0 : side, side, side },
        { left * width, PanelLayout::SwitchBottom * height, side * width, side * width } };
}

void PlugInPanelView::drawSwitch(PanelCanvas& canvas)
{
    for (std::size_t i = 0; i < PanelLayout::Switches; ++i) {
        const Piece piece = lampKey(i, PanelLayout::isLit((*m_mySwitchArray)[i]));
        canvas.draw(
            piece.image, piece.source, piece.destination, QPainter::CompositionMode_SourceOver);
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

QRegion PlugInPanelView::changedSince(const PanelState& shown) const
{
    QRegion changed;
    if (shown.zones.has_value() != m_myZonesArray.has_value())
        return rect();
    for (std::size_t zone = 0; m_myZonesArray && zone < PanelLayout::DrawnZones; ++zone) {
        for (std::size_t k = 0; k < PanelLayout::ZoneLength; ++k) {
            if ((*shown.zones)[zone][k] != (*m_myZonesArray)[zone][k])
                changed += touched(character(PanelLayout::cell(zone, k), 0));
        }
    }
    for (std::size_t i = 0; i < PanelLayout::Knobs; ++i) {
        if (shown.knobs[i] != (*m_myKnobArray)[i])
            changed += knobRect(i);
    }
    for (std::size_t i = 0; i < PanelLayout::Switches; ++i) {
        if (PanelLayout::isLit(shown.switches[i]) != PanelLayout::isLit((*m_mySwitchArray)[i]))
            changed += touched(lampKey(i, true));
    }
    return changed;
}

// The place of a piece with its light.
QRectF PlugInPanelView::litPlace(const Piece& piece)
{
    return piece.destination
        | PanelCanvas::lightPlace(piece.image, piece.source, piece.destination);
}

QRect PlugInPanelView::touched(const Piece& piece) const
{
    return PanelCanvas::covered(litPlace(piece), rect());
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

QRect PlugInPanelView::touchedByZone(std::size_t zone) const
{
    return touched(character(PanelLayout::cell(zone, 0), 0))
        | touched(character(PanelLayout::cell(zone, PanelLayout::ZoneLength - 1), 0));
}

QRect PlugInPanelView::touchedBySwitch(std::size_t lamp) const
{
    return touched(lampKey(lamp, true));
}

QRect PlugInPanelView::squareRect(double left, double bottom, double side) const
{
    const auto [width, height] = drawRatio(false);
    return PanelCanvas::covered(
        { left * width, bottom * height, side * width, side * width }, rect());
}

} // namespace kestrel
