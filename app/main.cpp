#include "app/AppDelegate.h"
#include "app/FileOpenEvents.h"
#include "app/QtMainLoop.h"
#include "app/SingleInstance.h"
#include "app/TerminationSignals.h"
#include "link/Clock.h"
#include "platform/Platform.h"

#include <QApplication>
#include <QFileInfo>
#include <QSessionManager>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::chrono::milliseconds HandOverTimeout { 5000 };

// What has to be put in order when the toolkit ends the program by exit(), as it does when its
// connection to the display is gone.
struct Running {
    kestrel::AppDelegate* delegate = nullptr;
    kestrel::Platform* platform = nullptr;
} running;

void terminateRunning()
{
    if (!running.delegate)
        return;
    running.delegate->applicationWillTerminate();
    running.platform->keyEvents.reset(); // lets every key go that it holds
}

QStringList filesFromArguments()
{
    QStringList paths = QCoreApplication::arguments().mid(1);
    for (QString& path : paths)
        path = QFileInfo(path).absoluteFilePath();
    return paths;
}

int run(kestrel::SingleInstance& instance)
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
    // The session may end without a word more after this.
    QObject::connect(
        qGuiApp, &QGuiApplication::commitDataRequest, &delegate,
        [&delegate](QSessionManager&) { delegate.storeAssignments(); }, Qt::DirectConnection);

    running = { &delegate, &platform };
    std::atexit(terminateRunning);
    delegate.applicationDidFinishLaunching();
    if (const QStringList files = filesFromArguments(); !files.isEmpty())
        delegate.applicationOpenFiles(files);
    const int exitCode = QCoreApplication::exec();
    delegate.applicationWillTerminate();
    running = {};
    return exitCode;
}

} // namespace

int main(int argc, char* argv[])
{
    if (const auto problem = kestrel::prepareSession()) {
        std::fprintf(stderr, "kestrel: %s\n", problem->c_str());
        return EXIT_FAILURE;
    }
    const QApplication application(argc, argv);
    QApplication::setDesktopFileName(QStringLiteral("com.holvik.kestrel"));
    QApplication::setQuitOnLastWindowClosed(false);

    kestrel::SingleInstance instance(
        QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
        + QStringLiteral("/kestrel"));
    if (instance.claim())
        return run(instance);
    if (instance.handOver(filesFromArguments(), HandOverTimeout))
        return EXIT_SUCCESS;
    std::fputs("kestrel: another Kestrel is running, and it does not answer\n", stderr);
    return EXIT_FAILURE;
}
