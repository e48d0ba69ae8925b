#pragma once

#include "link/Clock.h"

#include <QTimer>

class QWidget;

namespace kestrel {

// Tells a size that a view keeps from those that pass while its window is dragged larger or
// smaller. The first of them counts as one to keep.
class PassingSize {
public:
    static constexpr std::chrono::milliseconds Rest { 150 };

    PassingSize(QWidget& view, const Clock& clock); // both outlive this

    void sizeChanged(); // the view calls this at each change of its size
    void painted(); // the view calls this at the end of each painting
    // True from the second of several changes in quick succession until Rest after the last one,
    // or after the end of its painting. The view is repainted then.
    [[nodiscard]] bool isPassing() const;

private:
    void rest();

    QWidget& m_view;
    const Clock& m_clock;
    QTimer m_wait; // runs while the view may still come to rest
    Clock::TimePoint m_rests {}; // when the view will be at rest
    bool m_isUnpainted = false; // the size has changed since the last painting
    bool m_isPassing = false;
};

} // namespace kestrel
