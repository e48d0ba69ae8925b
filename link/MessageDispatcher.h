#pragma once

namespace kestrel {

class MIDIMessage;

// Sends each packet from the console to the one place that it is for. Main thread only.
class MessageDispatcher {
public:
    // The four places.
    class Destinations {
    public:
        virtual void answerHeartbeat() = 0;
        virtual void redrawLCDdisplay(const MIDIMessage& message) = 0;
        virtual void redrawDSParea(const MIDIMessage& message) = 0;
        virtual void eventKeyPost(unsigned int buttonCode) = 0;

    protected:
        ~Destinations() = default;
    };

    // `destinations` outlive the dispatcher.
    explicit MessageDispatcher(Destinations& destinations)
        : m_destinations(destinations)
    {
    }

    // Classifies by the first message in the packet; what matches nothing is dropped.
    void receiveMessage(const MIDIMessage& message);

    [[nodiscard]] bool userAssignCmnd() const { return m_userAssignCmnd; }
    [[nodiscard]] bool switchLEDCmnd() const { return m_switchLEDCmnd; }

private:
    void receiveController(const MIDIMessage& message);

    Destinations& m_destinations;
    // A zone came in a packet of its own; its port is in a packet to come.
    bool m_userAssignCmnd = false;
    bool m_switchLEDCmnd = false;
};

} // namespace kestrel
