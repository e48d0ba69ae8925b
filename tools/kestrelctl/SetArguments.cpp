#include "tools/kestrelctl/SetArguments.h"

#include "archive/AtomicFile.h"

#include <QFileInfo>

#include <cstdio>
#include <utility>

namespace kestrel::ctl {

std::shared_ptr<Output> Output::define(CLI::App& options, const std::string& description)
{
    auto output = std::make_shared<Output>();
    options.add_option("-o,--output", output->path, description)->type_name("FILE")->required();
    options.add_flag("--force", output->replaces, "Replace the file if there is one");
    return output;
}

bool Output::write(ByteView content) const
{
    const QString file = QString::fromStdString(path);
    const QFileInfo info(file);
    if (!replaces && (info.exists() || info.isSymLink())) {
        complain(path + " is there already; --force replaces it");
        return false;
    }
    const auto written = AtomicFile::write(file, content);
    if (!written)
        complain("cannot write " + path + ": " + written.problem.toStdString());
    return static_cast<bool>(written);
}

std::shared_ptr<std::string> defineSource(CLI::App& options)
{
    auto path = std::make_shared<std::string>();
    options.add_option("file", *path, "A set, or its text; without it, the stored set")
        ->type_name("FILE");
    return path;
}

StoredSet StoredSet::open(StoredAssignments::Unusable unusable)
{
    StoredDefaults defaults = openStoredDefaults();
    if (const std::string problem = defaults.store->problem(); !problem.empty())
        throw SetFile::Error(SetFile::Error::Kind::Unreadable,
            QString::fromStdString("cannot read " + defaults.place + ": " + problem));
    StoredAssignments assignments(*defaults.store, defaults.recoveryFile, unusable);
    assignments.setupShortcutKey();
    return { std::move(defaults), std::move(assignments) };
}

SetText::Root readSet(const std::string& path)
{
    if (!path.empty())
        return SetFile::read(QString::fromStdString(path));
    const StoredSet stored = StoredSet::open();
    return SetFile::fromArchive(
        stored.assignments.myUserAssignFile()->fileImage(), QStringLiteral("the stored set"));
}

ExitCode guarded(ExitCode failure, const std::function<ExitCode()>& command)
{
    try {
        return command();
    } catch (const SetFile::Error& error) {
        complain(error.what());
        return failure;
    }
}

bool print(const QByteArray& utf8)
{
    return std::fwrite(utf8.constData(), 1, static_cast<std::size_t>(utf8.size()), stdout)
        == static_cast<std::size_t>(utf8.size())
        && std::fflush(stdout) == 0;
}

} // namespace kestrel::ctl
