#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace kestrel {

// Owns one reference to a Core Foundation object. The rule: a function with Create or Copy in its
// name returns a reference that is ours, which goes into the constructor; any other function lends
// its reference, which goes through retained(). The only CFRelease of this folder is here.
template <typename Ref> class CFHolder {
public:
    CFHolder() = default;
    explicit CFHolder(Ref owned)
        : m_ref(owned)
    {
    }
    CFHolder(CFHolder&& other) noexcept
        : m_ref(std::exchange(other.m_ref, nullptr))
    {
    }
    CFHolder& operator=(CFHolder&& other) noexcept
    {
        std::swap(m_ref, other.m_ref);
        return *this;
    }
    ~CFHolder()
    {
        if (m_ref)
            CFRelease(m_ref);
    }

    [[nodiscard]] static CFHolder retained(Ref lent)
    {
        if (lent)
            CFRetain(lent);
        return CFHolder(lent);
    }

    [[nodiscard]] Ref get() const { return m_ref; }
    explicit operator bool() const { return m_ref != nullptr; }

    // For functions that return a new reference through a pointer. The holder must be empty.
    [[nodiscard]] Ref* receive() { return &m_ref; }

private:
    Ref m_ref = nullptr;
};

} // namespace kestrel
