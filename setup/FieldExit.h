#pragma once

#include "setup/ModifierTaps.h"

#include <QObject>

#include <functional>

class QWidget;

namespace kestrel {

// The way out of a capture field for a user without a mouse: Shift tapped twice goes on to the next
// control, Option (Alt) tapped twice goes back. It takes no event away from the field.
class FieldExit : public QObject {
public:
    // `back` moves the focus back to the key that is edited.
    explicit FieldExit(std::function<void()> back)
        : m_back(std::move(back))
    {
    }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static void goOn(QWidget& field);

    std::function<void()> m_back;
    ModifierTaps m_taps;
};

} // namespace kestrel
