#include "tools/stage/StatusIcon.h"

#include "tools/stage/Patience.h"

#include <stdexcept>

namespace kestrel::stage {

namespace {
constexpr const char* ProgramClass = "kestrel";
constexpr int LargestIcon = 64; // pixels
constexpr int FewestPixels = 20; // fewer pixels of a colour are no icon
constexpr int IntoEntry = 14; // pixels from a menu's corner into its first entry
constexpr milliseconds MenuTimeout { 10000 };

// The colour of the bird while the link is alive. Nothing else in the tray has it.
bool isOnlineColour(Colour colour)
{
    return colour.green > colour.red + 50 && colour.blue > colour.red + 50;
}

bool isBright(Colour colour)
{
    return colour.red > 0x60 || colour.green > 0x60 || colour.blue > 0x60;
}

bool isIconSized(const Area& area)
{
    return area.width > 1 && area.width <= LargestIcon && area.height <= LargestIcon;
}
} // namespace

StatusIcon::StatusIcon(std::string display, ChildProcess::Environment environment)
    : m_display(std::move(display))
    , m_environment(std::move(environment))
{
}

StatusIcon::Face StatusIcon::face() const
{
    const auto shown = icon();
    if (!shown)
        return Face::None;
    const Screen screen(m_display);
    if (screen.count(shown->area, isOnlineColour) > FewestPixels)
        return Face::Online;
    return screen.count(shown->area, isBright) > FewestPixels ? Face::Offline : Face::None;
}

void StatusIcon::choosePanel() const
{
    const Area area = openMenu();
    click(area.x + IntoEntry, area.y + IntoEntry);
    waitUntilMenuIsGone();
}

void StatusIcon::choose(char mnemonic) const
{
    static_cast<void>(openMenu());
    xdotool({ "key", std::string(1, mnemonic) });
    waitUntilMenuIsGone();
}

Area StatusIcon::openMenu() const
{
    if (!comesTrue([this] { return icon().has_value(); }, MenuTimeout))
        throw std::runtime_error("there is no icon in the tray");
    const Area area = icon()->area;
    click(area.x + area.width / 2, area.y + area.height / 2);
    if (!comesTrue([this] { return menu().has_value(); }, MenuTimeout))
        throw std::runtime_error("the icon in the tray brings up no menu");
    return menu()->area;
}

void StatusIcon::waitUntilMenuIsGone() const
{
    if (!comesTrue([this] { return !menu().has_value(); }, MenuTimeout))
        throw std::runtime_error("the menu does not go away");
}

std::optional<ShownWindow> StatusIcon::icon() const
{
    for (const auto& window : shownWindows(m_display, ProgramClass)) {
        if (isIconSized(window.area))
            return window;
    }
    return {};
}

std::optional<ShownWindow> StatusIcon::menu() const
{
    for (const auto& window : shownWindows(m_display, ProgramClass)) {
        if (window.isPopup && !isIconSized(window.area))
            return window;
    }
    return {};
}

// Moves the pointer back to its old place at the end.
void StatusIcon::click(int x, int y) const
{
    xdotool({ "mousemove", std::to_string(x), std::to_string(y), "click", "1", "mousemove",
        "restore" });
}

void StatusIcon::xdotool(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), "xdotool");
    ChildProcess process(arguments, m_environment);
    if (process.wait(MenuTimeout) != 0)
        throw std::runtime_error("xdotool could not do what it was told");
}

} // namespace kestrel::stage
