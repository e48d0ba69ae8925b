#pragma once

#include "activity/LinkHealth.h"

#include <QWidget>

#include <vector>

namespace kestrel {

// The beats of the last five minutes on a small display: how far each was from one second.
class BeatPlot : public QWidget {
public:
    // The health outlives the plot.
    BeatPlot(const LinkHealth& health, QWidget* parent);

    // Draws anew if there was another beat.
    void refresh();
    // Such as "0.4 ms"; a dash before the second beat.
    [[nodiscard]] QString jitterText() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void drawScale(QPainter& painter, const QRectF& plot, double range) const;
    void drawBeats(QPainter& painter, const QRectF& plot, double range) const;

    const LinkHealth& m_health;
    std::uint64_t m_shownBeats = 0;
};

} // namespace kestrel
