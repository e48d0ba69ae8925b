#include "tools/stage/KeyLines.h"

namespace kestrel::stage {

bool isKeyLine(std::string_view line)
{
    return line.starts_with("down ") || line.starts_with("up ");
}

std::string briefKeyLine(std::string_view line)
{
    for (const std::string_view end : { " t=", " repeat=no", " none" })
        line = line.substr(0, line.find(end));
    return std::string(line);
}

} // namespace kestrel::stage
