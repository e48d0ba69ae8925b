#include "platform/macos/StatusItemGuard.h"

#import <objc/runtime.h>

#include <initializer_list>

namespace kestrel {

namespace {
// Stands for methods with and without an argument, and looks at none.
void nothing(id, SEL) { }
} // namespace

void guardStatusItem()
{
    // Missing while the toolkit draws into memory alone, and where it has come to call it
    // otherwise.
    const Class delegate = objc_getClass("QStatusItemDelegate");
    for (const char* name : { "statusItemClicked", "statusItemMenuBeganTracking:" }) {
        if (const Method method = class_getInstanceMethod(delegate, sel_registerName(name)))
            method_setImplementation(method, reinterpret_cast<IMP>(nothing));
    }
}

} // namespace kestrel
