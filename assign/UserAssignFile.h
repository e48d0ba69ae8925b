#pragma once

#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveError.h"
#include "assign/ButtonEntry.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kestrel {

// The assignment set: up to four shortcuts and a title for each user-assignable button. Both tables
// are dictionaries with button numbers as keys, although their names say "array". Each table is
// missing until it is filled. Getters return the tables and entries themselves, not copies.
class UserAssignFile {
public:
    using Bytes = std::vector<std::uint8_t>;

    static constexpr int ButtonCount = 12; // numbers 1 to 12

    UserAssignFile();
    explicit UserAssignFile(const ArchiveObject& coder); // initWithCoder:
    void encodeWithCoder(ArchiveObject& coder) const;

    void initShortcutArray(); // resets the titles too
    void initShortcutTitleArray();

    // Use the root object of a keyed archive as the table, whatever its type. They throw
    // ArchiveError if the bytes are no archive, and leave the table unchanged.
    void setData(std::span<const std::uint8_t> archive);
    void setTitleData(std::span<const std::uint8_t> archive);
    [[nodiscard]] Bytes getData() const;
    [[nodiscard]] Bytes getTitleData() const;

    [[nodiscard]] bool isExistShortcut() const { return !m_orgShortcutArray.isNull(); }
    [[nodiscard]] ButtonEntry getSwitchShortcut(int number) const;
    [[nodiscard]] ButtonEntry getShortcut(const ArchiveValue& key) const;
    [[nodiscard]] std::optional<QString> getShortcutTitle(const ArchiveValue& key) const;
    void setShortcutTitle(const QString& title, const ArchiveValue& forKey);

    // Null if the table is missing or no dictionary.
    [[nodiscard]] std::shared_ptr<ArchiveDictionary> getShortcutArray() const;
    [[nodiscard]] std::shared_ptr<ArchiveDictionary> getShortcutTitleArray() const;
    [[nodiscard]] std::vector<ArchiveValue> allKeys() const;
    [[nodiscard]] std::size_t count() const;

    // True if the type is that of an assignment set, or missing.
    [[nodiscard]] bool isUserAssignFile() const;
    [[nodiscard]] const ArchiveValue& myType() const { return m_myType; }
    [[nodiscard]] std::int64_t myVersion() const { return m_myVersion; }

    // The content of an assignment file that holds this set.
    [[nodiscard]] Bytes fileImage() const;
    // Throws ArchiveError if the bytes are no archive. Null if the archive holds no UserAssignFile.
    [[nodiscard]] static std::shared_ptr<UserAssignFile> fromFileImage(
        std::span<const std::uint8_t> image);

private:
    ArchiveValue m_myType;
    std::int64_t m_myVersion = 1;
    ArchiveValue m_orgShortcutArray;
    ArchiveValue m_orgShortcutTitleArray;
};

} // namespace kestrel
