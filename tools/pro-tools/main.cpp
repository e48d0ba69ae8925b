// Stands in for the workstation. It has the same process name and window class, and prints the keys
// that it receives.

#include "tools/pro-tools/WorkstationWindow.h"
#include "tools/pro-tools/XKeyReader.h"

#include <QApplication>

#include <CLI/CLI.hpp>
#include <unistd.h>

#include <iostream>
#include <string>

namespace {
// Flushes each line, because the reader waits for it.
void print(const std::string& line)
{
    std::cout << line << std::endl;
}

[[noreturn]] void runWithoutWindow()
{
    print("ready");
    for (;;)
        ::pause();
}

int runWithWindow(
    int argc, char** argv, const std::string& applicationClass, const std::string& title)
{
    // An input method would hold keys back.
    ::setenv("QT_IM_MODULE", "none", 1);
    QCoreApplication::setAttribute(Qt::AA_MacDontSwapCtrlAndMeta);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QString::fromStdString(applicationClass));

    bool wasReady = false;
    kestrel::WorkstationWindow window([&wasReady](bool focused) {
        print(focused ? "focus in" : "focus out");
        if (focused && !wasReady)
            print("ready");
        wasReady = wasReady || focused;
    });
    kestrel::XKeyReader reader([&window](const kestrel::ReceivedKey& key) {
        print(key.line());
        window.show(key);
    });
    application.installNativeEventFilter(&reader);
    window.setWindowTitle(QString::fromStdString(title));
    window.show();
    return QApplication::exec();
}
} // namespace

int main(int argc, char** argv)
{
    CLI::App options("Shows and prints the key events that it receives");
    std::string applicationClass = "Pro Tools";
    std::string title = "Pro Tools";
    bool noWindow = false;
    options.add_option("--class", applicationClass, "window class");
    options.add_option("--title", title, "window title");
    options.add_flag("--no-window", noWindow, "only be a process of this name");
    CLI11_PARSE(options, argc, argv);
    if (noWindow)
        runWithoutWindow();
    return runWithWindow(argc, argv, applicationClass, title);
}
