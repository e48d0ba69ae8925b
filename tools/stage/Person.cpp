#include "tools/stage/Person.h"

#include <charconv>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace kestrel::stage {

namespace {
constexpr milliseconds Patience { 10000 };
constexpr milliseconds BetweenLooks { 20 };

void waitUntil(const std::string& what, const std::function<bool()>& holds)
{
    const auto deadline = std::chrono::steady_clock::now() + Patience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > deadline)
            throw std::runtime_error(what + " within ten seconds");
        std::this_thread::sleep_for(BetweenLooks);
    }
}

// From lines like "WIDTH=620".
std::optional<int> number(const std::vector<std::string>& lines, std::string_view name)
{
    for (const std::string_view line : lines) {
        if (!line.starts_with(name) || line.size() <= name.size() || line[name.size()] != '=')
            continue;
        int value = 0;
        const std::string_view digits = line.substr(name.size() + 1);
        if (std::from_chars(digits.data(), digits.data() + digits.size(), value).ec == std::errc {})
            return value;
    }
    return std::nullopt;
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

void Person::type(const std::string& text) const
{
    run({ "type", "--delay", "5", text });
}

std::optional<Area> Person::window(const std::string& title) const
{
    const auto found = Screen(m_studio.displayName()).windows(title);
    return found.empty() ? std::nullopt : std::optional(found.back());
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
        const auto found = Screen(m_studio.displayName()).windows(title);
        return static_cast<int>(found.size()) == count;
    });
}

void Person::chooseFromTray(char mnemonic) const
{
    const auto menus = [&] {
        return run({ "search", "--onlyvisible", "--classname", "^kestrel$" }).size();
    };
    const auto before = menus();
    waitUntil("nothing came up in the tray", [&] {
        const auto panel = run(
            { "search", "--onlyvisible", "--class", "^trayer$", "getwindowgeometry", "--shell" });
        const auto x = number(panel, "X");
        const auto y = number(panel, "Y");
        const auto width = number(panel, "WIDTH");
        const auto height = number(panel, "HEIGHT");
        if (!x || !y || !width || !height || *width < *height / 2)
            return false;
        click(*x + *width / 2, *y + *height / 2);
        return true;
    });
    waitUntil("the menu did not open", [&] { return menus() > before; });
    press(std::string(1, mnemonic));
}

std::vector<std::string> Person::run(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), "xdotool");
    ChildProcess process(arguments, m_studio.environment());
    std::vector<std::string> lines;
    while (const auto line = process.waitForLineWith("", Patience))
        lines.push_back(*line);
    static_cast<void>(process.wait(Patience));
    return lines;
}

} // namespace kestrel::stage
