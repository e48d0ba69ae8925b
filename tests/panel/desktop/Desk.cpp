#include "tests/panel/desktop/Desk.h"

#include <sstream>
#include <stdexcept>
#include <tuple>

namespace kestrel::test {

Desk::Desk(const stage::PrivateXServer::Options& options)
    : server(options)
    , m_probe(xcb_generate_id(workstation.xcb()))
{
    xcb_create_window(workstation.xcb(), XCB_COPY_FROM_PARENT, m_probe, workstation.root(), 0, 0, 1,
        1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    waitUntil("the workstation is managed", [this] { return workstation.isManaged(); });
    workstation.activate();
    waitUntil("the workstation has the focus", [this] { return workstationIsActive(); });
}

void Desk::waitUntil(const char* what, const std::function<bool()>& holds)
{
    const auto deadline = std::chrono::steady_clock::now() + Timeout;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > deadline)
            throw std::runtime_error(std::string("it never came that ") + what);
    }
}

void Desk::startPanel(const std::vector<std::string>& arguments)
{
    std::vector<std::string> command { KESTREL_PANEL_PROGRAM };
    command.insert(command.end(), arguments.begin(), arguments.end());
    panel = std::make_unique<stage::ChildProcess>(command, server.environment());
}

void Desk::showPanel()
{
    panel->writeLine("show");
    const auto line = panel->waitForLineWith("shown ", Timeout);
    if (!line)
        throw std::runtime_error("the panel was not shown");
    panelWindow = static_cast<xcb_window_t>(std::stoul(line->substr(6)));
    waitUntil("the panel is managed",
        [this] { return !workstation.words(panelWindow, "_NET_FRAME_EXTENTS").empty(); });
    settle();
}

Desk::Content Desk::content()
{
    panel->writeLine("repeat");
    const auto content = waitForContent([](const Content&) { return true; });
    if (!content)
        throw std::runtime_error("the panel does not answer");
    return *content;
}

std::optional<Desk::Content> Desk::waitForContent(const std::function<bool(const Content&)>& wanted)
{
    Content content {};
    const auto line = panel->waitForLine(
        [&](std::string_view text) {
            std::istringstream words { std::string(text) };
            std::string word;
            return words >> word && word == "content" && words >> content.width >> content.height
                && words >> word
                && words >> content.panelX >> content.panelY >> content.panelWidth
                >> content.panelHeight
                && wanted(content);
        },
        Timeout);
    return line ? std::optional(content) : std::nullopt;
}

Desk::Place Desk::panelPlace()
{
    xcb_connection_t* connection = workstation.xcb();
    const Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, panelWindow), nullptr),
        &std::free);
    const Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection,
            xcb_translate_coordinates(connection, panelWindow, workstation.root(), 0, 0), nullptr),
        &std::free);
    if (!size || !place)
        throw std::runtime_error("the panel has no place");
    return { place->dst_x, place->dst_y, size->width, size->height };
}

Desk::Place Desk::framePlace()
{
    const Place place = panelPlace();
    const auto extents = workstation.words(panelWindow, "_NET_FRAME_EXTENTS");
    if (extents.size() != 4)
        throw std::runtime_error("the panel has no frame");
    const auto [left, right, top, bottom] = std::tuple(static_cast<int>(extents[0]),
        static_cast<int>(extents[1]), static_cast<int>(extents[2]), static_cast<int>(extents[3]));
    return { place.x - left, place.y - top, place.width + left + right,
        place.height + top + bottom };
}

Desk::Place Desk::waitForPlace(const std::function<bool(const Place&)>& wanted)
{
    const auto deadline = std::chrono::steady_clock::now() + Timeout;
    Place place = panelPlace();
    while (!wanted(place) && std::chrono::steady_clock::now() < deadline) {
        settle();
        place = panelPlace();
    }
    return place;
}

void Desk::closePanel()
{
    workstation.tell(panelWindow, "_NET_CLOSE_WINDOW", { XCB_CURRENT_TIME, 2 });
    if (!panel->waitForLineWith("hidden", Timeout))
        throw std::runtime_error("the panel does not close");
    settle();
}

std::string Desk::quitPanel()
{
    panel->writeLine("quit");
    const auto line = panel->waitForLineWith("frame ", Timeout);
    panel.reset();
    return line ? line->substr(6) : "none";
}

void Desk::pointer(std::initializer_list<std::string> xdotool)
{
    std::vector<std::string> command { "xdotool" };
    command.insert(command.end(), xdotool);
    stage::ChildProcess process(command, server.environment());
    if (process.wait(Timeout) != 0)
        throw std::runtime_error("the pointer could not be moved");
}

void Desk::drag(int fromX, int fromY, int toX, int toY)
{
    pointer({ "mousemove", std::to_string(fromX), std::to_string(fromY), "mousedown", "1" });
    for (int step = 1; step <= 8; ++step) {
        pointer({ "mousemove", std::to_string(fromX + (toX - fromX) * step / 8),
            std::to_string(fromY + (toY - fromY) * step / 8) });
        settle();
    }
    pointer({ "mouseup", "1" });
    settle();
}

// The window manager handles requests and events in order, so its answer comes after the rest.
void Desk::settle()
{
    xcb_delete_property(workstation.xcb(), m_probe, workstation.atom("_NET_FRAME_EXTENTS"));
    workstation.tell(m_probe, "_NET_REQUEST_FRAME_EXTENTS", {});
    waitUntil("the window manager answers",
        [this] { return !workstation.words(m_probe, "_NET_FRAME_EXTENTS").empty(); });
}

std::string Desk::keysThatReachTheWorkstation()
{
    settle();
    static_cast<void>(workstation.keys());
    pointer({ "key", "--clearmodifiers", "a" });
    workstation.synchronise();
    return workstation.keys();
}

bool Desk::workstationIsActive()
{
    settle();
    const auto active = workstation.words(workstation.root(), "_NET_ACTIVE_WINDOW");
    return active == std::vector<std::uint32_t> { workstation.window() } && workstation.hasFocus();
}

} // namespace kestrel::test
