#pragma once

#include "assign/UserAssignFile.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace kestrel::test {

// Writes a set whose key 1 types B.
inline std::string writeSetThatTypesB(const std::filesystem::path& path)
{
    constexpr int KeyB = 11; // its key code
    UserAssignFile set;
    set.initShortcutArray();
    ArchiveArray& entry = *set.getSwitchShortcut(1);
    entry.replace(ShortcutRecord::KeyCode, ArchiveValue(KeyB));
    entry.replace(ShortcutRecord::Text, ArchiveValue(QStringLiteral("B")));
    const auto image = set.fileImage();
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(image.data()),
            static_cast<std::streamsize>(image.size()));
    return path.string();
}

} // namespace kestrel::test
