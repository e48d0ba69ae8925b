#include "fuzz/OwnFolder.h"
#include "fuzz/Target.h"
#include "fuzz/held-keys/ModelProgram.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <memory>

namespace kestrel::fuzz {
namespace {

// A few keys suffice, and meet more often. The first ones are modifiers.
constexpr std::array<XKeyCode, 8> Keys { 37, 50, 64, 133, 0, 38, 39, 255 };
constexpr std::size_t Modifiers = 4;

constexpr std::size_t JournalSize = 40; // eight bytes that mark it, then one bit per keycode

// The file of the journal, which is open for the whole process.
struct JournalFile {
    OwnFolder folder;
    std::string path = folder.file("journal");
    int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
};

const JournalFile& journalFile()
{
    static const JournalFile file;
    return file;
}

// Plays what the bytes say: keys, stalls, lost connections, kills, restarts. After each act, the
// journal must have every key of ours that is down in the server. At the end of a run that is
// answered, no key may be down.
class Play {
public:
    explicit Play(std::span<const std::uint8_t> acts)
        : m_acts(acts)
    {
        if (::ftruncate(journalFile().descriptor, 0) != 0)
            std::abort();
        m_firstRequest = next() % 2 == 0 ? 1 : ~0u - 4; // the numbers may wrap around
        start();
    }

    std::string run()
    {
        while (!m_acts.empty()) {
            act(next());
            if (auto fault = unrecordedKey(); !fault.empty())
                return fault;
        }
        return endInPeace();
    }

private:
    std::uint8_t next()
    {
        if (m_acts.empty())
            return 0;
        const std::uint8_t byte = m_acts.front();
        m_acts = m_acts.subspan(1);
        return byte;
    }
    XKeyCode nextKey() { return Keys[next() % Keys.size()]; }

    // The keys of Keys whose bits are set.
    static XKeySet keys(unsigned bits)
    {
        XKeySet keys;
        for (std::size_t i = 0; i < Keys.size(); ++i) {
            if ((bits >> i & 1) != 0)
                keys.set(Keys[i]);
        }
        return keys;
    }
    static std::vector<XKeyCode> modifiers(unsigned bits)
    {
        std::vector<XKeyCode> modifiers;
        for (std::size_t i = 0; i < Modifiers; ++i) {
            if ((bits >> i & 1) != 0)
                modifiers.push_back(Keys[i]);
        }
        return modifiers;
    }

    void start()
    {
        m_program = std::make_unique<ModelProgram>(m_server, journalFile().path, m_firstRequest);
        m_program->connect();
    }

    // The server reads some of what a client has written that is gone, and drops the rest.
    void disconnect(std::size_t stillRead)
    {
        m_server.handle(stillRead);
        m_server.dropUnread();
    }

    void act(std::uint8_t what)
    {
        switch (what % 16) {
        case 0: {
            const std::uint8_t how = next();
            m_program->press(nextKey(), modifiers(how),
                (how & 0x10) != 0 ? KeyEvents::AutoRepeat::Yes : KeyEvents::AutoRepeat::No);
            break;
        }
        case 1:
            m_program->pressBare(nextKey());
            break;
        case 2:
            m_program->release(nextKey());
            break;
        case 3: // the front changes, the link is lost, or a packet
            m_program->releaseAll();
            break;
        case 4: {
            const std::uint8_t held = next();
            m_program->setUserKeys(keys(held), keys(held & 0x0F));
            break;
        }
        case 5:
            if (!m_server.standsStill())
                m_server.handle(next());
            break;
        case 6:
            m_program->sendEvent();
            break;
        case 7:
            m_program->takeIn();
            break;
        case 8:
            m_server.standStill();
            break;
        case 9:
            m_server.goOn();
            break;
        case 10:
            m_server.handle(next());
            m_program->loseConnection();
            break;
        case 11:
            m_program->connect();
            break;
        case 12: // a kill
            m_program.reset();
            disconnect(next());
            start();
            break;
        case 13:
            m_program->end();
            m_program.reset();
            disconnect(next());
            start();
            break;
        case 14:
            m_server.restart();
            m_program->loseConnection();
            break;
        default: {
            const std::uint8_t key = next();
            key % 2 == 0 ? m_server.pressForAnother(Keys[key / 2 % Keys.size()])
                         : m_server.releaseForAnother(Keys[key / 2 % Keys.size()]);
        }
        }
    }

    [[nodiscard]] XKeySet recorded() const
    {
        std::array<std::uint8_t, JournalSize> content {};
        const bool isRead = ::pread(journalFile().descriptor, content.data(), content.size(), 0)
            == std::ssize(content);
        XKeySet keys;
        for (std::size_t key = 0; isRead && key < keys.size(); ++key)
            keys.set(key, (content[8 + key / 8] >> (key % 8) & 1) != 0);
        return keys;
    }

    [[nodiscard]] std::string unrecordedKey() const
    {
        const XKeySet unrecorded = m_server.ours() & ~recorded();
        for (const XKeyCode key : Keys) {
            if (unrecorded.test(key))
                return "a kill now would leave key " + std::to_string(key) + " down for good";
        }
        return {};
    }

    // The server answers again, and the next run ends in order.
    std::string endInPeace()
    {
        m_server.goOn();
        m_program->takeIn();
        m_program->connect();
        m_program->takeIn();
        m_program->end();
        if (m_server.ours().any())
            return "a key stays down after the end";
        if (recorded().any())
            return "the journal keeps a key that is up";
        return {};
    }

    std::span<const std::uint8_t> m_acts;
    unsigned m_firstRequest = 0;
    ModelServer m_server;
    std::unique_ptr<ModelProgram> m_program;
};

} // namespace

std::string fault(std::span<const std::uint8_t> input)
{
    return Play(input).run();
}

} // namespace kestrel::fuzz
