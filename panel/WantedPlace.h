#pragma once

#include <QRect>

namespace kestrel {

// Tells apart where the user put a window, and how large, and where it is for as long as the
// screens have no room for it there. A place is the corner of the frame and the size of the
// content.
class WantedPlace {
public:
    [[nodiscard]] bool isKnown() const { return m_wanted.isValid(); }
    [[nodiscard]] const QRect& place() const { return m_wanted; }

    void want(const QRect& place) { m_wanted = m_given = place; }

    // The window is there for want of room, or because the window manager put it there.
    void give(const QRect& place) { m_given = place; }

    // The window has come to rest there. What differs from the place it was given is what the user
    // changed.
    void foundAt(const QRect& place)
    {
        if (place.topLeft() != m_given.topLeft() || !isKnown())
            m_wanted.moveTopLeft(place.topLeft());
        if (place.size() != m_given.size() || !isKnown())
            m_wanted.setSize(place.size());
        m_given = place;
    }

private:
    QRect m_wanted;
    QRect m_given;
};

} // namespace kestrel
