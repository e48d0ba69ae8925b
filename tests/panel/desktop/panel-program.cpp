// Shows the panel alone on a real desktop, for tests that control it from outside. It reads
// commands from standard input and reports events on standard output, one per line:
//   show | hide | size W H | repeat (says the content again) | quit
//   shown ID | hidden | content W H panel X Y W H | pressed | frame X Y W H
// With --plain no window traits are set, and with --no-aspect all but the aspect ratio. --frame
// gives the stored frame.

#include "app/QtMainLoop.h"
#include "panel/MyWindowController.h"
#include "platform/linux/x11/X11Adapters.h"
#include "tests/fakes/FakeSystem.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSocketNotifier>

#include <unistd.h>

#include <iostream>
#include <sstream>
#include <string>

namespace kestrel::test {

namespace {
// Like a window manager that does not heed the hint.
class WithoutAspect final : public WindowTraits {
public:
    explicit WithoutAspect(WindowTraits& traits)
        : m_traits(traits)
    {
    }
    void setContentAspectRatio(NativeWindow, int, int) override { }
    void setFloating(NativeWindow window) override { m_traits.setFloating(window); }
    void setNeverFocused(NativeWindow window) override { m_traits.setNeverFocused(window); }
    void orderFront(NativeWindow window) override { m_traits.orderFront(window); }
    bool isSizeGiven(NativeWindow window) override { return m_traits.isSizeGiven(window); }

private:
    WindowTraits& m_traits;
};

class PanelProgram : public QObject {
public:
    PanelProgram(WindowTraits& traits, DefaultsStore& defaults)
        : m_controller("Plug-in_Panel", traits, defaults)
    {
        m_controller.window()->installEventFilter(this);
        m_controller.plugInPanelView()->installEventFilter(this);
        connect(&m_input, &QSocketNotifier::activated, this, &PanelProgram::read);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonPress)
            say("pressed");
        else if (event->type() == QEvent::Resize)
            QMetaObject::invokeMethod(
                this, [this] { sayContent(); }, Qt::QueuedConnection);
        else if (event->type() == QEvent::Hide && watched == m_controller.window())
            say("hidden");
        return QObject::eventFilter(watched, event);
    }

private:
    static void say(const std::string& line) { std::cout << line << std::endl; }

    void sayContent() const
    {
        const QSize content = m_controller.window()->size();
        const QRect panel = m_controller.plugInPanelView()->geometry();
        std::ostringstream line;
        line << "content " << content.width() << ' ' << content.height() << " panel " << panel.x()
             << ' ' << panel.y() << ' ' << panel.width() << ' ' << panel.height();
        say(line.str());
    }

    void read()
    {
        char buffer[256];
        const auto length = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (length <= 0) {
            QApplication::quit();
            return;
        }
        m_partial.append(buffer, static_cast<std::size_t>(length));
        for (auto end = m_partial.find('\n'); end != std::string::npos;
             end = m_partial.find('\n')) {
            perform(m_partial.substr(0, end));
            m_partial.erase(0, end + 1);
        }
    }

    void perform(const std::string& line)
    {
        std::istringstream words(line);
        std::string command;
        words >> command;
        if (command == "show") {
            m_controller.showWindow();
            say("shown " + std::to_string(m_controller.window()->winId()));
        } else if (command == "hide") {
            m_controller.window()->hide();
        } else if (command == "size") {
            int width = 0;
            int height = 0;
            words >> width >> height;
            m_controller.window()->resize(width, height);
        } else if (command == "repeat") {
            sayContent();
        } else if (command == "quit") {
            QApplication::quit();
        }
    }

    MyWindowController m_controller;
    QSocketNotifier m_input { STDIN_FILENO, QSocketNotifier::Read };
    std::string m_partial;
};

int run(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    FakeDefaultsStore defaults;
    if (const auto at = arguments.indexOf("--frame"); at >= 0) {
        const std::string frame = arguments.at(at + 1).toStdString();
        defaults.setData(PanelPlacement::Key, DefaultsStore::Bytes(frame.begin(), frame.end()));
    }
    QtMainLoop mainLoop;
    X11Adapters adapters = makeX11Adapters(mainLoop);
    FakeWindowTraits none;
    WithoutAspect withoutAspect(*adapters.windowTraits);
    WindowTraits& traits = arguments.contains("--plain") ? static_cast<WindowTraits&>(none)
        : arguments.contains("--no-aspect")              ? withoutAspect
                                                         : *adapters.windowTraits;
    int result = 0;
    {
        PanelProgram program(traits, defaults);
        result = QApplication::exec();
    }
    const auto frame = defaults.stored[std::string(PanelPlacement::Key)];
    std::cout << "frame " << std::string(frame.begin(), frame.end()) << std::endl;
    return result;
}
} // namespace

} // namespace kestrel::test

int main(int argc, char** argv)
{
    return kestrel::test::run(argc, argv);
}
