#include "platform/macos/StatusItemGuard.h"

#import <objc/runtime.h>

#include <initializer_list>

namespace kestrel {

namespace {
// Replaces methods with and without an argument, so it reads none.
void nothing(id, SEL) { }
} // namespace

void guardStatusItem()
{
    // The class is missing with Qt's offscreen plug-in, and if a later Qt renames it.
    const Class delegate = objc_getClass("QStatusItemDelegate");
    for (const char* name : { "statusItemClicked", "statusItemMenuBeganTracking:" }) {
        if (const Method method = class_getInstanceMethod(delegate, sel_registerName(name)))
            method_setImplementation(method, reinterpret_cast<IMP>(nothing));
    }
}

} // namespace kestrel
