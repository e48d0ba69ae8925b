#pragma once

#include "artwork/PanelPictures.h"
#include "panel/PaintedPanel.h"
#include "panel/PanelRefresh.h"
#include "panel/PassingSize.h"
#include "pictures/InterfaceImage.h"

#include <QVariantMap>
#include <QWidget>

#include <functional>

namespace kestrel {

class PanelCanvas;

// Mirrors the plug-in section of the console: stores the values of its display, knob and lamp
// messages and draws the panel from them. Main thread only.
class PlugInPanelView : public QWidget {
    Q_OBJECT

public:
    using ImageLoader = std::function<InterfaceImage(const QString& name)>;

    // The clock outlives the view.
    explicit PlugInPanelView(const QRect& frame,
        const ImageLoader& imageNamed = &artwork::panelPicture, const Clock& clock = steadyClock());

    void prepareAttributes();
    void setupMessageArry();
    void initMessageArry();

    // Store a message of the console. Malformed parts of it change nothing. They request a repaint
    // only if the window is visible.
    void updateZone(std::span<const std::uint8_t> data, bool windowVisible);
    void updateDSParea(std::span<const std::uint8_t> data, bool windowVisible);

    void setNeedsDisplay();

    // The area of each item at the present size, in the view's coordinates.
    [[nodiscard]] QRect zoneRect(std::size_t zone) const;
    [[nodiscard]] QRect rowRect(std::size_t row) const;
    [[nodiscard]] QRect knobRect(std::size_t knob) const;
    [[nodiscard]] QRect switchRect(std::size_t lamp) const;
    [[nodiscard]] const InterfaceImage& lampImage(PanelLayout::Lamp lamp) const;

    void drawRect(QPainter& painter, const QRect& dirtyRect);
    void drawString(PanelCanvas& canvas, const QRect& dirtyRect);
    // Draws the cell at the origin of `rect`, as wide as the character atlas and one cell high.
    void drawCharacter(PanelCanvas& canvas, const QRectF& rect, std::uint8_t chara);
    void drawSwitch(PanelCanvas& canvas);
    void drawKnob(PanelCanvas& canvas);

    [[nodiscard]] const auto& myZonesArray() const { return m_myZonesArray; } // none at first
    [[nodiscard]] const auto& myKnobArray() const { return m_myKnobArray; }
    [[nodiscard]] const auto& mySwitchArray() const { return m_mySwitchArray; }
    [[nodiscard]] const QVariantMap& attributes() const { return m_attributes; }
    [[nodiscard]] double heightDisplayPixel() const { return m_heightDisplayPixel; }
    void setHeightDisplayPixel(double height) { m_heightDisplayPixel = height; }
    [[nodiscard]] const InterfaceImage& imageBack() const { return m_imageBack; }
    [[nodiscard]] const InterfaceImage& imageAscii() const { return m_imageAscii; }
    [[nodiscard]] const InterfaceImage& imageKnob() const { return m_imageKnob; }
    [[nodiscard]] const InterfaceImage& imageSwitchGreen() const { return m_imageSwitchGreen; }
    [[nodiscard]] const InterfaceImage& imageSwitchRed() const { return m_imageSwitchRed; }
    [[nodiscard]] const InterfaceImage& imageSwitchOrange() const { return m_imageSwitchOrange; }

signals:
    void contentChanged(); // what a visible panel shows may have changed

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Ratio;
    struct Piece;

    [[nodiscard]] static const Clock& steadyClock();

    void drawAll(PanelCanvas& canvas);
    void drawLight(PanelCanvas& canvas);
    [[nodiscard]] Piece character(const QRectF& cell, std::uint8_t chara) const;
    [[nodiscard]] Piece lampKey(std::size_t lamp, bool isLit) const;
    [[nodiscard]] QRegion changedSince(const PanelState& shown) const;
    template <typename Do> void forEachCharacter(const PanelCanvas& canvas, const Do& action) const;
    [[nodiscard]] static QRectF litPlace(const Piece& piece);
    [[nodiscard]] QRect touched(const Piece& piece) const;
    [[nodiscard]] QRect touchedByZone(std::size_t zone) const;
    [[nodiscard]] QRect touchedBySwitch(std::size_t lamp) const;
    [[nodiscard]] Ratio drawRatio(bool viewDisplay) const;
    [[nodiscard]] QRect squareRect(double left, double bottom, double side) const;
    void refresh(const QRegion& stale);

    double m_heightDisplayPixel = 0;
    QVariantMap m_attributes;
    std::optional<PanelZones> m_myZonesArray;
    std::optional<PanelKnobs> m_myKnobArray;
    std::optional<PanelSwitches> m_mySwitchArray;
    bool m_isAllStale = false; // the zones were made or emptied without a repaint
    InterfaceImage m_imageBack;
    InterfaceImage m_imageAscii;
    InterfaceImage m_imageKnob;
    InterfaceImage m_imageSwitchGreen;
    InterfaceImage m_imageSwitchRed;
    InterfaceImage m_imageSwitchOrange;
    PaintedPanel m_painted;
    PanelRefresh m_refresh { *this };
    PassingSize m_passingSize;
};

} // namespace kestrel
