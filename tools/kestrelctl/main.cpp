#include "tools/kestrelctl/Program.h"

#include <csignal>

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN); // a running program that ends meanwhile is no end of this one
    const kestrel::ctl::Program program;
    try {
        program.options->parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return program.options->exit(error) == 0 ? kestrel::ctl::Done : kestrel::ctl::Misused;
    }
    return program.run();
}
