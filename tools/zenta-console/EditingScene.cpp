#include "tools/zenta-console/EditingScene.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <string>

namespace kestrel::console {

namespace {
using std::chrono::milliseconds;

constexpr milliseconds TurnStep { 45 }; // time between the steps of a knob that is turned slowly
constexpr milliseconds Look { 350 }; // pause of a person before the next move

// ConsoleProtocol::Ring says how a knob's ring shows a value. The lower lamp is lit when the value
// is at rest.
using namespace ConsoleProtocol::Ring;

constexpr int Assign = 1;
constexpr int Select3 = 4;
constexpr int Bypass = 6;
constexpr int Compare = 7;

struct Parameter {
    const char* name;
    std::string text;
    int ring;
};
using Page = std::array<Parameter, 4>; // one parameter for each knob

class Scene {
public:
    void show(const Page& page)
    {
        for (int i = 0; i < 4; ++i)
            send(displayText(i, page[static_cast<std::size_t>(i)].name));
        for (int i = 0; i < 4; ++i)
            turn(FirstKnob + i, page[static_cast<std::size_t>(i)].text,
                page[static_cast<std::size_t>(i)].ring);
        pause(Look);
    }

    // Shows the value in the lower row of the display, right above its knob.
    void turn(int knob, const std::string& text, int ring)
    {
        constexpr int LowerRow = 4;
        send(displayText(LowerRow + knob - FirstKnob, text));
        send(knobPosition(knob, static_cast<std::uint8_t>(ring)));
    }

    void light(int lamp, Lamp state) { m_commands.emplace_back(Send { lampMessage(lamp, state) }); }
    void pause(milliseconds duration) { m_commands.emplace_back(Wait { duration }); }
    [[nodiscard]] std::vector<Command> take() { return std::move(m_commands); }

private:
    void send(Bytes packet) { m_commands.emplace_back(Send { { std::move(packet) } }); }

    std::vector<Command> m_commands;
};

std::string formatted(const char* format, double value)
{
    std::array<char, ConsoleProtocol::ZoneCharacters + 1> text {};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

std::string gainText(double decibels)
{
    return formatted("%+.1f dB", decibels);
}

int gainRing(double decibels)
{
    constexpr double MostDecibels = 12;
    constexpr int LampsEachSide = 5;
    if (decibels == 0)
        return FromMiddle | LowerLamp | MiddleLamp;
    return FromMiddle
        | (MiddleLamp + static_cast<int>(std::lround(decibels * LampsEachSide / MostDecibels)));
}

// Turns a gain knob up or down in steps of half a decibel.
void turnGain(Scene& scene, int knob, double from, double to)
{
    const int steps = static_cast<int>(std::lround(std::abs(to - from) * 2));
    for (int i = 1; i <= steps; ++i) {
        const double gain = from + (to - from) * i / steps;
        scene.turn(knob, gainText(gain), gainRing(gain));
        scene.pause(TurnStep);
    }
    scene.pause(Look);
}

void editFirstPage(Scene& scene)
{
    scene.light(Assign, Lamp::On);
    scene.show({ { { "LF Gain", gainText(0), gainRing(0) }, { "LF Freq", "100 Hz", OneLamp | 4 },
        { "LF Q", "1.0", BothSides | 3 }, { "Output", "0.0 dB", FromFirst | 8 } } });
    turnGain(scene, 1, 0, 4.5);
    scene.light(Compare, Lamp::On); // the setting differs from the stored one
    for (const int hertz : { 98, 95, 92, 90, 87, 85, 82, 80 }) {
        scene.turn(2, formatted("%.0f Hz", hertz), OneLamp | (hertz > 88 ? 4 : 3));
        scene.pause(TurnStep);
    }
    scene.pause(Look);
}

void editSecondPage(Scene& scene)
{
    scene.show(
        { { { "HF Gain", gainText(-1), gainRing(-1) }, { "HF Freq", "8.00 kHz", OneLamp | 8 },
            { "HF Type", "Peak", OneLamp | 1 }, { "Output", "0.0 dB", FromFirst | 8 } } });
    scene.light(Select3, Lamp::On);
    scene.turn(3, "Shelf", OneLamp | 11);
    scene.pause(Look);
    turnGain(scene, 1, -1, 3.5);
    for (const auto state : { Lamp::On, Lamp::Off }) {
        scene.light(Bypass, state);
        scene.pause(Look);
    }
    for (const double output : { -0.5, -1.0, -1.5, -2.0 }) {
        scene.pause(TurnStep);
        scene.turn(4, gainText(output), FromFirst | (output > -1.5 ? 8 : 7));
    }
}
} // namespace

std::vector<Command> editingScene()
{
    Scene scene;
    editFirstPage(scene);
    editSecondPage(scene);
    return scene.take();
}

} // namespace kestrel::console
