#include "fuzz/OwnFolder.h"
#include "fuzz/Target.h"
#include "platform/linux/x11/HeldKeysJournal.h"

#include <algorithm>

namespace kestrel {
namespace {

constexpr std::string_view Mark = "KestKey1";
constexpr std::size_t FileSize = 40; // the mark, then one bit per keycode

std::string fileWith(const XKeySet& keys)
{
    std::string content(Mark);
    content.resize(FileSize);
    for (std::size_t key = 0; key < keys.size(); ++key) {
        if (keys.test(key))
            content[Mark.size() + key / 8] |= static_cast<char>(1 << (key % 8));
    }
    return content;
}

// What the file says by a second reading of its format.
XKeySet keysIn(std::string_view content)
{
    XKeySet keys;
    if (content.size() != FileSize || !content.starts_with(Mark))
        return keys;
    for (std::size_t key = 0; key < keys.size(); ++key)
        keys.set(key, ((content[Mark.size() + key / 8] >> (key % 8)) & 1) != 0);
    return keys;
}

// The first byte is the number of changes that follow, two bytes each. The rest is the file that a
// run before has left.
std::string journalFault(std::span<const std::uint8_t> input)
{
    static const fuzz::OwnFolder folder;
    const std::string path = folder.file("journal");
    const std::size_t changes
        = input.empty() ? 0 : std::min<std::size_t>(input[0], (input.size() - 1) / 2);
    const auto left = input.empty() ? input : input.subspan(1 + 2 * changes);
    fuzz::writeFile(path, left);

    XKeySet expected = keysIn({ reinterpret_cast<const char*>(left.data()), left.size() });
    {
        HeldKeysJournal journal(path);
        if (!journal.isOpen() || journal.keys() != expected)
            return "the keys are not those in the file";
        for (std::size_t i = 0; i < changes; ++i) {
            const std::uint8_t key = input[2 + 2 * i];
            const bool enters = input[1 + 2 * i] % 2 == 0;
            const XKeySet keys = XKeySet().set(key);
            enters ? journal.enter(keys) : journal.strike(keys);
            expected.set(key, enters);
        }
        if (journal.keys() != expected)
            return "the journal does not know what was entered and struck";
    }
    return fuzz::readFile(path) == fileWith(expected) ? ""
                                                      : "the file is not what the next run reads";
}

} // namespace
} // namespace kestrel

std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    return journalFault(input);
}
