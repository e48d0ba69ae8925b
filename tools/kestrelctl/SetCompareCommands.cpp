#include "sets/SetDiff.h"
#include "sets/SetMerge.h"
#include "tools/kestrelctl/SetArguments.h"
#include "tools/kestrelctl/SetCommands.h"

namespace kestrel::ctl {

namespace {
struct Merged {
    std::string base;
    std::string ours;
    std::string theirs;
};

ExitCode diff(const std::string& old, const std::string& now)
{
    const auto differences = SetDiff::between(readSet(old), readSet(now));
    QString lines;
    for (const SetDiff::Difference& difference : differences)
        lines
            += QStringLiteral("%1: %2 → %3\n").arg(difference.place, difference.was, difference.is);
    if (!print(lines.toUtf8()))
        return Trouble;
    return differences.empty() ? Done : Found;
}

ExitCode merge(const Merged& files, const Output& output)
{
    const SetMerge merge
        = SetMerge::of(readSet(files.base), readSet(files.ours), readSet(files.theirs));
    const Bytes archive = SetFile::archive(merge.set, QString::fromStdString(output.path));
    if (!output.write(archive))
        return Trouble;
    for (const SetMerge::Conflict& conflict : merge.conflicts)
        complain(QStringLiteral("conflict, %1: was %2; ours, which was taken: %3; theirs: %4")
                     .arg(conflict.place, conflict.base, conflict.ours, conflict.theirs)
                     .toStdString());
    return merge.conflicts.empty() ? Done : Found;
}

void addFile(CLI::App& options, const char* name, std::string& path, const char* description)
{
    options.add_option(name, path, description)->type_name("FILE")->required();
}
} // namespace

Run defineSetDiff(CLI::App& options)
{
    const auto old = std::make_shared<std::string>();
    const auto now = std::make_shared<std::string>();
    addFile(options, "old", *old, "A set, or its text");
    options.add_option("new", *now, "Another one; without it, the stored set")->type_name("FILE");
    options.footer("Ends with 0 if both are the same, 1 if they differ, 2 in trouble.");
    return [old, now] { return guarded(Trouble, [&] { return diff(*old, *now); }); };
}

Run defineSetMerge(CLI::App& options)
{
    const auto files = std::make_shared<Merged>();
    addFile(options, "base", files->base, "The set of which both were made");
    addFile(options, "ours", files->ours, "One of them, which wins conflicts");
    addFile(options, "theirs", files->theirs, "The other one");
    const auto output = Output::define(options, "The merged set (.ZKCF)");
    options.footer("Ends with 0 if all is merged, 1 after conflicts, 2 in trouble.");
    return [files, output] { return guarded(Trouble, [&] { return merge(*files, *output); }); };
}

} // namespace kestrel::ctl
