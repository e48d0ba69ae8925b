#include "fuzz/Target.h"
#include "fuzz/panel/PanelFeed.h"

#include <QApplication>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication application(*argc, *argv);
    return 0;
}

std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    return PanelFeed().run(input);
}
