#pragma once

#include "archive/Bytes.h"
#include "assign/UserAssignFile.h"
#include "platform/DefaultsStore.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace kestrel {

// Owns the live assignment set and stores it in the user defaults. Main thread only.
class StoredAssignments {
public:
    static constexpr std::string_view ShortcutsKey = "PT_UserAssign";
    static constexpr std::string_view TitlesKey = "PT_UserAssignTitle";
    // When a run last stored a set that had changed, in milliseconds since 1970 as text. Written
    // only by runs with a recovery file.
    static constexpr std::string_view StoredAtKey = "KestrelAssignmentsStoredAt";

    // What setupShortcutKey() does with stored bytes that cannot be used: a run of the program
    // keeps them under other names, a command that only reads changes nothing on disk.
    enum class Unusable : std::uint8_t { KeptAside, LeftAlone };

    // The store outlives this object. Without a recovery file (a path in UTF-8) no copy is kept.
    explicit StoredAssignments(DefaultsStore& defaults, std::string recoveryFile = {},
        Unusable unusable = Unusable::KeptAside);

    // Makes a new live set from the recovery file of a run that was killed, else from the defaults.
    // A recovery file that is older than what another run has stored since is kept under its name
    // with ".replaced" appended.
    // A table that is missing there starts empty. So does a table that is damaged or no dictionary;
    // its bytes are first copied to its key with ".damaged" appended. An archive of nil is accepted
    // for the shortcuts: the set then has no shortcut table.
    void setupShortcutKey();

    // Called at the end. Returns false if the defaults could not be written; they are then
    // unchanged. A set without a shortcut table writes nothing and returns true.
    [[nodiscard]] bool writeUserDefault();
    // Writes the live set to the recovery file, where the next start finds it if this run is killed
    // or cannot write the defaults. The defaults themselves change only at the end.
    [[nodiscard]] bool writeRecoveryFile();

    // Why the set could not be stored the last time, or why what is stored could not be read; empty
    // if all is well.
    [[nodiscard]] std::string problem() const;

    // The live set; null before setupShortcutKey().
    [[nodiscard]] const std::shared_ptr<UserAssignFile>& myUserAssignFile() const
    {
        return m_myUserAssignFile;
    }

private:
    using Archive = std::span<const std::uint8_t>;

    [[nodiscard]] std::int64_t timeOfStoring();
    [[nodiscard]] std::int64_t timeForStoring();
    void makeNewerThanWhatIsStored(const QString& recoveryFile);
    [[nodiscard]] std::shared_ptr<UserAssignFile> recovered(std::int64_t storedAt);
    [[nodiscard]] bool hasTable() const;
    [[nodiscard]] bool restore(std::string_view key, const std::function<bool(Archive)>& take);
    void keepAside(std::string_view key, Archive damaged);
    void keepRecoveryFileAside(std::string_view ending) const;

    DefaultsStore& m_defaults;
    std::shared_ptr<UserAssignFile> m_myUserAssignFile;
    std::string m_recoveryFile;
    Unusable m_unusable;
    // What this run last read from the recovery file or wrote to it. The file is removed only if it
    // still has this content: another run may have replaced it.
    std::optional<Bytes> m_recoveryContent;
    // Shortcuts and titles as the defaults had them at the start; empty after a recovery.
    std::pair<Bytes, Bytes> m_stored;
    std::string m_problem;
};

} // namespace kestrel
