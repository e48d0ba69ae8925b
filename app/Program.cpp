#include "app/Program.h"

#include "app/ArgumentText.h"
#include "app/CommandLine.h"
#include "app/EndDeadline.h"
#include "app/Exhaustion.h"
#include "app/FileOpenEvents.h"
#include "app/QtMainLoop.h"
#include "app/RunningProgram.h"
#include "app/SecondStart.h"
#include "app/SingleInstance.h"
#include "app/StartBox.h"
#include "app/TerminationSignals.h"
#include "control/InstancePlace.h"
#include "link/Clock.h"
#include "platform/SessionFolder.h"
#include "platform/Utf8Path.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

namespace {

constexpr int ExitCodeOfWrongUsage = 2;

CommandLine commandLineOf(int count, char* arguments[])
{
    QStringList decoded;
    for (int i = 0; i < count; ++i)
        decoded.append(textOfArgument(arguments[i], utf8PathTo));
    return CommandLine(decoded);
}

// Counts the arguments before "--". QApplication gets only these, because a file after "--" may
// have the name of a Qt option.
int countForQt(int count, char* arguments[])
{
    const auto isEnd = [](const char* argument) { return argument == std::string_view("--"); };
    return static_cast<int>(std::find_if(arguments, arguments + count, isEnd) - arguments);
}

// What runProgram() makes before the program knows whether it is the only one.
struct Start {
    const ProgramParts& parts;
    QtMainLoop& mainLoop;
    std::function<void()>& terminate; // what an ending signal calls
    SingleInstance& instance;
    FileOpenEvents& fileOpenEvents;
};

int run(const Start& start, const QStringList& files)
{
    const SteadyClock clock;
    Platform platform = start.parts.makePlatform(start.mainLoop);
    RunningProgram program(platform,
        { start.mainLoop, clock, start.instance, start.fileOpenEvents }, EndDeadline::set);
    start.terminate = [&program] { program.terminate(); };
    const int exitCode = program.run(files);
    start.terminate = [] {};
    return exitCode;
}

SecondStart::Outcome handOver(SecondStart& second, FileOpenEvents& fileOpenEvents)
{
    fileOpenEvents.setHandler([&second](const QStringList& paths) { second.add(paths); });
    afterFilesOfLaunch([&second] { second.begin(); });
    const StartBox box(second);
    return second.wait();
}

int startAgain(const Start& start, const QStringList& files)
{
    using Outcome = SecondStart::Outcome;
    SecondStart second(start.instance, files);
    switch (handOver(second, start.fileOpenEvents)) {
    case Outcome::HandedOver:
        return EXIT_SUCCESS;
    case Outcome::Claimed:
        return run(start, second.files());
    case Outcome::Refused:
    case Outcome::Failed:
        StartBox::showProblem(second.problem());
        return EXIT_FAILURE;
    case Outcome::GivenUp:
        return EXIT_FAILURE;
    }
    return EXIT_FAILURE;
}

} // namespace

int runProgram(int argc, char* argv[], const ProgramParts& parts)
{
    const CommandLine commandLine = commandLineOf(argc, argv);
    if (const auto& answer = commandLine.answer()) {
        std::fputs(qPrintable(answer->text), answer->isError ? stderr : stdout);
        return answer->isError ? ExitCodeOfWrongUsage : EXIT_SUCCESS;
    }
    Exhaustion::endClearly();
    std::optional<std::string> problem = Exhaustion::problemAtStart();
    if (!problem)
        problem = prepareSession();
    if (problem) {
        std::fprintf(stderr, "kestrel: %s\n", problem->c_str());
        return EXIT_FAILURE;
    }
    argc = countForQt(argc, argv);
    const QApplication application(argc, argv);
    QApplication::setDesktopFileName(QStringLiteral("com.holvik.kestrel"));
    QApplication::setQuitOnLastWindowClosed(false);

    // Signals are handled before another start can find this one.
    QtMainLoop mainLoop;
    std::function<void()> terminate = [] { QCoreApplication::exit(EXIT_FAILURE); };
    const TerminationSignals terminationSignals(
        mainLoop, endingSignals(), [&terminate] { terminate(); });

    using Claim = SingleInstance::Claim;
    SingleInstance instance(instanceFolder(sessionFolder(), parts.instanceFolder));
    FileOpenEvents fileOpenEvents;
    const Start start { parts, mainLoop, terminate, instance, fileOpenEvents };
    switch (instance.claim()) {
    case Claim::First:
        return run(start, commandLine.files());
    case Claim::Taken:
        return startAgain(start, commandLine.files());
    case Claim::Failed:
        StartBox::showProblem(instance.problem());
        return EXIT_FAILURE;
    }
    return EXIT_FAILURE;
}

} // namespace kestrel
