#include "tools/stage/Person.h"

#include "tools/stage/Patience.h"
#include "tools/stage/StatusIcon.h"

#include <functional>
#include <stdexcept>

namespace kestrel::stage {

namespace {
constexpr milliseconds Timeout { 10000 };

void waitUntil(const std::string& what, const std::function<bool()>& holds)
{
    if (!comesTrue(holds, Timeout))
        throw std::runtime_error(what + " within ten seconds");
}

std::string titlePattern(const std::string& title)
{
    return std::string("^").append(title).append("$");
}
} // namespace

void Person::click(int x, int y) const
{
    run({ "mousemove", "--sync", std::to_string(x), std::to_string(y), "click", "1" });
}

void Person::doubleClick(int x, int y) const
{
    run({ "mousemove", "--sync", std::to_string(x), std::to_string(y), "click", "--repeat", "2",
        "--delay", "50", "1" });
}

void Person::press(const std::string& chord) const
{
    run({ "key", chord });
}

void Person::pressTwice(const std::string& chord) const
{
    run({ "key", "--delay", "60", chord, chord });
}

void Person::type(const std::string& text) const
{
    run({ "type", "--delay", "5", text });
}

std::vector<ShownWindow> Person::windows(const std::string& title) const
{
    auto found = shownWindows(m_studio.displayName(), "kestrel");
    std::erase_if(found, [&title](const ShownWindow& window) { return window.title != title; });
    return found;
}

bool Person::hasFocus(const ShownWindow& window) const
{
    const auto active = run({ "getactivewindow" });
    return !active.empty() && active.front() == std::to_string(window.id);
}

std::optional<Area> Person::window(const std::string& title) const
{
    const auto found = windows(title);
    return found.empty() ? std::nullopt : std::optional(found.back().area);
}

Area Person::windowAtRest(const std::string& title) const
{
    std::optional<Area> last;
    waitUntil("the window \"" + title + "\" did not come to rest", [&] {
        const auto now = window(title);
        const bool stays = now && now == last;
        last = now;
        return stays;
    });
    return *last;
}

void Person::bringToFront(const std::string& title) const
{
    run({ "search", "--onlyvisible", "--name", titlePattern(title), "windowactivate", "--sync" });
}

void Person::moveWindow(const std::string& title, int x, int y) const
{
    run({ "search", "--onlyvisible", "--name", titlePattern(title), "windowmove", "--sync",
        std::to_string(x), std::to_string(y) });
}

void Person::waitUntilShown(const std::string& title) const
{
    waitUntil("the window \"" + title + "\" did not come up", [&] {
        const auto lines = run({ "getactivewindow", "getwindowname" });
        return !lines.empty() && lines.front() == title && window(title).has_value();
    });
}

void Person::waitUntilGone(const std::string& title) const
{
    waitUntilThereAre(0, title);
}

void Person::waitUntilThereAre(int count, const std::string& title) const
{
    waitUntil("there were not " + std::to_string(count) + " windows \"" + title + "\"", [&] {
        const auto found = windows(title);
        return static_cast<int>(found.size()) == count && (found.empty() || hasFocus(found.back()));
    });
}

void Person::chooseFromTray(char mnemonic) const
{
    StatusIcon(m_studio.displayName(), m_studio.environment()).choose(mnemonic);
}

std::vector<std::string> Person::run(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), "xdotool");
    ChildProcess process(arguments, m_studio.environment());
    std::vector<std::string> lines;
    while (const auto line = process.waitForLineWith("", Timeout))
        lines.push_back(*line);
    static_cast<void>(process.wait(Timeout));
    return lines;
}

} // namespace kestrel::stage
