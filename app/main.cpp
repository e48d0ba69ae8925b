#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/FileOpenEvents.h"
#include "app/QtMainLoop.h"
#include "app/SingleInstance.h"
#include "app/TerminationSignals.h"
#include "link/Clock.h"
#include "platform/Platform.h"

#include <QApplication>
#include <QSessionManager>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <thread>

namespace {

constexpr std::chrono::milliseconds HandOverTimeout { 5000 };
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
        decoded.append(QString::fromLocal8Bit(arguments[i]));
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

int run(kestrel::SingleInstance& instance, const QStringList& files)
{
    using namespace kestrel;

    QtMainLoop mainLoop;
    const TerminationSignals terminationSignals(mainLoop, [] { QCoreApplication::quit(); });
    const SteadyClock clock;
    Platform platform = makePlatform(mainLoop);
    AppDelegate delegate(platform, mainLoop, clock);

    const FileOpenEvents fileOpenEvents(
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
    delegate.applicationWillTerminate();
    running = {};
    endAtTheLatest(exitCode);
    return exitCode;
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

    kestrel::SingleInstance instance(
        QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
        + QStringLiteral("/kestrel"));
    if (instance.claim())
        return run(instance, commandLine.files());
    if (instance.handOver(commandLine.files(), HandOverTimeout))
        return EXIT_SUCCESS;
    std::fputs("kestrel: another Kestrel is running, and it does not answer\n", stderr);
    return EXIT_FAILURE;
}
