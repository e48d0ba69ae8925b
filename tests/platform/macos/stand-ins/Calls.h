#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace kestrel::test {

// Each function that stands in for one of macOS begins with `calls().fail("its name")`. Main thread
// only; functions that other threads call do not take part.
struct Calls {
    std::string failing; // calls of this function fail
    std::function<void(std::string_view function)> before; // runs at the beginning of each call

    [[nodiscard]] bool fail(std::string_view function) const
    {
        if (before)
            before(function);
        return function == failing;
    }
};

inline Calls& calls()
{
    static Calls calls;
    return calls;
}

} // namespace kestrel::test
