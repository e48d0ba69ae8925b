#pragma once

#include <QAccessible>

#include <functional>

namespace kestrel {

// The receiver of accessibility events, one for the process as in Qt. Only tests replace it: Qt has
// no public way to switch assistive technology on.
struct AccessibilityListener {
    std::function<bool()> isActive = &QAccessible::isActive; // false while nothing listens
    std::function<void(QAccessibleEvent*)> tell = &QAccessible::updateAccessibility;

    [[nodiscard]] static AccessibilityListener& shared()
    {
        static AccessibilityListener listener;
        return listener;
    }
};

} // namespace kestrel
