#include "tools/kestrelctl/Commands.h"
#include "tools/kestrelctl/Output.h"
#include "tools/kestrelctl/doctor/Checks.h"

#include <QString>

#include <string>

namespace kestrel::ctl {

namespace {
constexpr std::size_t NameWidth = 12;

std::string lineOf(const NamedCheck& check, const Finding& finding)
{
    std::string name = check.name;
    name.resize(NameWidth, ' ');
    return (finding.isWrong ? "WRONG  " : "ok     ") + name
        + printable(QString::fromStdString(finding.text));
}

ExitCode examine()
{
    const DoctorFacts facts = DoctorFacts::gather();
    ExitCode result = Done;
    for (const NamedCheck& check : checks()) {
        const auto finding = check.check(facts);
        if (!finding)
            continue;
        if (!printLine(lineOf(check, *finding)) || finding->isWrong)
            result = Failed;
    }
    return result;
}
} // namespace

Run defineDoctor(CLI::App& options)
{
    options.footer(
        "A line for each check, which begins with \"ok\" or \"WRONG\". It changes nothing.");
    return examine;
}

} // namespace kestrel::ctl
