#pragma once

#include "common/NotificationCenter.h"
#include "tests/fakes/FakeInterface.h"

#include <QWidget>

#include <gtest/gtest.h>

namespace kestrel::test {

// A key press on a Mac.
struct Key {
    KeyCode keyCode = 0;
    ModifierFlags flags = 0;
    QString characters = {};
    bool isARepeat = false;
    int qtKey = Qt::Key_unknown; // for controls that edit text
};

namespace Keys {
inline const Key A { .keyCode = 0, .characters = "a", .qtKey = Qt::Key_A };
inline const Key F3 { .keyCode = 99, .qtKey = Qt::Key_F3 };
inline const Key F5 { .keyCode = 96, .qtKey = Qt::Key_F5 };
inline const Key Tab { .keyCode = 48, .characters = "\t", .qtKey = Qt::Key_Tab };
inline const Key Return { .keyCode = 36, .characters = "\r", .qtKey = Qt::Key_Return };
inline const Key Escape { .keyCode = 53, .characters = "\033", .qtKey = Qt::Key_Escape };
inline const Key PageDown { .keyCode = 121, .qtKey = Qt::Key_PageDown };
inline const Key Unnamed { .keyCode = 200 }; // neither a name nor characters
} // namespace Keys

[[nodiscard]] inline Key with(ModifierFlags flags, Key key)
{
    key.flags = flags;
    return key;
}

[[nodiscard]] inline Key repeated(Key key)
{
    key.isARepeat = true;
    return key;
}

// Sends a key press as Qt does: first ShortcutOverride, then KeyPress. True when the override was
// accepted, which keeps menu shortcuts from firing.
bool press(QWidget& widget, const Key& key);
void press(QWidget& widget, Qt::MouseButton button, QPoint at);
void release(QWidget& widget, Qt::MouseButton button, QPoint at);
void click(QWidget& widget);
void doubleClick(QWidget& widget); // both clicks

// Shows the window and waits until it is the active one.
void activate(QWidget& window);

// Records the notifications with one name.
class NotificationCounter {
public:
    NotificationCounter(NotificationCenter& center, const QString& name)
        : m_observation(center.addObserver(name,
            [this](const Notification& notification) { objects.push_back(notification.object); }))
    {
    }

    std::vector<const QObject*> objects;

private:
    NotificationCenter::Observation m_observation;
};

} // namespace kestrel::test
