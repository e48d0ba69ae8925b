#include "platform/linux/x11/HeldKeysJournal.h"

#include "platform/SessionFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

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
} // namespace

struct HeldKeysJournal::Content {
    std::array<std::uint8_t, Mark.size()> mark;
    std::array<std::uint8_t, 32> bits;
};

std::string HeldKeysJournal::pathFor(std::string_view display)
{
    const std::string folder = sessionFolder();
    return folder.empty() ? folder : folder + "/kestrel-held-keys-" + mangled(display);
}

HeldKeysJournal::HeldKeysJournal(const std::string& path)
{
    static_assert(sizeof(Content) == FileSize);
    if (path.empty())
        return;
    m_descriptor = openOwn(path);
    struct stat status { };
    if (m_descriptor < 0 || ::fstat(m_descriptor, &status) != 0)
        return;
    // Allocates the file's blocks now: on a full disk, a store into a hole of the mapped file would
    // raise a fatal signal.
    const bool foreign = status.st_size != static_cast<off_t>(FileSize);
    if ((foreign && ::ftruncate(m_descriptor, 0) != 0)
        || ::posix_fallocate(m_descriptor, 0, FileSize) != 0)
        return;
    void* memory = ::mmap(nullptr, FileSize, PROT_READ | PROT_WRITE, MAP_SHARED, m_descriptor, 0);
    if (memory == MAP_FAILED)
        return;
    m_content = static_cast<Content*>(memory);
    if (m_content->mark != Mark)
        *m_content = { Mark, {} };
}

HeldKeysJournal::~HeldKeysJournal()
{
    if (m_content)
        ::munmap(m_content, FileSize);
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

HeldKeysJournal::HeldKeysJournal(HeldKeysJournal&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_content(std::exchange(other.m_content, nullptr))
{
}

HeldKeysJournal& HeldKeysJournal::operator=(HeldKeysJournal&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_content, other.m_content);
    return *this;
}

XKeySet HeldKeysJournal::keys() const
{
    XKeySet keys;
    for (std::size_t key = 0; m_content && key < keys.size(); ++key)
        keys.set(key, (m_content->bits[key / 8] >> (key % 8) & 1) != 0);
    return keys;
}

void HeldKeysJournal::enter(XKeyCode key)
{
    if (m_content)
        m_content->bits[key / 8] |= static_cast<std::uint8_t>(1 << (key % 8));
}

void HeldKeysJournal::strike(XKeyCode key)
{
    if (m_content)
        m_content->bits[key / 8] &= static_cast<std::uint8_t>(~(1 << (key % 8)));
}

} // namespace kestrel
