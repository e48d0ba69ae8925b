#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <atomic>

namespace kestrel::test {

// An object of Core Foundation or Quartz: reference-counted, with a number for its type.
class CFObject {
public:
    enum Type : CFTypeID {
        Boolean = 1,
        String,
        Data,
        Dictionary,
        Url,
        Event,
        EventSource,
        InputSource,
        Activity
    };

    explicit CFObject(Type type);
    virtual ~CFObject();
    CFObject(const CFObject&) = delete;
    CFObject& operator=(const CFObject&) = delete;

    [[nodiscard]] Type type() const { return m_type; }
    [[nodiscard]] virtual bool equals(const CFObject& other) const { return this == &other; }

    void retain() { ++m_references; }
    void release();

    // A reference of the given kind to this object.
    template <typename Ref> [[nodiscard]] Ref as()
    {
        return reinterpret_cast<Ref>(static_cast<CFObject*>(this));
    }
    // The object of a reference. Like macOS, it ends the program for a null reference.
    [[nodiscard]] static CFObject& of(CFTypeRef reference);
    template <typename Object> [[nodiscard]] static Object& of(CFTypeRef reference)
    {
        return dynamic_cast<Object&>(of(reference));
    }

    // How many objects there are. A test that ends with more than it began with leaks.
    [[nodiscard]] static int count();

private:
    const Type m_type;
    std::atomic<int> m_references { 1 };
};

} // namespace kestrel::test
