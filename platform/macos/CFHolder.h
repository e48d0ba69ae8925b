#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace kestrel {

// Owns one reference to a Core Foundation object. The rule: what a function with Create or Copy in
// its name returns is ours already and goes into the constructor; what any other function returns
// is only lent and goes through retained(). The one CFRelease of this folder is here.
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

    // For functions that hand over a new reference through a pointer. Only while empty.
    [[nodiscard]] Ref* receive() { return &m_ref; }

private:
    Ref m_ref = nullptr;
};

} // namespace kestrel
