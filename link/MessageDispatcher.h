#pragma once

namespace kestrel {

class MIDIMessage;

// Classifies each packet from the console and passes it to its destination. Main thread only.
class MessageDispatcher {
public:
    // One function for each kind of packet.
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

    // The first MIDI message in the packet decides its kind. A packet of no known kind is dropped.
    void receiveMessage(const MIDIMessage& message);

    [[nodiscard]] bool userAssignCmnd() const { return m_userAssignCmnd; }
    [[nodiscard]] bool switchLEDCmnd() const { return m_switchLEDCmnd; }

private:
    void receiveController(const MIDIMessage& message);

    Destinations& m_destinations;
    // True when a packet has selected the zone and a later packet is to bring the port.
    bool m_userAssignCmnd = false;
    bool m_switchLEDCmnd = false;
};

} // namespace kestrel
