#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <span>

namespace kestrel::ctl {

enum ExitCode { Done = 0, Failed = 1, Misused = 2 };

// What a command does once its arguments are parsed.
using Run = std::function<ExitCode()>;

// A command of kestrelctl. Help and completion are made of what it defines.
struct Command {
    const char* name;
    const char* summary;
    // Adds the command's options and returns what it does. A group of commands calls
    // defineCommands() with a table of its own.
    Run (*define)(CLI::App& options);
};

// Adds the commands to `parent`, of which the user has to give one. Returns what that one does.
[[nodiscard]] Run defineCommands(CLI::App& parent, std::span<const Command> table);

// All commands, in the order of the help.
[[nodiscard]] std::span<const Command> commandTable();

// Prints "kestrelctl: " and the sentence to the standard error output.
void complain(const std::string& sentence);

} // namespace kestrel::ctl
