#include "platform/linux/midi/NaturalOrder.h"

#include <algorithm>
#include <compare>
#include <cstddef>

namespace kestrel {

namespace {
bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

// Cuts the number off the front of `text` and returns it without its leading zeros. It may have any
// length.
std::string_view takeNumber(std::string_view& text)
{
    const auto length = static_cast<std::size_t>(
        std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
    std::string_view number = text.substr(0, length);
    text.remove_prefix(length);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

std::strong_ordering compareNumbers(std::string_view left, std::string_view right)
{
    if (left.size() != right.size())
        return left.size() <=> right.size();
    return left <=> right;
}
} // namespace

bool comesNaturallyBefore(std::string_view left, std::string_view right)
{
    const std::string_view wholeLeft = left;
    const std::string_view wholeRight = right;
    while (!left.empty() && !right.empty()) {
        if (isDigit(left.front()) && isDigit(right.front())) {
            const std::string_view number = takeNumber(left);
            const auto order = compareNumbers(number, takeNumber(right));
            if (std::is_neq(order))
                return std::is_lt(order);
            continue;
        }
        if (left.front() != right.front())
            return left.front() < right.front();
        left.remove_prefix(1);
        right.remove_prefix(1);
    }
    if (left.empty() != right.empty())
        return left.empty();
    return wholeLeft < wholeRight; // 1 and 01 are the same number, but not the same name
}

} // namespace kestrel
