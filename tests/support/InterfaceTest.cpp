#include "tests/support/InterfaceTest.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTest>

namespace kestrel::test {

namespace {
// Qt's modifiers on a Mac, where Qt calls Command Control and Control Meta.
Qt::KeyboardModifiers qtModifiers(ModifierFlags flags)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, flags & Modifier::Shift);
    modifiers.setFlag(Qt::MetaModifier, flags & Modifier::Control);
    modifiers.setFlag(Qt::AltModifier, flags & Modifier::Option);
    modifiers.setFlag(Qt::ControlModifier, flags & Modifier::Command);
    return modifiers;
}
} // namespace

bool press(QWidget& widget, const Key& key)
{
    const auto event = [&](QEvent::Type type) {
        return QKeyEvent(type, key.qtKey, qtModifiers(key.flags), 1, key.keyCode, key.flags,
            key.characters, key.isARepeat);
    };
    QKeyEvent question = event(QEvent::ShortcutOverride);
    question.ignore();
    QApplication::sendEvent(&widget, &question);
    QKeyEvent press = event(QEvent::KeyPress);
    QApplication::sendEvent(&widget, &press);
    return question.isAccepted();
}

namespace {

void send(QWidget& widget, QEvent::Type type, Qt::MouseButton button, QPoint at)
{
    const bool isRelease = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, widget.mapToGlobal(at), button, isRelease ? Qt::NoButton : button,
        Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

} // namespace

void press(QWidget& widget, Qt::MouseButton button, QPoint at)
{
    send(widget, QEvent::MouseButtonPress, button, at);
}

void release(QWidget& widget, Qt::MouseButton button, QPoint at)
{
    send(widget, QEvent::MouseButtonRelease, button, at);
}

void click(QWidget& widget)
{
    press(widget, Qt::LeftButton, widget.rect().center());
    release(widget, Qt::LeftButton, widget.rect().center());
}

void doubleClick(QWidget& widget)
{
    click(widget);
    send(widget, QEvent::MouseButtonDblClick, Qt::LeftButton, widget.rect().center());
    release(widget, Qt::LeftButton, widget.rect().center());
}

void activate(QWidget& window)
{
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

} // namespace kestrel::test
