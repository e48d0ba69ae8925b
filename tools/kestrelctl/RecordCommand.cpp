#include "activity/Recording.h"
#include "control/ActivityLine.h"
#include "control/InstancePlace.h"
#include "platform/SessionFolder.h"
#include "tools/kestrelctl/ActivityReader.h"
#include "tools/kestrelctl/Commands.h"

#include <cerrno>
#include <fstream>
#include <memory>
#include <system_error>

namespace kestrel::ctl {

namespace {
// The script that the line adds to the recording.
std::string scriptOf(const QByteArray& line, Recording& recording)
{
    if (const auto lost = droppedIn(line))
        return "# " + std::to_string(*lost) + " events are missing here\n";
    const auto read = ActivityLine::fromJson(line);
    return read ? recording.entry(read->event) : std::string();
}

ExitCode failed(const std::string& path)
{
    complain("cannot write " + path + ": " + std::generic_category().message(errno));
    return Failed;
}

// The file is a whole script after each event, so that the user can end this at any time.
ExitCode record(const std::string& path)
{
    ActivityReader reader(instanceSocket(instanceFolder(sessionFolder())));
    if (!reader.begin())
        return Failed;
    std::ofstream file(path, std::ios::trunc);
    if (!file)
        return failed(path);
    file << Recording::head() << std::flush;
    Recording recording;
    while (const auto line = reader.next()) {
        file << scriptOf(*line, recording) << std::flush;
        if (!file)
            return failed(path);
    }
    return Done;
}
} // namespace

Run defineRecord(CLI::App& options)
{
    const auto path = std::make_shared<std::string>();
    options.add_option("file", *path, "The recording, a script for zenta-console")
        ->required()
        ->type_name("FILE");
    options.footer("Begins with the last 4,096 events, and goes on until Kestrel or this ends. "
                   "An existing file is replaced.");
    return [path] { return record(*path); };
}

} // namespace kestrel::ctl
