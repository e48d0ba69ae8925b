#include "tools/zenta-console/ScriptWords.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace kestrel::console {

namespace {
constexpr std::string_view Blanks = " \t\r";
}

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    return text.substr(0, text.find_last_not_of(Blanks) + 1);
}

std::string_view takeWord(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(Blanks));
    text.remove_prefix(word.size());
    return word;
}

std::vector<std::string_view> wordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    while (!trimmed(text).empty())
        words.push_back(takeWord(text));
    return words;
}

std::optional<int> parseNumber(std::string_view text, int base)
{
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number, base);
    if (text.empty() || result.ec != std::errc() || result.ptr != end)
        return {};
    return number;
}

std::optional<int> numberBetween(std::string_view text, int least, int most)
{
    const bool isHex = text.starts_with("0x");
    const auto number = isHex ? parseNumber(text.substr(2), 16) : parseNumber(text);
    if (!number || *number < least || *number > most)
        return {};
    return number;
}

std::optional<std::chrono::microseconds> parseSeconds(std::string_view text)
{
    constexpr std::size_t MostDigits = 6;
    const std::size_t point = std::min(text.find('.'), text.size());
    const auto whole = numberBetween(text.substr(0, point), 0, MaxSeconds);
    std::string digits(text.substr(std::min(point + 1, text.size())));
    const bool isPlain = std::all_of(
        digits.begin(), digits.end(), [](char digit) { return digit >= '0' && digit <= '9'; });
    if (!whole || !isPlain || digits.size() > MostDigits || (point < text.size() && digits.empty()))
        return {};
    digits.resize(MostDigits, '0');
    return std::chrono::seconds(*whole) + std::chrono::microseconds(*parseNumber(digits));
}

} // namespace kestrel::console
