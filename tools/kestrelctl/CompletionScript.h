#pragma once

#include "tools/kestrelctl/CompletionPlace.h"

#include <string>
#include <vector>

// Scripts with which shells complete the command line of kestrelctl. The first place is the one
// after the program's name.
namespace kestrel::ctl::CompletionScript {

[[nodiscard]] std::string bash(const std::vector<CompletionPlace>& places);
[[nodiscard]] std::string fish(const std::vector<CompletionPlace>& places);
[[nodiscard]] std::string zsh(const std::vector<CompletionPlace>& places);

} // namespace kestrel::ctl::CompletionScript
