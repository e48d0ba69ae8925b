#pragma once

#include "tools/pro-tools/ReceivedKey.h"

#include <QWidget>

#include <deque>
#include <functional>

namespace kestrel {

// A window that shows the last key events.
class WorkstationWindow final : public QWidget {
public:
    using FocusChanged = std::function<void(bool focused)>;

    explicit WorkstationWindow(FocusChanged focusChanged);

    void show(const ReceivedKey& key);
    using QWidget::show;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintKey(QPainter& painter, const QRect& row, const ReceivedKey& key) const;

    FocusChanged m_focusChanged;
    std::deque<ReceivedKey> m_keys; // newest first
};

} // namespace kestrel
