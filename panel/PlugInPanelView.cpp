#include "panel/PlugInPanelView.h"

#include "panel/PanelAnnouncer.h"

#include <QPaintEvent>
#include <QPainter>

#include <utility>

namespace kestrel {

const Clock& PlugInPanelView::steadyClock()
{
    static const SteadyClock clock;
    return clock;
}

PlugInPanelView::PlugInPanelView(
    const QRect& frame, const ImageLoader& imageNamed, const Clock& clock)
    : m_passingSize(*this, clock)
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
            stale += touchedByZone(zone);
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
            stale += touchedBySwitch(lamp);
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

void PlugInPanelView::resizeEvent(QResizeEvent* event)
{
    m_passingSize.sizeChanged();
    QWidget::resizeEvent(event);
}

} // namespace kestrel
