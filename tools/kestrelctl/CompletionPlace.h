#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace kestrel::ctl {

// What can be typed at one place of the command line: after the program's name or after a command.
struct CompletionPlace {
    struct Word {
        std::string text; // "assign", "--title"
        std::string description;
        bool takesValue = false;
        bool takesFile = false; // the value is a file
    };

    std::string path; // " set json": each command after a blank; empty after the program's name
    std::vector<Word> words; // commands, and the values that an argument can have
    std::vector<Word> options;
    bool takesFile = false; // an argument is a file

    // The place after `options` and those after its commands. An argument of the type "FILE" is a
    // file.
    [[nodiscard]] static std::vector<CompletionPlace> allOf(
        const CLI::App& options, const std::string& path = {});
};

} // namespace kestrel::ctl
