#include "tools/kestrelctl/Program.h"

int main(int argc, char** argv)
{
    const kestrel::ctl::Program program;
    try {
        program.options->parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return program.options->exit(error) == 0 ? kestrel::ctl::Done : kestrel::ctl::Misused;
    }
    return program.run();
}
