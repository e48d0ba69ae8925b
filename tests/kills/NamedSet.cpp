#include "tests/kills/NamedSet.h"

#include "platform/KeyCodes.h"

#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace kestrel::test::NamedSet {

namespace {
struct Shortcut {
    ModifierFlags modifiers;
    KeyCode key;
};

// The shortcuts of the four records of each key, shifted by the number of the key.
constexpr std::array Shortcuts { Shortcut { 0, 0 }, Shortcut { Modifier::Command, 1 },
    Shortcut { Modifier::Shift | Modifier::Option, 2 }, Shortcut { Modifier::Control, 3 } };

std::size_t recordsOf(Size size)
{
    return size == Size::Small ? 1 : ShortcutRecordCount;
}

QString titleOf(const QString& name, int number)
{
    return name + QChar(' ') + QString::number(number);
}

void fill(ArchiveArray& entry, const QString& name, int number, Size size)
{
    for (std::size_t record = 0; record < recordsOf(size); ++record) {
        const auto shift = record + static_cast<std::size_t>(number) - 1;
        const Shortcut shortcut = Shortcuts[shift % Shortcuts.size()];
        const std::size_t start = shortcutRecordOffset(record);
        entry.replace(start + ShortcutRecord::Modifiers, ArchiveValue(shortcut.modifiers));
        entry.replace(start + ShortcutRecord::KeyCode, ArchiveValue(shortcut.key));
        entry.replace(start + ShortcutRecord::Text, ArchiveValue(name));
    }
}
} // namespace

void write(const std::filesystem::path& file, const std::string& name, Size size)
{
    const QString text = QString::fromStdString(name);
    UserAssignFile set;
    set.initShortcutArray();
    for (int number = 1; number <= UserAssignFile::ButtonCount; ++number) {
        fill(*set.getSwitchShortcut(number), text, number, size);
        set.setShortcutTitle(titleOf(text, number), ArchiveValue(number));
    }
    const auto image = set.fileImage();
    std::ofstream stream(file, std::ios::binary);
    stream.write(
        reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
    if (!stream.flush())
        throw std::runtime_error("cannot write " + file.string());
}

std::optional<std::string> nameOf(const UserAssignFile& set)
{
    std::optional<QString> name;
    for (int number = 1; number <= UserAssignFile::ButtonCount; ++number) {
        const ButtonEntry entry = set.getSwitchShortcut(number);
        const auto title = set.getShortcutTitle(ArchiveValue(number));
        if (!entry || !title)
            return {};
        const QString text = entry->at(ShortcutRecord::Text).text();
        if (text != name.value_or(text) || *title != titleOf(text, number))
            return {};
        name = text;
    }
    return name->toStdString();
}

std::optional<std::string> nameIn(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const UserAssignFile::Bytes bytes(std::istreambuf_iterator<char>(stream), {});
    try {
        const auto set = UserAssignFile::fromFileImage(bytes);
        return set ? nameOf(*set) : std::nullopt;
    } catch (const ArchiveError&) {
        return {};
    }
}

} // namespace kestrel::test::NamedSet
