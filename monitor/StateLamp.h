#pragma once

#include <QWidget>

namespace kestrel {

// A lamp whose shape and colour say how the link is.
class StateLamp : public QWidget {
public:
    enum class State { Waiting, Well, Wrong };

    explicit StateLamp(QWidget* parent);

    void setState(State state);
    [[nodiscard]] State state() const { return m_state; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    State m_state = State::Waiting;
};

} // namespace kestrel
