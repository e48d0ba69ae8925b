#include "tools/demo/Performance.h"

#include "tools/stage/Patience.h"

#include <iostream>

namespace kestrel {

namespace {
// Leaves out the time and the usual values:
// "down S Command repeat=no t=123" becomes "down S Command", "up S none repeat=no t=124" "up S".
std::string brief(std::string line)
{
    for (const char* end : { " t=", " repeat=no", " none" })
        line = line.substr(0, line.find(end));
    return line;
}
} // namespace

bool isKey(std::string_view line)
{
    return line.starts_with("down ") || line.starts_with("up ");
}

Performance::Performance(std::filesystem::path programs, std::filesystem::path pictures,
    const stage::Studio::Options& options)
    : studio(std::move(programs), options)
    , m_pictures(std::move(pictures))
{
    std::filesystem::create_directories(m_pictures);
}

void Performance::check(const std::string& what, bool observed)
{
    std::cout << (observed ? "  seen    " : "  MISSING ") << what << std::endl;
    m_missing += observed ? 0 : 1;
}

void Performance::checkSoon(
    const std::string& what, const std::function<bool()>& holds, stage::milliseconds timeout)
{
    check(what, stage::comesTrue(holds, timeout));
}

std::string Performance::keysAfter(const std::string& consoleCommand)
{
    console->writeLine(consoleCommand);
    std::string keys;
    for (const auto& line : workstation->linesUntilQuiet(Quiet)) {
        if (isKey(line))
            keys += (keys.empty() ? "" : "; ") + brief(line);
    }
    std::cout << "  " << consoleCommand << "  →  " << (keys.empty() ? "nothing" : keys) << '\n';
    return keys;
}

void Performance::photograph(const std::string& name)
{
    const auto picture = m_pictures / (name + ".png");
    check("picture " + picture.string(), studio.photograph(picture));
}

} // namespace kestrel
