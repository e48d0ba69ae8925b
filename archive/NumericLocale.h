#pragma once

#include <locale.h>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace kestrel {

// Gives this thread a locale with a decimal point for as long as the object lives. libplist parses
// numbers by the thread's locale, in which the separator may be a comma.
class NumericLocale {
public:
    NumericLocale()
        : m_plain(newlocale(LC_NUMERIC_MASK, "C", nullptr))
        , m_previous(m_plain ? uselocale(m_plain) : nullptr)
    {
    }
    ~NumericLocale()
    {
        if (!m_plain)
            return;
        uselocale(m_previous);
        freelocale(m_plain);
    }
    NumericLocale(const NumericLocale&) = delete;
    NumericLocale& operator=(const NumericLocale&) = delete;

private:
    locale_t m_plain;
    locale_t m_previous;
};

} // namespace kestrel
