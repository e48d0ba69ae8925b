#include "tools/zenta-console/ScriptFile.h"

#include "tools/zenta-console/ConsoleCommand.h"
#include "tools/zenta-console/LineReader.h"

#include <algorithm>

namespace kestrel::console {

namespace {
constexpr std::size_t ShownBytes = 60; // of a line that is no command

// A file that is no script at all may hold anything.
std::string printable(std::string line)
{
    if (line.size() > ShownBytes)
        line = line.substr(0, ShownBytes) + "...";
    std::replace_if(
        line.begin(), line.end(), [](char byte) { return byte < ' ' || byte > '~'; }, '?');
    return line;
}
} // namespace

std::string faultText(
    int lineNumber, std::size_t column, const std::string& line, const std::string& reason)
{
    return "line " + std::to_string(lineNumber) + ", column " + std::to_string(column) + ": "
        + printable(line) + ": " + printable(reason);
}

std::string unreadableText(std::error_code error)
{
    return "cannot read the script: " + error.message();
}

std::optional<std::string> faultOfScript(int descriptor)
{
    LineReader reader(descriptor);
    while (!reader.isAtEnd())
        reader.readMore();
    if (reader.error())
        return unreadableText(reader.error());
    std::optional<std::string> fault;
    for (int number = 1; !fault; ++number) {
        const auto line = reader.next();
        if (!line)
            break;
        const Command command = parseCommand(*line);
        if (const auto* malformed = std::get_if<Malformed>(&command))
            fault = faultText(number, malformed->column, *line, malformed->reason);
    }
    reader.rewind();
    return fault;
}

} // namespace kestrel::console
