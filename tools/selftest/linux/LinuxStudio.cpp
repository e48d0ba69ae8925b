#include "tools/selftest/Studio.h"
#include "tools/stage/KeysDown.h"
#include "tools/stage/Patience.h"
#include "tools/stage/Screen.h"
#include "tools/stage/ShownWindows.h"
#include "tools/stage/StatusIcon.h"
#include "tools/stage/Studio.h"
#include "tools/stage/XQuery.h"

#include <sys/utsname.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace kestrel::selftest {

namespace {
using stage::milliseconds;

constexpr milliseconds Timeout { 20000 };

// The X11 names of the keys that the checks type.
std::string keysymOf(KeyCode key)
{
    switch (key) {
    case 4:
        return "h";
    case 12:
        return "q";
    case 48:
        return "Tab";
    case 53:
        return "Escape";
    case 96:
        return "F5";
    default:
        throw std::runtime_error("no X11 name is known of key " + std::to_string(key));
    }
}

std::string chordOf(KeyCode key, ModifierFlags modifiers)
{
    std::string chord;
    for (const auto& [flag, name] :
        { std::pair { Modifier::Shift, "shift+" }, std::pair { Modifier::Control, "ctrl+" },
            std::pair { Modifier::Option, "alt+" }, std::pair { Modifier::Command, "super+" } })
        chord += (modifiers & flag) != 0 ? name : "";
    return chord + keysymOf(key);
}

std::string distribution()
{
    std::ifstream file("/etc/os-release");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("PRETTY_NAME="))
            return line.substr(std::strlen("PRETTY_NAME="));
    }
    return "unknown";
}

// A private X server with window manager and tray, and a private JACK server.
class LinuxStudio final : public Studio {
public:
    explicit LinuxStudio(const std::filesystem::path& programs)
        : m_stage(programs)
    {
    }

    std::vector<std::string> facts() override
    {
        utsname machine {};
        ::uname(&machine);
        return { "system: " + distribution() + ", Linux " + machine.release + ", "
                + machine.machine,
            "permission to post events: X11 asks for none" };
    }

    std::optional<std::string> lack(Need need) override
    {
        switch (need) {
        case Need::SecureInput:
            return "X11 has no secure input";
        case Need::HiddenApplications:
            return "X11 has no hidden applications";
        case Need::QuitEvents:
            return "X11 asks no application to quit; sessions send signals";
        case Need::DiskImage:
            return "disk images belong to macOS";
        default:
            return {};
        }
    }

    Process startWorkstation() override { return m_stage.start("Pro Tools"); }
    Process startConsole() override { return m_stage.start("zenta-console"); }

    Process startUtility(
        const std::filesystem::path& folder, const std::vector<std::string>& files) override
    {
        return m_stage.start(
            "kestrel-under-test", files, { { "KESTREL_SELFTEST_FOLDER", folder.string() } });
    }

    void bringWorkstationToFront() override { bringToFront("Pro Tools"); }

    void bringAnotherToFront() override
    {
        if (!m_other)
            m_other = m_stage.start("Pro Tools", { "--class", "Notepad", "--title", "Notepad" });
        bringToFront("Notepad");
    }

    std::string frontApplication() override
    {
        return stage::Screen(m_stage.displayName()).activeWindowClass();
    }

    void click(int x, int y) override
    {
        xdotool({ "mousemove", "--sync", std::to_string(x), std::to_string(y), "click", "1" });
    }

    void type(KeyCode key, ModifierFlags modifiers) override
    {
        xdotool({ "key", chordOf(key, modifiers) });
    }

    bool areAllKeysUp() override { return stage::keysDown(m_stage.displayName()).empty(); }

    StatusFacts status(const std::string&) override
    {
        using Face = stage::StatusIcon::Face;
        const Face face = icon().face();
        return { face != Face::None, face == Face::Online, face != Face::None,
            face == Face::None ? "there is no icon in the tray" : "the icon is in the tray" };
    }

    void chooseFirstMenuEntry(const std::string&) override { icon().choosePanel(); }

    bool floats(const stage::ChildProcess&, const std::string& title, const std::string&) override
    {
        const auto window = shown(title);
        return window && isAbove(window->id);
    }

    std::string faultOfPanel(const std::string&) override
    {
        const auto window = shown("Plug-in Panel");
        if (!window)
            return "the panel is not on the screen";
        if (!isAbove(window->id))
            return "the window manager does not keep the panel above other windows";
        return window->isPopup ? "the panel bypasses the window manager" : "";
    }

    void killMIDIServer() override { m_stage.jack().kill(); }
    void startMIDIServer() override { m_stage.jack().start(); }

    void askToQuit(const stage::ChildProcess&) override
    {
        throw std::runtime_error("X11 asks no application to quit");
    }

    std::string tryDiskImage(const std::filesystem::path&, const std::string&) override
    {
        return "disk images belong to macOS";
    }

    void photograph(const std::filesystem::path& picture) override
    {
        if (!m_stage.photograph(picture))
            throw std::runtime_error("the screen cannot be photographed");
    }

private:
    void bringToFront(const std::string& windowClass)
    {
        const bool comes = stage::comesTrue(
            [&] {
                if (frontApplication() == windowClass)
                    return true;
                xdotool({ "search", "--onlyvisible", "--class", "^" + windowClass + "$",
                    "windowactivate", "--sync" });
                return false;
            },
            Timeout);
        if (!comes)
            throw std::runtime_error(windowClass + " does not come to the front");
    }

    [[nodiscard]] stage::StatusIcon icon() const
    {
        return { m_stage.displayName(), m_stage.environment() };
    }

    [[nodiscard]] std::optional<stage::ShownWindow> shown(const std::string& title) const
    {
        for (const auto& window : stage::shownWindows(m_stage.displayName(), "kestrel")) {
            if (window.title == title)
                return window;
        }
        return {};
    }

    [[nodiscard]] bool isAbove(xcb_window_t window) const
    {
        const auto connection = stage::connectTo(m_stage.displayName());
        const auto state = stage::propertyOf(
            connection.get(), window, stage::atomOf(connection.get(), "_NET_WM_STATE"));
        const xcb_atom_t above = stage::atomOf(connection.get(), "_NET_WM_STATE_ABOVE");
        for (std::size_t at = 0; at + sizeof above <= state.size(); at += sizeof above) {
            if (std::memcmp(state.data() + at, &above, sizeof above) == 0)
                return true;
        }
        return false;
    }

    // A search that finds no window is no failure: the caller looks again.
    void xdotool(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), "xdotool");
        stage::ChildProcess process(arguments, m_stage.environment());
        if (!process.wait(Timeout))
            throw std::runtime_error("xdotool does not end");
    }

    stage::Studio m_stage;
    Process m_other;
};
} // namespace

std::unique_ptr<Studio> makeStudio(const StudioOptions& options)
{
    return std::make_unique<LinuxStudio>(options.programs);
}

} // namespace kestrel::selftest
