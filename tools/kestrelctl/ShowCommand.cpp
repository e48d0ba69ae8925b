#include "sets/ShortcutParser.h"
#include "tools/kestrelctl/Commands.h"
#include "tools/kestrelctl/SetArguments.h"

#include <cstdio>

namespace kestrel::ctl {

namespace {
QString shortcutTexts(const ButtonEntry& entry)
{
    QString texts;
    for (std::size_t i = 0; entry && i + ShortcutRecordSize <= entry->size();
         i += ShortcutRecordSize) {
        const QString name = entry->at(i + ShortcutRecord::Text).text();
        const auto modifiers
            = static_cast<ModifierFlags>(entry->at(i + ShortcutRecord::Modifiers).toInt32());
        if (!name.isEmpty())
            texts += u' ' + shortcutText(modifiers, name);
    }
    return texts;
}

ExitCode showStored()
{
    const StoredSet stored = StoredSet::open();
    const UserAssignFile& set = *stored.assignments.myUserAssignFile();
    for (int number = 1; number <= UserAssignFile::ButtonCount; ++number) {
        const QString title = set.getShortcutTitle(number).value_or(QString());
        std::printf("%d \"%s\"%s\n", number, qUtf8Printable(title),
            qUtf8Printable(shortcutTexts(set.getSwitchShortcut(number))));
    }
    return Done;
}
} // namespace

Run defineShow(CLI::App& options)
{
    options.footer("One line for each key: its number, its title and its shortcuts.");
    return [] { return guarded(Failed, showStored); };
}

} // namespace kestrel::ctl
