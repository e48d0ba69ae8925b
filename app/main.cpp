#include "app/Program.h"

int main(int argc, char* argv[])
{
    return kestrel::runProgram(argc, argv, { .makePlatform = kestrel::makePlatform });
}
