#include "tools/zenta-console/ConsoleCommand.h"

namespace kestrel::console {

std::string_view commandSummary()
{
    return "Commands, one a line; empty lines and lines that begin with # are skipped:\n"
           "  press N             user button N = 1..12 goes down (two packets)\n"
           "  release N           user button N = 1..12 goes up (two packets)\n"
           "  display ZONE TEXT   up to 10 characters of the large display, zone 0..9\n"
           "  knob N VALUE        knob N = 1..4 shows VALUE = 0..127\n"
           "  lamp N on|off       lamp N = 0..7 (two packets)\n"
           "  heartbeat on|off    the beat of every second\n"
           "  send HEX...         one packet as it stands\n"
           "  wait MS             the next command comes after MS milliseconds\n"
           "  at SECONDS COMMAND  the command comes so long after the script began, or\n"
           "                      after an expectation was met\n"
           "  expect listener MS  a client is connected within MS milliseconds from now\n"
           "  expect answer MS    the heartbeat is answered within MS milliseconds\n"
           "                      from now\n"
           "  show                plays a scene of a few seconds: an equaliser is edited\n"
           "                      on the display, the knobs and the lamps; prints\n"
           "                      \"shown\" at its end\n"
           "  quit                ends the program when all is sent\n";
}

} // namespace kestrel::console
