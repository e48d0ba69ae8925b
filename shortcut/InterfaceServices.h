#pragma once

namespace kestrel {

class KeyTranslation;
class NotificationCenter;

// The services that the controls of the setup window use. Both outlive the controls.
struct InterfaceServices {
    NotificationCenter& notificationCenter;
    KeyTranslation& keyTranslation;
};

} // namespace kestrel
