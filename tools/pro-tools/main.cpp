// Stands in for the workstation. It has the same process name and window class, and prints the keys
// that it receives.

#include "tools/pro-tools/KeyReader.h"
#include "tools/pro-tools/WorkstationWindow.h"

#include <QApplication>
#include <QSocketNotifier>

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

// Obeys "secure on" and "secure off" from the standard input.
class Commands {
public:
    Commands()
    {
        QObject::connect(&m_input, &QSocketNotifier::activated, &m_input, [this] { read(); });
    }

private:
    void read()
    {
        char buffer[256];
        const ssize_t size = ::read(STDIN_FILENO, buffer, sizeof buffer);
        m_input.setEnabled(size > 0);
        m_text.append(buffer, size > 0 ? static_cast<std::size_t>(size) : 0);
        for (std::size_t end = 0; (end = m_text.find('\n')) != std::string::npos;) {
            obey(m_text.substr(0, end));
            m_text.erase(0, end + 1);
        }
    }

    static void obey(const std::string& line)
    {
        if (line != "secure on" && line != "secure off")
            return print("unknown command " + line);
        print(kestrel::setSecureInput(line == "secure on") ? line : "secure unavailable");
    }

    QSocketNotifier m_input { STDIN_FILENO, QSocketNotifier::Read };
    std::string m_text;
};

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
    const auto reader = kestrel::makeKeyReader([&window](const kestrel::ReceivedKey& key) {
        print(key.line());
        window.show(key);
    });
    application.installNativeEventFilter(reader.get());
    const Commands commands;
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
