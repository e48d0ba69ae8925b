#pragma once

namespace kestrel {

class KeyTranslation;
class NotificationCenter;

// What every control of the setup window takes from outside. Both outlive the controls.
struct InterfaceServices {
    NotificationCenter& notificationCenter;
    KeyTranslation& keyTranslation;
};

} // namespace kestrel
