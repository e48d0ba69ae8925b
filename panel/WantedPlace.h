#pragma once

#include <QRect>

namespace kestrel {

// Keeps two places of a window: the one that the user wants, and the one that the window has while
// the screens have no room for the wanted one. A place is the upper left corner of the frame and
// the size of the content.
class WantedPlace {
public:
    [[nodiscard]] bool isKnown() const { return m_wanted.isValid(); }
    [[nodiscard]] const QRect& place() const { return m_wanted; }

    void want(const QRect& place) { m_wanted = m_given = place; }

    // Notes where the program or the window manager put the window.
    void give(const QRect& place) { m_given = place; }

    // Notes where the window has come to rest. The differences from the given place are the changes
    // by the user.
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
