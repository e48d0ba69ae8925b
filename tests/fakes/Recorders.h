#pragma once

#include "link/ConsoleDisplay.h"
#include "link/LinkListener.h"
#include "link/MIDIMessage.h"
#include "link/StatusItem.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrel::test {

// The bytes in upper-case hexadecimal, with a blank between them.
inline std::string hex(std::span<const std::uint8_t> bytes)
{
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += text.empty() ? "" : " ";
        text += Digits[byte >> 4];
        text += Digits[byte & 0x0F];
    }
    return text;
}

class RecordingDisplay final : public ConsoleDisplay {
public:
    void redrawLCDdisplay(const MIDIMessage& message) override
    {
        calls.push_back("LCD " + hex(message.readData()));
        note(message);
    }
    void redrawDSParea(const MIDIMessage& message) override
    {
        calls.push_back("DSP " + hex(message.readData()));
        note(message);
    }

    std::vector<std::string> calls;
    bool cameFromSource = false; // true if a message had a source or a packet's length

private:
    void note(const MIDIMessage& message)
    {
        cameFromSource = cameFromSource || message.sourceID() != 0 || message.length() != 0;
    }
};

class RecordingStatusItem final : public StatusItem {
public:
    void setImage(std::string_view imageName) override { images.emplace_back(imageName); }

    std::vector<std::string> images;
};

class RecordingLinkListener final : public LinkListener {
public:
    void linkChanged(LinkEvent event, std::string_view detail) override
    {
        events.push_back(event);
        details.emplace_back(detail);
    }

    std::vector<LinkEvent> events;
    std::vector<std::string> details;
};

} // namespace kestrel::test
