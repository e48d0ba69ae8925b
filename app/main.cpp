#include "app/AppDelegate.h"
#include "app/ArgumentText.h"
#include "app/CommandLine.h"
#include "app/FileOpenEvents.h"
#include "app/QtMainLoop.h"
#include "app/SecondStart.h"
#include "app/SingleInstance.h"
#include "app/StartBox.h"
#include "app/TerminationSignals.h"
#include "link/Clock.h"
#include "platform/Platform.h"
#include "platform/SessionFolder.h"
#include "platform/Utf8Path.h"

#include <QApplication>
#include <QFile>
#include <QSessionManager>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>

namespace {

constexpr std::chrono::milliseconds ClosingTimeout { 3000 };
constexpr int ExitCodeOfWrongUsage = 2;

// The objects that need an orderly end when Qt calls exit(), which it does when it loses its
// connection to the display.
struct Running {
    kestrel::AppDelegate* delegate = nullptr;
    kestrel::Platform* platform = nullptr;
} running;

void terminateRunning()
{
    if (!running.delegate)
        return;
    running.delegate->applicationWillTerminate();
    running.platform->keyEvents.reset(); // releases every key that it holds
}

kestrel::CommandLine commandLineOf(int count, char* arguments[])
{
    QStringList decoded;
    for (int i = 0; i < count; ++i)
        decoded.append(kestrel::textOfArgument(arguments[i], kestrel::utf8PathTo));
    return kestrel::CommandLine(decoded);
}

// Counts the arguments before "--". QApplication gets only these, because a file after "--" may
// have the name of a Qt option.
int countForQt(int count, char* arguments[])
{
    const auto isEnd = [](const char* argument) { return argument == std::string_view("--"); };
    return static_cast<int>(std::find_if(arguments, arguments + count, isEnd) - arguments);
}

// Ends the process after ClosingTimeout. Qt waits without limit for an X server that has stopped,
// even when it closes its windows. The assignments are stored before this is called.
void endAtTheLatest(int exitCode)
{
    std::thread([exitCode] {
        std::this_thread::sleep_for(ClosingTimeout);
        std::_Exit(exitCode);
    }).detach();
}

int run(kestrel::SingleInstance& instance, kestrel::FileOpenEvents& fileOpenEvents,
    const QStringList& files)
{
    using namespace kestrel;

    QtMainLoop mainLoop;
    const TerminationSignals terminationSignals(mainLoop, [] { QCoreApplication::quit(); });
    const SteadyClock clock;
    Platform platform = makePlatform(mainLoop);
    AppDelegate delegate(platform, mainLoop, clock);

    fileOpenEvents.setHandler(
        [&delegate](const QStringList& paths) { delegate.applicationOpenFiles(paths); });
    QObject::connect(
        &instance, &SingleInstance::startedAgain, &delegate, [&delegate](const QStringList& paths) {
            if (paths.isEmpty())
                delegate.userAssign();
            else
                delegate.applicationOpenFiles(paths);
        });
    // The session may end the program after this signal without another message.
    QObject::connect(
        qGuiApp, &QGuiApplication::commitDataRequest, &delegate,
        [&delegate](QSessionManager&) { delegate.storeAssignments(); }, Qt::DirectConnection);

    running = { &delegate, &platform };
    std::atexit(terminateRunning);
    delegate.applicationDidFinishLaunching();
    if (!files.isEmpty())
        delegate.applicationOpenFiles(files);
    const int exitCode = QCoreApplication::exec();
    instance.close(); // a start from now on waits for the end of this program
    fileOpenEvents.setHandler({});
    delegate.applicationWillTerminate();
    running = {};
    endAtTheLatest(exitCode);
    return exitCode;
}

kestrel::SecondStart::Outcome handOver(
    kestrel::SecondStart& start, kestrel::FileOpenEvents& fileOpenEvents)
{
    fileOpenEvents.setHandler([&start](const QStringList& paths) { start.add(paths); });
    kestrel::afterFilesOfLaunch([&start] { start.begin(); });
    const kestrel::StartBox box(start);
    return start.wait();
}

int startAgain(kestrel::SingleInstance& instance, kestrel::FileOpenEvents& fileOpenEvents,
    const QStringList& files)
{
    using Outcome = kestrel::SecondStart::Outcome;
    kestrel::SecondStart start(instance, files);
    switch (handOver(start, fileOpenEvents)) {
    case Outcome::HandedOver:
        return EXIT_SUCCESS;
    case Outcome::Claimed:
        return run(instance, fileOpenEvents, start.files());
    case Outcome::Refused:
    case Outcome::Failed:
        kestrel::StartBox::showProblem(start.problem());
        return EXIT_FAILURE;
    case Outcome::GivenUp:
        return EXIT_FAILURE;
    }
    return EXIT_FAILURE;
}

QString folderOfInstance()
{
    const std::string session = kestrel::sessionFolder();
    return session.empty() ? QString() : QFile::decodeName(session.c_str()) + "/kestrel";
}

} // namespace

int main(int argc, char* argv[])
{
    const kestrel::CommandLine commandLine = commandLineOf(argc, argv);
    if (const auto& answer = commandLine.answer()) {
        std::fputs(qPrintable(answer->text), answer->isError ? stderr : stdout);
        return answer->isError ? ExitCodeOfWrongUsage : EXIT_SUCCESS;
    }
    if (const auto problem = kestrel::prepareSession()) {
        std::fprintf(stderr, "kestrel: %s\n", problem->c_str());
        return EXIT_FAILURE;
    }
    argc = countForQt(argc, argv);
    const QApplication application(argc, argv);
    QApplication::setDesktopFileName(QStringLiteral("com.holvik.kestrel"));
    QApplication::setQuitOnLastWindowClosed(false);

    using Claim = kestrel::SingleInstance::Claim;
    kestrel::SingleInstance instance(folderOfInstance());
    kestrel::FileOpenEvents fileOpenEvents;
    switch (instance.claim()) {
    case Claim::First:
        return run(instance, fileOpenEvents, commandLine.files());
    case Claim::Taken:
        return startAgain(instance, fileOpenEvents, commandLine.files());
    case Claim::Failed:
        kestrel::StartBox::showProblem(instance.problem());
        return EXIT_FAILURE;
    }
    return EXIT_FAILURE;
}
