#pragma once

#include "shortcut/ImageButton.h"
#include "shortcut/InterfaceServices.h"

#include <QPointer>

namespace kestrel {

class MyShortcutField;

// Empties the shortcut field that it stands beside.
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
    // Released over the button, or pressed from the keyboard.
    void clearField();

    NotificationCenter& m_notificationCenter;
    QPointer<MyShortcutField> m_myShortcutfield;
};

} // namespace kestrel
