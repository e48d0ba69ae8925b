#include "platform/KnownKeys.h"
#include "platform/RunningLayout.h"
#include "sets/SetCheck.h"
#include "sets/SetWords.h"
#include "tools/kestrelctl/SetArguments.h"
#include "tools/kestrelctl/SetCommands.h"

#include <iostream>

namespace kestrel::ctl {

namespace {
// The layout outlives the keyboard. Null if none can be asked.
SetCheck::Keyboard keyboardWith(RunningLayout* layout)
{
    SetCheck::Keyboard keyboard { hasKeyOnKeyboards, {} };
    if (layout)
        keyboard.characters = [layout](KeyCode key) {
            const auto characters = layout->charactersOf(key);
            return characters ? QStringList { QString::fromStdString(characters->plain),
                QString::fromStdString(characters->withShift) }
                              : QStringList();
        };
    return keyboard;
}

std::vector<SetCheck::Finding> findingsIn(const std::string& path, RunningLayout* layout)
{
    try {
        return SetCheck::findings(readSet(path), keyboardWith(layout));
    } catch (const SetFile::Error& error) {
        if (error.kind() == SetFile::Error::Kind::Unreadable)
            throw;
        return { { SetCheck::Kind::Damage, {}, QString::fromUtf8(error.what()) } };
    }
}

ExitCode check(const std::string& path, bool asJson)
{
    const auto layout = runningLayout();
    const auto findings = findingsIn(path, layout.get());
    if (!layout)
        std::cerr << "kestrelctl: no keyboard layout could be asked what its keys type\n";
    QByteArray report;
    if (asJson) {
        report = SetCheck::json(findings);
    } else {
        for (const SetCheck::Finding& finding : findings)
            report += (SetCheck::name(finding.kind) + QStringLiteral(": ")
                + SetWords::printable(finding.message) + u'\n')
                          .toUtf8();
    }
    if (!print(report))
        return Trouble;
    return findings.empty() ? Done : Found;
}
} // namespace

Run defineSetCheck(CLI::App& options)
{
    const auto path = defineSource(options);
    const auto asJson = std::make_shared<bool>(false);
    options.add_flag("--json", *asJson, "Print the findings as JSON");
    options.footer("Ends with 0 if there is nothing to say, 1 if there is, 2 in trouble.");
    return [path, asJson] { return guarded(Trouble, [&] { return check(*path, *asJson); }); };
}

} // namespace kestrel::ctl
