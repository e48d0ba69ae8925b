#include "tests/platform/macos/stand-ins/CFObject.h"

#include <cstdlib>

namespace kestrel::test {

namespace {
std::atomic<int> objects { 0 };
} // namespace

CFObject::CFObject(Type type)
    : m_type(type)
{
    ++objects;
}

CFObject::~CFObject()
{
    --objects;
}

void CFObject::release()
{
    if (--m_references == 0)
        delete this;
}

CFObject& CFObject::of(CFTypeRef reference)
{
    if (!reference)
        std::abort();
    return *static_cast<CFObject*>(const_cast<void*>(reference));
}

int CFObject::count()
{
    return objects;
}

} // namespace kestrel::test

using kestrel::test::CFObject;

CFTypeRef CFRetain(CFTypeRef object)
{
    CFObject::of(object).retain();
    return object;
}

void CFRelease(CFTypeRef object)
{
    CFObject::of(object).release();
}

CFTypeID CFGetTypeID(CFTypeRef object)
{
    return CFObject::of(object).type();
}

Boolean CFEqual(CFTypeRef one, CFTypeRef other)
{
    return CFObject::of(one).equals(CFObject::of(other));
}
