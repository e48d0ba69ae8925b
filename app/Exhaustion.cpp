#include "app/Exhaustion.h"

#include <QString>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <string_view>
#include <system_error>
#include <vector>

namespace kestrel {

namespace {

// An online run with all windows has about 30 open files.
constexpr rlim_t OpenFiles = 40;
// The stacks of eight threads of 8 MiB, plug-ins, pictures and fonts.
constexpr std::size_t AddressSpace = 256 * 1024 * 1024;

QtMessageHandler messageHandlerBefore = nullptr;

// Allocates nothing.
[[noreturn]] void end(std::string_view reason)
{
    for (const std::string_view part :
        { std::string_view("kestrel: "), reason, std::string_view("\n") }) {
        [[maybe_unused]] const auto written = ::write(STDERR_FILENO, part.data(), part.size());
    }
    ::_exit(EXIT_FAILURE);
}

void endWithoutMemory()
{
    end("the system gives the program no more memory");
}

void endAfterException()
{
    try {
        if (const auto exception = std::current_exception())
            std::rethrow_exception(exception);
    } catch (const std::bad_alloc&) {
        endWithoutMemory();
    } catch (const std::system_error& error) {
        end(error.what());
    } catch (...) {
        // A fault of the program: the abort leaves a core dump.
    }
    std::abort();
}

void endAfterFatalMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtFatalMsg)
        end(qPrintable(message));
    messageHandlerBefore(type, context, message);
}

bool areFree(rlim_t files)
{
    std::vector<int> opened;
    while (opened.size() < files) {
        const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        if (descriptor < 0)
            break;
        opened.push_back(descriptor);
    }
    std::for_each(opened.begin(), opened.end(), ::close);
    return opened.size() == files;
}

bool mayOpenFiles()
{
    if (areFree(OpenFiles))
        return true;
    rlimit limit {};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = std::min(limit.rlim_max, limit.rlim_cur + OpenFiles);
    return ::setrlimit(RLIMIT_NOFILE, &limit) == 0 && areFree(OpenFiles);
}

bool mayReserve(std::size_t bytes)
{
    void* const memory = ::mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANON, -1, 0);
    return memory != MAP_FAILED && ::munmap(memory, bytes) == 0;
}

} // namespace

void Exhaustion::endClearly()
{
    std::set_new_handler(endWithoutMemory);
    std::set_terminate(endAfterException);
    messageHandlerBefore = qInstallMessageHandler(endAfterFatalMessage);
}

std::optional<std::string> Exhaustion::problemAtStart()
{
    if (!mayOpenFiles())
        return "Kestrel needs " + std::to_string(OpenFiles)
            + " open files, and the limit of this session (ulimit -n) leaves fewer.";
    if (!mayReserve(AddressSpace))
        return "Kestrel needs " + std::to_string(AddressSpace / 1024 / 1024)
            + " MiB of memory, and the limit of this session (ulimit -v) leaves less.";
    return {};
}

} // namespace kestrel
