#pragma once

#include <QPushButton>

namespace kestrel {

// A button of the activity window. One that stays down has a lit lamp.
class MonitorButton : public QPushButton {
public:
    enum class Kind { Push, Switch };

    MonitorButton(const QString& text, Kind kind, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QFont engravedFont() const;
};

} // namespace kestrel
