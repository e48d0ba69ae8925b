#pragma once

#include <QString>
#include <QTimer>

namespace kestrel {

class MyShortcutField;

// Tells assistive technology when the shortcut of a field or its alert "Not Available" changes,
// once the event that has changed them is handled.
class FieldAnnouncer {
public:
    explicit FieldAnnouncer(MyShortcutField& field);

    void fieldChanged(); // tells nothing while no assistive technology listens

private:
    void announce();

    MyShortcutField& m_field;
    QTimer m_turn;
    // The values that a listener has.
    QString m_shortcut;
    bool m_isRefused = false;
};

} // namespace kestrel
