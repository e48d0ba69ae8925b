#pragma once

#include "activity/ActivityLog.h"
#include "activity/LinkHealth.h"
#include "assign/Keystroke.h"
#include "link/LinkListener.h"

namespace kestrel {

class MIDIMessage;

// Keeps what comes from the console, after it was handled, and what happens to the link. Allocates
// nothing, so that the next key waits for nothing. Main thread only.
class ActivityRecorder final : public LinkListener {
public:
    // Outlives the recorder.
    explicit ActivityRecorder(const Clock& clock);

    // What became of the packet that is handled at present. Without such a call it is recorded
    // as ignored, or as awaited if it selects a zone.
    void noteHeartbeat(bool answered);
    void noteShown() { m_outcome = ActivityEvent::Outcome::Shown; }
    void noteKey(const Keystroke& stroke);
    // The packet has been handled.
    void record(const MIDIMessage& message);

    void notePermission(bool granted) { m_health.notePermission(granted); }
    // A state that lasts is kept once, however often it is told.
    void linkChanged(LinkEvent event, std::string_view detail) override;

    [[nodiscard]] const ActivityLog& log() const { return m_log; }
    [[nodiscard]] const LinkHealth& health() const { return m_health; }

private:
    [[nodiscard]] bool isKnown(LinkEvent event) const;
    [[nodiscard]] ActivityEvent eventNow(ActivityEvent::Kind kind);
    void keep(const ActivityEvent& event);

    const Clock& m_clock;
    ActivityLog m_log;
    LinkHealth m_health;
    ActivityEvent::Outcome m_outcome = ActivityEvent::Outcome::Ignored;
    KeystrokeText m_text;
};

} // namespace kestrel
