#include "fuzz/Target.h"
#include "fuzz/panel/PanelFeed.h"

#include <QApplication>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // It is never destroyed: at exit it would use static objects of Qt that are gone by then.
    static const auto* const application = new QApplication(*argc, *argv);
    static_cast<void>(application);
    return 0;
}

std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    return PanelFeed().run(input);
}
