#pragma once

#include "shortcut/InterfaceServices.h"

#include <functional>

namespace kestrel {

class ApplicationVisibility;
class DefaultsStore;
class DocumentFiles;

// The services that the setup window uses. All of them outlive the window.
struct SetupServices {
    InterfaceServices interface;
    DefaultsStore& defaults;
    DocumentFiles& documentFiles;
    ApplicationVisibility& visibility;
    std::function<void()> setBecameLive; // called after OK has written the live set
};

} // namespace kestrel
