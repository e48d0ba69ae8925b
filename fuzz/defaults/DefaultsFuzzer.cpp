#include "archive/ArchiveError.h"
#include "fuzz/OwnFolder.h"
#include "fuzz/Target.h"
#include "platform/linux/defaults/FileDefaultsStore.h"
#include "tests/archive/ListText.h"

namespace kestrel {
namespace {

constexpr const char* Key = "PT_UserAssign";
constexpr const char* DamagedKey = "PT_UserAssign.damaged";

// A file of defaults as a dictionary; none if it is not one.
std::optional<PropertyList> dictionary(const std::string& content)
{
    try {
        PropertyList list = PropertyList::fromBytes(
            { reinterpret_cast<const std::uint8_t*>(content.data()), content.size() });
        if (plist_get_node_type(list.root()) == PLIST_DICT)
            return list;
    } catch (const ArchiveError&) {
    }
    return std::nullopt;
}

// What the dictionary must be after the value has been stored.
PropertyList withValue(PropertyList list, const DefaultsStore::Bytes& value)
{
    plist_t old = plist_dict_get_item(list.root(), Key);
    if (old && plist_get_node_type(old) != PLIST_DATA)
        plist_dict_set_item(list.root(), DamagedKey, plist_copy(old));
    plist_dict_set_item(list.root(), Key,
        plist_new_data(reinterpret_cast<const char*>(value.data()), value.size()));
    return list;
}

std::string defaultsFault(std::span<const std::uint8_t> input)
{
    static const fuzz::OwnFolder folder;
    const std::string path = folder.file("defaults.plist");
    const std::string damagedPath = path + ".damaged";
    std::filesystem::remove(damagedPath);
    fuzz::writeFile(path, input);
    const std::string before(input.begin(), input.end());
    const DefaultsStore::Bytes value { 1, 2, 3 };

    FileDefaultsStore store(QString::fromStdString(path));
    const auto old = store.data(Key);
    store.setData(Key, value);
    if (!store.synchronise())
        return fuzz::readFile(path) == before ? "" : "a refused store changed the file";
    if (FileDefaultsStore(QString::fromStdString(path)).data(Key) != value)
        return "a stored value is not read again";

    const auto read = dictionary(before);
    const auto written = dictionary(fuzz::readFile(path));
    if (!written)
        return "what was written is no dictionary";
    if (fuzz::readFile(damagedPath) == before && std::filesystem::exists(damagedPath))
        return old ? "a file that was read was put aside as damaged" : "";
    if (!read)
        return "a damaged file is lost";
    const auto expected = withValue(PropertyList(plist_copy(read->root())), value);
    return test::listText(written->root()) == test::listText(expected.root())
        ? ""
        : "other values have changed: " + test::listText(written->root());
}

} // namespace
} // namespace kestrel

std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    return defaultsFault(input);
}
