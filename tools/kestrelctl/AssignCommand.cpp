#include "archive/AtomicFile.h"
#include "sets/ShortcutParser.h"
#include "tools/kestrelctl/Commands.h"
#include "tools/kestrelctl/SetArguments.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::ctl {

namespace {
struct Request {
    int key = 0;
    std::vector<std::string> shortcuts;
    std::optional<std::string> title;
    std::optional<std::string> file; // the command writes this file instead of the stored set
};

// An empty or omitted text empties its record.
std::optional<std::vector<TypedShortcut>> parsed(const std::vector<std::string>& texts)
{
    std::vector<TypedShortcut> shortcuts;
    for (const std::string& text : texts) {
        const auto shortcut = text.empty() ? std::optional<TypedShortcut>(TypedShortcut())
                                           : TypedShortcut::parse(QString::fromStdString(text));
        if (!shortcut) {
            complain("\"" + text + "\" names no key");
            return std::nullopt;
        }
        shortcuts.push_back(*shortcut);
    }
    shortcuts.resize(ShortcutRecordCount);
    return shortcuts;
}

ExitCode change(UserAssignFile& set, const Request& request)
{
    if (!request.shortcuts.empty()) {
        const auto shortcuts = parsed(request.shortcuts);
        if (!shortcuts)
            return Misused;
        const ButtonEntry entry = set.getSwitchShortcut(request.key);
        if (!entry || entry->size() < ButtonEntrySize) {
            complain("the stored set has no place for key " + std::to_string(request.key));
            return Failed;
        }
        for (std::size_t record = 0; record < ShortcutRecordCount; ++record)
            (*shortcuts)[record].writeTo(*entry, record);
    }
    if (request.title)
        set.setShortcutTitle(QString::fromStdString(*request.title), request.key);
    return Done;
}

ExitCode assign(const Request& request)
{
    using Unusable = StoredAssignments::Unusable;
    auto [defaults, stored]
        = StoredSet::open(request.file ? Unusable::LeftAlone : Unusable::KeptAside);
    UserAssignFile& set = *stored.myUserAssignFile();
    if (const ExitCode code = change(set, request); code != Done)
        return code;
    if (request.file) {
        const auto written
            = AtomicFile::write(QString::fromStdString(*request.file), set.fileImage());
        if (written)
            return Done;
        complain("cannot write " + *request.file + ": " + written.problem.toStdString());
        return Failed;
    }
    if (stored.writeUserDefault())
        return Done;
    complain("cannot write " + defaults.place + ": " + stored.problem());
    return Failed;
}
} // namespace

Run defineAssign(CLI::App& options)
{
    const auto request = std::make_shared<Request>();
    options.add_option("key", request->key, "Number of the key, 1 to 12")
        ->check(CLI::Range(1, UserAssignFile::ButtonCount))
        ->required();
    const auto* const shortcuts
        = options
              .add_option("shortcuts", request->shortcuts,
                  "Up to four, as in ⌘S, Option+F5, \"Shift+Page Down\"; \"\" is none")
              ->expected(1, static_cast<int>(ShortcutRecordCount));
    const auto* const title
        = options.add_option("--title", request->title, "Title of the key")->type_name("TITLE");
    options
        .add_option("--to", request->file,
            "Write the stored set with this change to a file (.ZKCF), and store nothing")
        ->type_name("FILE");
    options.callback([shortcuts, title] {
        if (!*shortcuts && !*title)
            throw CLI::RequiredError("shortcuts or --title");
    });
    options.footer("A Kestrel that runs keeps its own set and stores that when it ends.");
    return [request] { return guarded(Failed, [&] { return assign(*request); }); };
}

} // namespace kestrel::ctl
