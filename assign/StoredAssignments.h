#pragma once

#include "assign/UserAssignFile.h"
#include "platform/DefaultsStore.h"

#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace kestrel {

// The live assignment set and its place in the user defaults. Main thread only.
class StoredAssignments {
public:
    static constexpr std::string_view ShortcutsKey = "PT_UserAssign";
    static constexpr std::string_view TitlesKey = "PT_UserAssignTitle";

    explicit StoredAssignments(DefaultsStore& defaults); // which outlives it

    // Makes a new live set from the defaults. What is missing there starts empty, and so does
    // what is damaged or no table, after it has been kept aside under its key and ".damaged". An
    // archive of nothing is taken for the shortcuts, which are then missing.
    void setupShortcutKey();

    // False, with the defaults as they were, when they could not be written. A set without a
    // shortcut table writes nothing and is no failure.
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
