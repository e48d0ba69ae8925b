#pragma once

#include "archive/Bytes.h"
#include "assign/StoredAssignments.h"
#include "platform/StoredDefaults.h"
#include "sets/SetFile.h"
#include "tools/kestrelctl/Command.h"

#include <memory>
#include <string>

// What the commands on sets share.
namespace kestrel::ctl {

// Where commands compare, 1 says that something was found.
inline constexpr ExitCode Found = Failed;
inline constexpr ExitCode Trouble = Misused;

// A file that a command writes.
struct Output {
    std::string path;
    bool replaces = false; // --force

    // Adds the option -o and the flag --force.
    static std::shared_ptr<Output> define(CLI::App& options, const std::string& description);
    // Complains and returns false if the file is there already and nothing said --force, or if it
    // cannot be written.
    [[nodiscard]] bool write(ByteView content) const;
};

// Adds the argument FILE; without it, the command works on the stored set.
[[nodiscard]] std::shared_ptr<std::string> defineSource(CLI::App& options);

// The stored assignments, read from the defaults.
struct StoredSet {
    StoredDefaults defaults;
    StoredAssignments assignments; // with a live set

    // Throws SetFile::Error if the defaults cannot be read. They would look like empty ones.
    [[nodiscard]] static StoredSet open(
        StoredAssignments::Unusable unusable = StoredAssignments::Unusable::LeftAlone);
};

// The set in the file, or the stored one if the path is empty. Throws SetFile::Error.
[[nodiscard]] SetText::Root readSet(const std::string& path);

// Runs the command; if it throws SetFile::Error, complains and returns `failure`.
[[nodiscard]] ExitCode guarded(ExitCode failure, const std::function<ExitCode()>& command);

// Prints the text to the standard output.
[[nodiscard]] bool print(const QByteArray& utf8);

} // namespace kestrel::ctl
