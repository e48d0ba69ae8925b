#include "platform/linux/x11/HeldKeysJournal.h"

#include "platform/SessionFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace kestrel {

namespace {
constexpr std::array<std::uint8_t, 8> Mark { 'K', 'e', 's', 't', 'K', 'e', 'y', '1' };

// Makes a part of a file name from a display's name without its screen number: `host:0.1` and
// `host:0` are one display. Two different displays never get the same name.
std::string mangled(std::string_view display)
{
    const auto colon = display.rfind(':');
    const auto dot = display.find('.', colon == std::string_view::npos ? 0 : colon);
    std::string name;
    for (const char character : display.substr(0, dot)) {
        const bool plain = (character >= '0' && character <= '9')
            || (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
        if (plain) {
            name += character;
        } else {
            static constexpr char Digits[] = "0123456789abcdef";
            const auto byte = static_cast<unsigned char>(character);
            name += { '_', Digits[byte >> 4], Digits[byte & 15] };
        }
    }
    return name;
}

// Opens and locks the journal. Returns -1 unless it is a plain file of this user that no other
// process has locked.
int openOwn(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    struct stat status { };
    if (descriptor >= 0 && ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)
        && status.st_uid == ::geteuid() && status.st_nlink == 1
        && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0)
        return descriptor;
    if (descriptor >= 0)
        ::close(descriptor);
    return -1;
}

constexpr ssize_t FileSize = 40;
using Content = std::array<std::uint8_t, FileSize>;

bool isJournal(const Content& content)
{
    return std::equal(Mark.begin(), Mark.end(), content.begin());
}

XKeySet keysOf(const Content& content)
{
    XKeySet keys;
    for (std::size_t key = 0; key < keys.size(); ++key)
        keys.set(key, (content[Mark.size() + key / 8] >> (key % 8) & 1) != 0);
    return keys;
}

Content contentFor(const XKeySet& keys)
{
    Content content {};
    std::copy(Mark.begin(), Mark.end(), content.begin());
    for (std::size_t key = 0; key < keys.size(); ++key) {
        if (keys.test(key))
            content[Mark.size() + key / 8] |= static_cast<std::uint8_t>(1 << (key % 8));
    }
    return content;
}
} // namespace

std::string HeldKeysJournal::pathFor(std::string_view display)
{
    const std::string folder = sessionFolder();
    return folder.empty() ? folder : folder + "/kestrel-held-keys-" + mangled(display);
}

// O_NONBLOCK: a FIFO in the place of the journal is not waited for.
XKeySet HeldKeysJournal::keysIn(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor < 0)
        return {};
    Content content {};
    const bool isWhole = ::read(descriptor, content.data(), content.size()) == FileSize;
    ::close(descriptor);
    return isWhole && isJournal(content) ? keysOf(content) : XKeySet();
}

HeldKeysJournal::HeldKeysJournal(const std::string& path)
{
    if (path.empty())
        return;
    m_descriptor = openOwn(path);
    if (m_descriptor < 0)
        return;
    Content content {};
    struct stat status { };
    const bool wasJournal = ::fstat(m_descriptor, &status) == 0 && status.st_size == FileSize
        && ::pread(m_descriptor, content.data(), content.size(), 0) == FileSize
        && isJournal(content);
    if (wasJournal)
        m_keys = keysOf(content);
    // Allocates the file's blocks now, so that a disk that fills up later does not matter.
    if ((!wasJournal && ::ftruncate(m_descriptor, 0) != 0)
        || ::posix_fallocate(m_descriptor, 0, FileSize) != 0 || !write())
        close();
}

HeldKeysJournal::~HeldKeysJournal()
{
    close();
}

HeldKeysJournal::HeldKeysJournal(HeldKeysJournal&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_keys(std::exchange(other.m_keys, {}))
{
}

HeldKeysJournal& HeldKeysJournal::operator=(HeldKeysJournal&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_keys, other.m_keys);
    return *this;
}

void HeldKeysJournal::enter(const XKeySet& keys)
{
    change(m_keys | keys);
}

void HeldKeysJournal::strike(const XKeySet& keys)
{
    change(m_keys & ~keys);
}

void HeldKeysJournal::change(const XKeySet& keys)
{
    if (!isOpen() || keys == m_keys)
        return;
    m_keys = keys;
    (void)write(); // the next change writes everything again
}

bool HeldKeysJournal::write() const
{
    const Content content = contentFor(m_keys);
    return ::pwrite(m_descriptor, content.data(), content.size(), 0) == FileSize;
}

void HeldKeysJournal::close()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    m_keys.reset();
}

} // namespace kestrel
