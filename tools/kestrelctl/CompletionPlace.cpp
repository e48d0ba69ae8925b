#include "tools/kestrelctl/CompletionPlace.h"

#include <iterator>
#include <sstream>

namespace kestrel::ctl {

namespace {
using Word = CompletionPlace::Word;

bool isFile(const CLI::Option& option)
{
    return option.get_type_name() == "FILE";
}

// CLI::IsMember shows the values that it accepts as "TEXT:{bash,zsh}".
void addValues(const CLI::Option& argument, std::vector<Word>& words)
{
    const std::string type = argument.get_type_name();
    const auto start = type.find('{');
    const auto end = type.find('}');
    if (start == std::string::npos || end == std::string::npos)
        return;
    std::istringstream values(type.substr(start + 1, end - start - 1));
    for (std::string value; std::getline(values, value, ',');)
        words.push_back({ value, argument.get_description() });
}

void add(const CLI::Option& option, CompletionPlace& place)
{
    if (option.get_positional()) {
        place.takesFile = place.takesFile || isFile(option);
        addValues(option, place.words);
        return;
    }
    for (const std::string& name : option.get_lnames())
        place.options.push_back({ "--" + name, option.get_description(),
            option.get_expected_max() > 0, isFile(option) });
}
} // namespace

std::vector<CompletionPlace> CompletionPlace::allOf(
    const CLI::App& options, const std::string& path)
{
    CompletionPlace place { path, {}, {}, false };
    std::vector<CompletionPlace> below;
    for (const CLI::App* const command : options.get_subcommands({})) {
        place.words.push_back({ command->get_name(), command->get_description() });
        auto places = allOf(*command, path + ' ' + command->get_name());
        std::move(places.begin(), places.end(), std::back_inserter(below));
    }
    for (const CLI::Option* const option : options.get_options())
        add(*option, place);
    below.insert(below.begin(), std::move(place));
    return below;
}

} // namespace kestrel::ctl
