#pragma once

#include "shortcut/ImageButton.h"
#include "shortcut/InterfaceServices.h"

#include <QPointer>

namespace kestrel {

class MyShortcutField;

// Empties the shortcut field beside it.
class ClearButton : public ImageButton {
public:
    ClearButton(const QRect& frame, const InterfaceServices& services, QWidget* parent = nullptr);
    ~ClearButton() override;

    void mouseDown(QMouseEvent& event);

    [[nodiscard]] MyShortcutField* myShortcutfield() const;
    void setMyShortcutfield(MyShortcutField* field); // null for none; not owned

    bool event(QEvent* event) override;

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    // Called when the mouse is released over the button, or the button is pressed from the
    // keyboard.
    void clearField();

    NotificationCenter& m_notificationCenter;
    QPointer<MyShortcutField> m_myShortcutfield;
};

} // namespace kestrel
