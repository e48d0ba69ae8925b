#pragma once

#include "platform/KeyCodes.h"
#include "tools/stage/ChildProcess.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::selftest {

// What a check needs of the system beyond the programs.
enum class Need {
    Nothing,
    PostedEvents, // keys and clicks that the self-test or the utility posts
    SecureInput,
    HiddenApplications,
    QuitEvents, // the system asks the application to quit
    MIDIServerControl,
    DiskImage,
};

struct StatusFacts {
    bool isShown = false;
    bool isOnline = false;
    bool fits = false; // the picture has a size for the menu bar or tray
    std::string details;
};

// A real session with the programs in it, as a person would use them. Each system has one
// implementation. Functions that cannot do their work throw std::runtime_error.
class Studio {
public:
    using Process = std::unique_ptr<stage::ChildProcess>;

    virtual ~Studio() = default;

    // About the machine, the system and its permissions, one a line.
    [[nodiscard]] virtual std::vector<std::string> facts() = 0;
    // Why a check that needs this cannot run here. No value if it can.
    [[nodiscard]] virtual std::optional<std::string> lack(Need need) = 0;

    [[nodiscard]] virtual Process startWorkstation() = 0;
    [[nodiscard]] virtual Process startConsole() = 0;
    // Its files are in `folder`.
    [[nodiscard]] virtual Process startUtility(
        const std::filesystem::path& folder, const std::vector<std::string>& files)
        = 0;

    virtual void bringWorkstationToFront() = 0;
    virtual void bringAnotherToFront() = 0;
    [[nodiscard]] virtual std::string frontApplication() = 0;

    virtual void click(int x, int y) = 0; // in the coordinates of the probe
    virtual void type(KeyCode key, ModifierFlags modifiers) = 0;
    [[nodiscard]] virtual bool areAllKeysUp() = 0;

    // `probed` is what the probe says about it.
    [[nodiscard]] virtual StatusFacts status(const std::string& probed) = 0;
    // Opens the menu with the pointer and chooses the first entry.
    virtual void chooseFirstMenuEntry(const std::string& probedStatus) = 0;
    // True when that window is on the screen above the windows of other applications.
    // `probed` is what the probe says about it.
    [[nodiscard]] virtual bool floats(
        const stage::ChildProcess& utility, const std::string& title, const std::string& probed)
        = 0;
    // What is wrong with the window's own properties; empty if nothing.
    [[nodiscard]] virtual std::string faultOfPanel(const std::string& probed) = 0;

    virtual void killMIDIServer() = 0;
    virtual void startMIDIServer() = 0; // does nothing where the system starts it
    virtual void askToQuit(const stage::ChildProcess& utility) = 0;
    // Mounts the disk image, copies the program, opens a set with it, quits it and verifies its
    // signature. Returns what is wrong; empty if nothing.
    [[nodiscard]] virtual std::string tryDiskImage(
        const std::filesystem::path& folder, const std::string& set)
        = 0;

    virtual void photograph(const std::filesystem::path& picture) = 0;
};

struct StudioOptions {
    std::filesystem::path programs; // the folder of the built programs
    std::filesystem::path image; // a disk image; empty for none
};

// Each system's folder defines it once.
[[nodiscard]] std::unique_ptr<Studio> makeStudio(const StudioOptions& options);

} // namespace kestrel::selftest
