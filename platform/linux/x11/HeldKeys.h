#pragma once

#include "platform/linux/x11/HeldKeysJournal.h"
#include "platform/linux/x11/KeyLedger.h"
#include "platform/linux/x11/KeyServer.h"

#include <string>

namespace kestrel {

// Posts the plans of the ledger and keeps the journal in step with the server: the journal has
// every key that we may have left down in the server, at any moment. A key enters the journal
// before the server gets its press, and is struck out once the server has answered something that
// was sent after its release.
class HeldKeys {
public:
    explicit HeldKeys(KeyServer& server);

    [[nodiscard]] KeyLedger& ledger() { return m_ledger; }

    // Keeps the journal at this path from now on.
    void openJournal(const std::string& path);
    // Posts a plan that the ledger has just made.
    void post(const KeyPlan& plan);
    // Releases the keys that a killed run, or we ourselves on a broken connection, left down.
    void letGoOfWhatWasLeftDown();
    // The server has sent something that comes after its handling of the request of this number.
    void answered(unsigned request);
    // The connection is gone, and with it perhaps the last requests.
    void connectionLost();
    // Releases everything before the connection ends. settle() must follow.
    void releaseForGood();
    // Waits until the server has handled all releases. Without an answer, the keys stay in the
    // journal for the next start: the server may drop unread requests of a client that disconnects.
    void settle();

private:
    void queue(const KeyPlan& plan);
    void strikeReleased();

    KeyServer& m_server;
    KeyLedger m_ledger;
    XKeySet m_leftDown; // keys left down on connections that broke
    HeldKeysJournal m_journal;
    std::string m_journalPath;
    // Released keys that are still in the journal, because the server may not know of the release.
    XKeySet m_released;
    unsigned m_lastRelease = 0; // sequence number of the last release's request
};

} // namespace kestrel
