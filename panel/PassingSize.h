#pragma once

#include <QTimer>

#include <chrono>

class QWidget;

namespace kestrel {

// Tells a size that a view keeps from those that pass while its window is dragged larger or
// smaller. The first of them counts as one to keep.
class PassingSize {
public:
    static constexpr std::chrono::milliseconds Rest { 150 };

    explicit PassingSize(QWidget& view); // the view outlives this

    void sizeChanged(); // the view calls this at each change of its size
    // True from the second of several changes in quick succession until Rest after the last one.
    // The view is repainted then.
    [[nodiscard]] bool isPassing() const { return m_isPassing; }

private:
    QTimer m_rest; // runs from each change of the size
    bool m_isPassing = false;
};

} // namespace kestrel
