#include "tools/kestrelctl/Commands.h"
#include "tools/kestrelctl/CompletionScript.h"

#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace kestrel::ctl {

namespace {
using Script = std::string (*)(const std::vector<CompletionPlace>& places);

const std::map<std::string, Script> scripts { { "bash", CompletionScript::bash },
    { "fish", CompletionScript::fish }, { "zsh", CompletionScript::zsh } };
} // namespace

Run defineCompletion(CLI::App& options)
{
    const auto shell = std::make_shared<std::string>();
    options.add_option("shell", *shell, "The shell that gets the completions")
        ->check(CLI::IsMember(&scripts))
        ->required();
    options.footer("The Debian package installs them for each shell.");
    return [shell, program = options.get_parent()] {
        const std::string script = scripts.at(*shell)(CompletionPlace::allOf(*program));
        return std::fputs(script.c_str(), stdout) >= 0 ? Done : Failed;
    };
}

} // namespace kestrel::ctl
