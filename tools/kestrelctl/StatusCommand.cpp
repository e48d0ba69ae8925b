#include "control/InstancePlace.h"
#include "control/StatusReport.h"
#include "platform/SessionFolder.h"
#include "tools/kestrelctl/Commands.h"
#include "tools/kestrelctl/Output.h"
#include "tools/kestrelctl/RunningKestrel.h"
#include "tools/kestrelctl/StatusText.h"

#include <memory>

namespace kestrel::ctl {

namespace {
ExitCode status(bool isJson)
{
    const auto reply = RunningKestrel(instanceSocket(instanceFolder(sessionFolder())))
                           .ask(InstanceMessage::Kind::Status);
    if (reply.outcome != RunningKestrel::Outcome::Answered) {
        complain(reply.problem);
        return Failed;
    }
    const auto report = StatusReport::fromJson(reply.message.body);
    if (!report) {
        complain("The running Kestrel has answered something else than its status.");
        return Failed;
    }
    if (isJson)
        return printLine(report->toJson().toStdString()) ? Done : Failed;
    for (const std::string& line : statusText(*report, QDateTime::currentDateTime())) {
        if (!printLine(line))
            return Failed;
    }
    return Done;
}
} // namespace

Run defineStatus(CLI::App& options)
{
    const auto isJson = std::make_shared<bool>(false);
    options.add_flag("--json", *isJson, "Print an object of JSON on one line");
    options.footer("Fails when Kestrel is not running or does not answer within five seconds.");
    return [isJson] { return status(*isJson); };
}

} // namespace kestrel::ctl
