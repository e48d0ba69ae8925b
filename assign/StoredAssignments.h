#pragma once

#include "assign/UserAssignFile.h"
#include "platform/DefaultsStore.h"

#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace kestrel {

// Owns the live assignment set and stores it in the user defaults. Main thread only.
class StoredAssignments {
public:
    static constexpr std::string_view ShortcutsKey = "PT_UserAssign";
    static constexpr std::string_view TitlesKey = "PT_UserAssignTitle";

    explicit StoredAssignments(DefaultsStore& defaults); // outlives this object

    // Makes a new live set from the defaults. A table that is missing there starts empty. So does a
    // table that is damaged or no dictionary; its bytes are first copied to its key with ".damaged"
    // appended. An archive of nil is accepted for the shortcuts: the set then has no shortcut
    // table.
    void setupShortcutKey();

    // Returns false if the defaults could not be written; the file is then unchanged. A set without
    // a shortcut table writes nothing and returns true.
    [[nodiscard]] bool writeUserDefault();

    // The live set; null before setupShortcutKey().
    [[nodiscard]] const std::shared_ptr<UserAssignFile>& myUserAssignFile() const
    {
        return m_myUserAssignFile;
    }

private:
    using Archive = std::span<const std::uint8_t>;

    [[nodiscard]] bool restore(std::string_view key, const std::function<bool(Archive)>& take);
    void keepAside(std::string_view key, Archive damaged);

    DefaultsStore& m_defaults;
    std::shared_ptr<UserAssignFile> m_myUserAssignFile;
};

} // namespace kestrel
