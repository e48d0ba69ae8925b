#pragma once

#include "shortcut/InterfaceServices.h"

namespace kestrel {

class ApplicationVisibility;
class DefaultsStore;
class FileAttributes;

// What the setup window takes from outside. All outlive the window.
struct SetupServices {
    InterfaceServices interface;
    DefaultsStore& defaults;
    FileAttributes& fileAttributes;
    ApplicationVisibility& visibility;
};

} // namespace kestrel
