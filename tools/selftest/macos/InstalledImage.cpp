#include "tools/selftest/macos/InstalledImage.h"

#include "tools/stage/ChildProcess.h"
#include "tools/stage/Patience.h"

namespace kestrel::selftest {

namespace {
using stage::milliseconds;

constexpr milliseconds ToolTimeout { 120000 };
constexpr milliseconds StartTimeout { 60000 }; // macOS examines a new program at its first start
constexpr milliseconds EndTimeout { 2000 };
constexpr const char* Domain = "com.holvik.kestrel";
constexpr const char* SetAsideSuffix = ".before-selftest";
constexpr const char* Name = "ZENTA Kestrel";

bool succeeds(const std::vector<std::string>& command)
{
    stage::ChildProcess process(command);
    while (process.waitForLineWith("", ToolTimeout)) { }
    return process.wait(ToolTimeout) == 0;
}

bool runs()
{
    return succeeds({ "pgrep", "-x", Name });
}

// The copy of the live set that a killed run leaves.
std::filesystem::path recoveryFile()
{
    return std::filesystem::path(std::getenv("HOME"))
        / "Library/Application Support/kestrel/recovery.ZKCF";
}
} // namespace

std::string runTool(const std::vector<std::string>& command)
{
    stage::ChildProcess process(command);
    std::string output;
    while (const auto line = process.waitForLineWith("", ToolTimeout))
        output += (output.empty() ? "" : "\n") + *line;
    static_cast<void>(process.wait(ToolTimeout));
    return output;
}

InstalledImage::InstalledImage(
    const std::filesystem::path& image, const std::filesystem::path& folder)
    : m_image(image)
    , m_volume(folder / "volume")
    , m_app(folder / "installed" / (std::string(Name) + ".app"))
    , m_settings(folder / "settings.plist")
{
}

InstalledImage::~InstalledImage()
{
    if (m_isSetAside) {
        succeeds({ "killall", "-KILL", Name }); // it would store at its end
        restore();
    }
    if (m_isMounted)
        succeeds({ "hdiutil", "detach", m_volume.string(), "-force" });
}

std::string InstalledImage::fault(const std::string& set)
{
    if (runs())
        return "ZENTA Kestrel runs already: quit it first";
    if (std::string problem = setAside(); !problem.empty())
        return problem;
    if (std::string problem = install(); !problem.empty())
        return problem;
    return use(set);
}

// Nothing of the user's is touched unless all of it is safe.
std::string InstalledImage::setAside()
{
    std::filesystem::path recovery = recoveryFile();
    recovery += SetAsideSuffix;
    if (std::filesystem::exists(m_settings) || std::filesystem::exists(recovery))
        return "an earlier run has left what it set aside: put " + m_settings.string() + " and "
            + recovery.string() + " back first";
    if (!succeeds({ "defaults", "export", Domain, m_settings.string() })
        || !std::filesystem::exists(m_settings))
        return "the user's settings cannot be set aside";
    std::error_code error;
    if (std::filesystem::exists(recoveryFile()))
        std::filesystem::rename(recoveryFile(), recovery, error);
    if (error) {
        std::filesystem::remove(m_settings); // else the next run would refuse to begin
        return "the user's recovery file cannot be set aside: " + error.message();
    }
    m_isSetAside = true;
    return {};
}

void InstalledImage::restore()
{
    std::filesystem::path recovery = recoveryFile();
    recovery += SetAsideSuffix;
    std::error_code ignored;
    std::filesystem::remove(recoveryFile(), ignored);
    if (std::filesystem::exists(recovery))
        std::filesystem::rename(recovery, recoveryFile(), ignored);
    succeeds({ "defaults", "delete", Domain });
    if (succeeds({ "defaults", "import", Domain, m_settings.string() }))
        std::filesystem::remove(m_settings, ignored);
}

std::string InstalledImage::install()
{
    std::filesystem::create_directories(m_volume);
    m_isMounted = succeeds({ "hdiutil", "attach", m_image.string(), "-nobrowse", "-readonly",
        "-mountpoint", m_volume.string() });
    if (!m_isMounted)
        return "the image cannot be mounted";
    std::filesystem::create_directories(m_app.parent_path());
    if (!succeeds({ "ditto", (m_volume / m_app.filename()).string(), m_app.string() }))
        return "the program cannot be copied from the image";
    if (!succeeds({ "codesign", "--verify", "--deep", "--strict", m_app.string() }))
        return "the signature of the installed program is not valid";
    return {};
}

std::string InstalledImage::use(const std::string& set)
{
    if (!succeeds({ "open", "-a", m_app.string(), set }))
        return "the installed program cannot be opened with a set";
    if (!stage::comesTrue(runs, StartTimeout))
        return "the installed program does not run";
    // The set has become live when its copy is there; a set that is refused has none.
    if (!stage::comesTrue([] { return std::filesystem::exists(recoveryFile()); }, StartTimeout))
        return "the installed program did not open the set";
    if (auto problem = useCompanion(set); !problem.empty())
        return problem;
    if (!succeeds({ "killall", "-TERM", Name }))
        return "the installed program has ended by itself";
    if (!stage::comesTrue([] { return !runs(); }, EndTimeout))
        return "the installed program did not end within two seconds";
    if (!succeeds({ "defaults", "read", Domain, "PT_UserAssign" }))
        return "the installed program has stored no assignments";
    return succeeds({ "codesign", "--verify", "--deep", "--strict", m_app.string() })
        ? std::string()
        : "the signature is no longer valid after a run";
}

// A key sheet needs a plug-in of the bundle, and people start the program through a link.
std::string InstalledImage::useCompanion(const std::string& set)
{
    const auto link = m_app.parent_path() / "kestrelctl";
    const auto sheet = m_app.parent_path() / "sheet.pdf";
    std::error_code ignored;
    std::filesystem::remove(link, ignored);
    std::filesystem::create_symlink(m_app / "Contents/MacOS/kestrelctl", link);
    if (!succeeds({ link.string(), "status" }))
        return "the installed kestrelctl gets no answer from the program";
    return succeeds({ link.string(), "set", "sheet", set, "-o", sheet.string(), "--force" })
        ? std::string()
        : "the installed kestrelctl draws no key sheet";
}

} // namespace kestrel::selftest
