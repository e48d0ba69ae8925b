#include "tools/demo/Performance.h"

#include "tools/stage/KeyLines.h"
#include "tools/stage/Patience.h"

#include <iostream>

namespace kestrel {

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
        if (stage::isKeyLine(line))
            keys += (keys.empty() ? "" : "; ") + stage::briefKeyLine(line);
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
