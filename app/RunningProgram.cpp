#include "app/RunningProgram.h"

#include "app/FileOpenEvents.h"
#include "app/SingleInstance.h"
#include "platform/Platform.h"

#include <QGuiApplication>
#include <QSessionManager>

#include <cstdlib>

namespace kestrel {

namespace {
constexpr unsigned OrderlyEndSeconds = 10; // to take the link down and to store the assignments
constexpr unsigned ClosingSeconds = 3; // to close the windows, after that

RunningProgram* running = nullptr;
} // namespace

RunningProgram::RunningProgram(
    Platform& platform, const Surroundings& surroundings, SetDeadline setDeadline)
    : m_platform(platform)
    , m_instance(surroundings.instance)
    , m_fileOpenEvents(surroundings.fileOpenEvents)
    , m_setDeadline(setDeadline)
    , m_delegate(platform, surroundings.mainLoop, surroundings.clock)
    , m_requests(platform, m_delegate, surroundings.clock)
{
    m_fileOpenEvents.setHandler(
        [this](const QStringList& files) { m_delegate.applicationOpenFiles(files); });
    QObject::connect(&m_instance, &SingleInstance::startedAgain, &m_delegate,
        [this](const QStringList& files) { startAgain(files); });
    m_instance.setRequests(
        [this](const InstanceMessage& request) { return m_requests.answer(request); });
    // The session may end the program after this signal without another message.
    QObject::connect(
        qGuiApp, &QGuiApplication::commitDataRequest, &m_delegate,
        [this](QSessionManager&) { m_delegate.storeAssignments(); }, Qt::DirectConnection);
    platform.workspace->setQuitRequested([this] { terminate(); });
    // Closing the windows comes last, because it may hang with the X server.
    m_delegate.setEnding([this](AppDelegate::Ending ending) {
        if (ending == AppDelegate::Ending::Storing)
            m_setDeadline(OrderlyEndSeconds, EXIT_FAILURE);
        else
            m_setDeadline(ClosingSeconds, EXIT_SUCCESS);
    });

    running = this;
    [[maybe_unused]] static const int registered = std::atexit(endAtExit);
}

RunningProgram::~RunningProgram()
{
    running = nullptr;
    m_instance.setRequests({});
    m_platform.workspace->setQuitRequested({});
    m_fileOpenEvents.setHandler({});
}

int RunningProgram::run(const QStringList& files)
{
    m_delegate.applicationDidFinishLaunching();
    if (!files.isEmpty())
        m_delegate.applicationOpenFiles(files);
    const int exitCode = QCoreApplication::exec();
    m_instance.close(); // a start from now on waits for the end of this program
    m_fileOpenEvents.setHandler({});
    m_setDeadline(OrderlyEndSeconds, EXIT_FAILURE);
    m_delegate.applicationWillTerminate();
    m_setDeadline(ClosingSeconds, exitCode);
    running = nullptr;
    return exitCode;
}

void RunningProgram::terminate()
{
    m_delegate.terminate();
}

// Qt calls exit() when it loses its connection to the display, and then no destructor runs.
void RunningProgram::endAtExit()
{
    if (!running)
        return;
    running->m_setDeadline(OrderlyEndSeconds, EXIT_FAILURE);
    running->m_delegate.applicationWillTerminate();
    running->m_platform.keyEvents.reset(); // releases every key that it holds
}

void RunningProgram::startAgain(const QStringList& files)
{
    if (files.isEmpty())
        m_delegate.userAssign();
    else
        m_delegate.applicationOpenFiles(files);
}

} // namespace kestrel
