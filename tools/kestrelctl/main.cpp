#include "archive/AtomicFile.h"
#include "assign/StoredAssignments.h"
#include "platform/linux/defaults/FileDefaultsStore.h"
#include "tools/assign-keys/ShortcutParser.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

using namespace kestrel;

namespace {

enum ExitCode { Done = 0, NotWritten = 1, Misused = 2 };

struct Request {
    int button = 0; // 0 = none
    std::vector<std::string> shortcuts;
    std::optional<std::string> title;
    std::optional<std::string> file; // the program writes this file instead of the stored set
    bool isShowing = false;
};

void setRecord(ArchiveArray& entry, std::size_t record, const TypedShortcut& shortcut)
{
    const std::size_t start = record * ShortcutRecordSize;
    entry.replace(start + ShortcutRecord::Modifiers, shortcut.modifiers);
    entry.replace(start + ShortcutRecord::KeyCode, shortcut.key.code);
    entry.replace(start + ShortcutRecord::Text, shortcut.key.name);
    entry.replace(start + ShortcutRecord::Repeat, false);
}

// An empty or omitted text empties its record.
std::optional<std::vector<TypedShortcut>> parsed(const std::vector<std::string>& texts)
{
    std::vector<TypedShortcut> shortcuts;
    for (const std::string& text : texts) {
        const auto shortcut = text.empty() ? std::optional<TypedShortcut>(TypedShortcut())
                                           : TypedShortcut::parse(QString::fromStdString(text));
        if (!shortcut) {
            std::fprintf(stderr, "kestrel-assign: \"%s\" names no key\n", text.c_str());
            return std::nullopt;
        }
        shortcuts.push_back(*shortcut);
    }
    shortcuts.resize(ShortcutRecordCount);
    return shortcuts;
}

void show(const UserAssignFile& set)
{
    for (int number = 1; number <= UserAssignFile::ButtonCount; ++number) {
        const QString title = set.getShortcutTitle(number).value_or(QString());
        QString line = QStringLiteral("%1 \"%2\"").arg(number).arg(title);
        const ButtonEntry entry = set.getSwitchShortcut(number);
        for (std::size_t i = 0; entry && i + ShortcutRecordSize <= entry->size();
             i += ShortcutRecordSize) {
            const QString name = entry->at(i + ShortcutRecord::Text).text();
            const auto modifiers
                = static_cast<ModifierFlags>(entry->at(i + ShortcutRecord::Modifiers).toInt32());
            if (!name.isEmpty())
                line += u' ' + shortcutText(modifiers, name);
        }
        std::printf("%s\n", line.toUtf8().constData());
    }
}

ExitCode assign(const Request& request, StoredAssignments& stored)
{
    UserAssignFile& set = *stored.myUserAssignFile();
    if (!request.shortcuts.empty()) {
        const auto shortcuts = parsed(request.shortcuts);
        if (!shortcuts)
            return Misused;
        const ButtonEntry entry = set.getSwitchShortcut(request.button);
        if (!entry || entry->size() < ButtonEntrySize) {
            std::fprintf(stderr, "kestrel-assign: the stored set has no place for button %d\n",
                request.button);
            return NotWritten;
        }
        for (std::size_t record = 0; record < ShortcutRecordCount; ++record)
            setRecord(*entry, record, (*shortcuts)[record]);
    }
    if (request.title)
        set.setShortcutTitle(QString::fromStdString(*request.title), request.button);
    if (request.file) {
        const auto written
            = AtomicFile::write(QString::fromStdString(*request.file), set.fileImage());
        if (written)
            return Done;
        std::fprintf(stderr, "kestrel-assign: cannot write %s: %s\n", request.file->c_str(),
            qUtf8Printable(written.problem));
        return NotWritten;
    }
    if (!stored.writeUserDefault()) {
        std::fprintf(stderr, "kestrel-assign: cannot write %s: %s\n",
            qUtf8Printable(FileDefaultsStore::standardPath()), stored.problem().c_str());
        return NotWritten;
    }
    return Done;
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App program("Assigns keyboard shortcuts and titles to the console's buttons.");
    Request request;
    auto* button = program.add_option("button", request.button, "Button number")
                       ->check(CLI::Range(1, UserAssignFile::ButtonCount));
    auto* shortcuts = program
                          .add_option("shortcuts", request.shortcuts,
                              "Up to four, as in ⌘S, Option+F5, \"Shift+Page Down\"; \"\" is none")
                          ->expected(1, static_cast<int>(ShortcutRecordCount))
                          ->needs(button);
    auto* title
        = program.add_option("--title", request.title, "Title of the button")->needs(button);
    program
        .add_option("--to", request.file,
            "Write the stored set with this change to a file (.ZKCF), and store nothing")
        ->needs(button);
    program.add_flag("--show", request.isShowing, "Print what is stored");
    try {
        program.parse(argc, argv);
        if (*button && !*shortcuts && !*title)
            throw CLI::RequiredError("shortcuts or --title");
        if (!*button && !request.isShowing)
            throw CLI::RequiredError("button or --show");
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? Done : Misused;
    }

    const auto defaults = makeFileDefaultsStore();
    StoredAssignments stored(*defaults, standardRecoveryFile());
    stored.setupShortcutKey();
    const ExitCode code = *button ? assign(request, stored) : Done;
    if (code == Done && request.isShowing)
        show(*stored.myUserAssignFile());
    return code;
}
