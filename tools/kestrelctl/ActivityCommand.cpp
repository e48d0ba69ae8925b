#include "activity/Recording.h"
#include "control/ActivityLine.h"
#include "control/InstancePlace.h"
#include "platform/SessionFolder.h"
#include "tools/kestrelctl/ActivityReader.h"
#include "tools/kestrelctl/Commands.h"
#include "tools/kestrelctl/Output.h"

#include <memory>

namespace kestrel::ctl {

namespace {
// Empty for a line of a later version that this one does not know.
std::string lineForPeople(const QByteArray& line)
{
    if (const auto lost = droppedIn(line))
        return "… " + std::to_string(*lost) + " events were lost, because this reader was too slow";
    const auto read = ActivityLine::fromJson(line);
    return read ? printable(QString::fromStdString(Recording::line(read->event))) : std::string();
}

ExitCode activity(bool isJson)
{
    ActivityReader reader(instanceSocket(instanceFolder(sessionFolder())));
    if (!reader.begin())
        return Failed;
    while (const auto line = reader.next()) {
        const std::string text = isJson ? line->toStdString() : lineForPeople(*line);
        if (!text.empty() && !printLine(text))
            return Failed;
    }
    complain("Kestrel has ended.");
    return Done;
}
} // namespace

Run defineActivity(CLI::App& options)
{
    const auto isJson = std::make_shared<bool>(false);
    options.add_flag("--json", *isJson, "Print an object of JSON for each event");
    options.footer("Begins with the last 4,096 events, and goes on until Kestrel or this ends.");
    return [isJson] { return activity(*isJson); };
}

} // namespace kestrel::ctl
