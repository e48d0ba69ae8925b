#include "tools/selftest/Studio.h"
#include "tools/selftest/macos/InstalledImage.h"
#include "tools/selftest/macos/Quartz.h"
#include "tools/stage/Patience.h"

#import <AppKit/AppKit.h>
#include <sys/utsname.h>

#include <cstdio>
#include <stdexcept>

namespace kestrel::selftest {

namespace {
using stage::milliseconds;

constexpr milliseconds Timeout { 20000 };
constexpr KeyCode DownArrow = 125;
constexpr KeyCode Return = 36;

// "name=value" of the probe's answer.
std::string factOf(const std::string& answer, const std::string& name)
{
    const auto start = answer.find(" " + name + "=");
    if (start == std::string::npos)
        return {};
    const std::string rest = answer.substr(start + name.size() + 2);
    return rest.substr(0, rest.find(' '));
}

bool isLaunched(pid_t process)
{
    @autoreleasepool {
        return [NSRunningApplication runningApplicationWithProcessIdentifier:process]
            .finishedLaunching;
    }
}

// The user's own session, with stand-ins beside whatever else runs.
class MacStudio final : public Studio {
public:
    explicit MacStudio(const StudioOptions& options)
        : m_programs(options.programs)
        , m_image(options.image)
    {
        const auto running = runTool({ "pgrep", "-x", "Pro Tools" });
        if (!running.empty())
            throw std::runtime_error("Pro Tools runs, or its stand-in: quit it first");
    }

    std::vector<std::string> facts() override
    {
        utsname machine {};
        ::uname(&machine);
        return { "system: macOS " + runTool({ "sw_vers", "-productVersion" }) + ", "
                + runTool({ "sw_vers", "-buildVersion" }) + ", " + machine.machine,
            std::string("permission to post events: ") + (Quartz::mayPost() ? "yes" : "NO"),
            std::string("permission to control this computer: ")
                + (Quartz::isTrusted() ? "yes" : "NO"),
            std::string("permission to record the screen: ")
                + (Quartz::mayRecord() ? "yes" : "NO, pictures show no other windows") };
    }

    std::optional<std::string> lack(Need need) override
    {
        if (need == Need::PostedEvents && !Quartz::mayPost())
            return "macOS DENIES POSTED EVENTS to the program that runs this: allow it under "
                   "Privacy & Security, Accessibility";
        if (need == Need::DiskImage && m_image.empty())
            return "no disk image was named with --image";
        return {};
    }

    Process startWorkstation() override
    {
        auto process = std::make_unique<stage::ChildProcess>(
            std::vector { executable("Pro Tools.app", "Pro Tools") });
        // Before the launch services know it, "open" would start another one.
        if (!stage::comesTrue([&process] { return isLaunched(process->pid()); }, Timeout))
            throw std::runtime_error("the launch services do not know the workstation");
        return process;
    }

    Process startConsole() override
    {
        return std::make_unique<stage::ChildProcess>(
            std::vector { (m_programs / "zenta-console").string() });
    }

    Process startUtility(
        const std::filesystem::path& folder, const std::vector<std::string>& files) override
    {
        std::vector<std::string> command { executable(
            "kestrel-under-test.app", "kestrel-under-test") };
        command.insert(command.end(), files.begin(), files.end());
        return std::make_unique<stage::ChildProcess>(command,
            stage::ChildProcess::Environment { { "KESTREL_SELFTEST_FOLDER", folder.string() } });
    }

    // A later start of a running bundle brings it to the front.
    void bringWorkstationToFront() override
    {
        bringToFront((m_programs / "Pro Tools.app").string(), "Pro Tools");
    }

    void bringAnotherToFront() override { bringToFront("Finder", "Finder"); }

    // Asks the launch services, and not AppKit, as the utility does.
    std::string frontApplication() override
    {
        const std::string front = runTool({ "lsappinfo", "front" });
        const std::string line = runTool({ "lsappinfo", "info", "-only", "name", front });
        const auto start = line.find("=\"");
        return start == std::string::npos ? std::string()
                                          : line.substr(start + 2, line.rfind('"') - start - 2);
    }

    void click(int x, int y) override { Quartz::click(x, y); }
    void type(KeyCode key, ModifierFlags modifiers) override { Quartz::type(key, modifiers); }
    bool areAllKeysUp() override { return Quartz::areAllKeysUp(); }

    StatusFacts status(const std::string& probed) override
    {
        return { !factOf(probed, "area").empty(), factOf(probed, "online") == "yes",
            factOf(probed, "fits") == "yes", probed };
    }

    void chooseFirstMenuEntry(const std::string& probed) override
    {
        double x = 0;
        double y = 0;
        double width = 0;
        double height = 0;
        if (std::sscanf(factOf(probed, "area").c_str(), "%lf,%lf,%lf,%lf", &x, &y, &width, &height)
            != 4)
            throw std::runtime_error("the status item has no place");
        Quartz::click(x + width / 2, y + height / 2);
        Quartz::pause(milliseconds(1000)); // the menu opens
        Quartz::type(DownArrow, 0);
        Quartz::type(Return, 0);
    }

    bool floats(
        const stage::ChildProcess& utility, const std::string&, const std::string& probed) override
    {
        const std::string number = factOf(probed, "number");
        return !number.empty() && Quartz::floats(utility.pid(), std::stol(number));
    }

    std::string faultOfPanel(const std::string& probed) override
    {
        const std::pair<const char*, const char*> expected[] = { { "panel", "yes" },
            { "nonactivating", "yes" }, { "level", "3" }, { "spaces", "yes" }, { "canhide", "no" },
            { "hidesondeactivate", "no" }, { "key", "no" }, { "onscreen", "yes" } };
        for (const auto& [name, value] : expected) {
            if (factOf(probed, name) != value)
                return std::string(name) + " is " + factOf(probed, name) + " and not " + value;
        }
        return {};
    }

    // The system starts it again for the next client.
    void killMIDIServer() override
    {
        static_cast<void>(runTool({ "killall", "-9", "MIDIServer" }));
    }
    void startMIDIServer() override { }

    void askToQuit(const stage::ChildProcess& utility) override
    {
        NSRunningApplication* const application =
            [NSRunningApplication runningApplicationWithProcessIdentifier:utility.pid()];
        if (![application terminate])
            throw std::runtime_error("the system does not ask the utility to quit");
    }

    std::string tryDiskImage(const std::filesystem::path& folder, const std::string& set) override
    {
        return InstalledImage(m_image, folder).fault(set);
    }

    void photograph(const std::filesystem::path& picture) override
    {
        static_cast<void>(runTool({ "screencapture", "-x", picture.string() }));
        if (!std::filesystem::exists(picture))
            throw std::runtime_error("the screen cannot be photographed");
    }

private:
    [[nodiscard]] std::string executable(const char* bundle, const char* name) const
    {
        return (m_programs / bundle / "Contents" / "MacOS" / name).string();
    }

    void bringToFront(const std::string& application, const std::string& name)
    {
        const bool comes = stage::comesTrue(
            [&] {
                if (frontApplication() == name)
                    return true;
                static_cast<void>(runTool({ "open", "-a", application }));
                return false;
            },
            Timeout);
        if (!comes)
            throw std::runtime_error(
                name + " does not come to the front; " + frontApplication() + " stays there");
    }

    std::filesystem::path m_programs;
    std::filesystem::path m_image;
};
} // namespace

std::unique_ptr<Studio> makeStudio(const StudioOptions& options)
{
    return std::make_unique<MacStudio>(options);
}

} // namespace kestrel::selftest
