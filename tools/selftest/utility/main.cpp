// The utility as it is, with a probe inside and the simulated console among its devices. Its files
// are apart from those of an installed utility.

#include "app/Program.h"
#include "tools/selftest/utility/ConsoleAsDevice.h"
#include "tools/selftest/utility/NativeSide.h"
#include "tools/selftest/utility/Probe.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char* argv[])
{
    const char* folder = std::getenv("KESTREL_SELFTEST_FOLDER");
    if (!folder) {
        std::fputs("kestrel-under-test: kestrel-selftest starts this program\n", stderr);
        return EXIT_FAILURE;
    }
    const auto makePlatform = [folder](kestrel::MainLoop& mainLoop) {
        QCoreApplication::setApplicationName(QStringLiteral("kestrel"));
        auto platform = kestrel::makePlatform(mainLoop);
        platform.midiServices = std::make_unique<kestrel::selftest::ConsoleAsDevice>(
            std::move(platform.midiServices), &kestrel::selftest::simulatedConsole);
        platform.recoveryFile = std::string(folder) + "/recovery.ZKCF";
        new kestrel::selftest::Probe(qApp);
        return platform;
    };
    return kestrel::runProgram(
        argc, argv, { .makePlatform = makePlatform, .instanceFolder = "kestrel-selftest" });
}
