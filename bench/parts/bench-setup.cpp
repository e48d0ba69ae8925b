// Measures how long a person at the setup window waits: from the menu's call until the window has
// been painted, from a key press until its field has, and from a click until the button and the
// first field have. What counts is the time that passes. A frame is 16.7 ms.

#include "common/NotificationCenter.h"
#include "setup/UserAssinableWindowController.h"
#include "tests/fakes/FakeInterface.h"
#include "tests/fakes/FakeSystem.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace kestrel::bench {

namespace {
using Seconds = std::chrono::duration<double>;

// Runs the main loop until widgets have been painted.
class PaintWatch : public QObject {
public:
    PaintWatch() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            std::erase(m_awaited, watched);
        return false;
    }

    template <typename Work>
    Seconds timeUntilPainted(std::vector<const QObject*> widgets, Work work)
    {
        m_awaited = std::move(widgets);
        const auto start = std::chrono::steady_clock::now();
        work();
        while (!m_awaited.empty())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return std::chrono::steady_clock::now() - start;
    }

private:
    std::vector<const QObject*> m_awaited;
};

// The window on a live set of twelve named buttons with four shortcuts each.
class Desk {
public:
    Desk()
    {
        m_live->initShortcutArray();
        for (int number = 1; number <= UserAssignFile::ButtonCount; ++number) {
            const ButtonEntry entry = m_live->getSwitchShortcut(number);
            for (std::size_t record = 0; record < ShortcutRecordCount; ++record) {
                entry->replace(4 * record, Modifier::Command | Modifier::Option);
                entry->replace(4 * record + 1, number);
                entry->replace(4 * record + 2, QStringLiteral("PAGE DOWN"));
            }
            m_live->setShortcutTitle(
                QStringLiteral("Consolidate clip and export %1").arg(number), number);
        }
        m_controller.initShortcut(m_live);
    }

    void open() // as the menu does it
    {
        m_controller.showWindow();
        m_controller.makeKeyAndOrderFront();
        m_controller.setupUI(*m_live);
    }
    void close()
    {
        m_controller.window()->close();
        settle();
    }
    static void settle()
    {
        while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) { }
    }

    [[nodiscard]] SetupWindow& window() const { return *m_controller.window(); }
    [[nodiscard]] MyShortcutField& field() const { return *m_controller.getMyShortcutField(0); }
    [[nodiscard]] UserAssignableButton& button(std::size_t index) const
    {
        return *m_controller.userAssignableButtons()[index]->view();
    }

    PaintWatch watch;

private:
    std::vector<std::string> m_calls;
    NotificationCenter m_center;
    test::FakeKeyTranslation m_translation;
    test::FakeDefaultsStore m_defaults;
    test::FakeDocumentFiles m_attributes;
    test::RecordingVisibility m_visibility { m_calls };
    std::shared_ptr<UserAssignFile> m_live = std::make_shared<UserAssignFile>();
    UserAssinableWindowController m_controller { { { m_center, m_translation }, m_defaults,
        m_attributes, m_visibility, [] {} } };
};

void showFromMenu(benchmark::State& state)
{
    for (auto _ : state) {
        Desk desk; // the first time is the slowest
        state.SetIterationTime(
            desk.watch.timeUntilPainted({ &desk.window() }, [&] { desk.open(); }).count());
        desk.close();
    }
}

void showAgainFromMenu(benchmark::State& state)
{
    Desk desk;
    for (auto _ : state) {
        state.SetIterationTime(
            desk.watch.timeUntilPainted({ &desk.window() }, [&] { desk.open(); }).count());
        desk.close();
    }
}

void showKeyPress(benchmark::State& state)
{
    Desk desk;
    static_cast<void>(desk.watch.timeUntilPainted({ &desk.window() }, [&] { desk.open(); }));
    quint32 keyCode = 0;
    for (auto _ : state) {
        Desk::settle();
        keyCode = (keyCode + 1) % 30;
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, 1, keyCode,
            Modifier::Command, QString(QChar(u'a' + static_cast<int>(keyCode))));
        state.SetIterationTime(desk.watch
                                   .timeUntilPainted({ &desk.field() },
                                       [&] { QCoreApplication::sendEvent(&desk.field(), &press); })
                                   .count());
    }
}

void showSelection(benchmark::State& state)
{
    Desk desk;
    static_cast<void>(desk.watch.timeUntilPainted({ &desk.window() }, [&] { desk.open(); }));
    std::size_t index = 0;
    for (auto _ : state) {
        Desk::settle();
        index = (index + 1) % UserAssignFile::ButtonCount;
        UserAssignableButton& button = desk.button(index);
        const QPointF at = button.rect().center();
        QMouseEvent press(QEvent::MouseButtonPress, at, button.mapToGlobal(at), Qt::LeftButton,
            Qt::LeftButton, Qt::NoModifier);
        state.SetIterationTime(desk.watch
                                   .timeUntilPainted({ &button, &desk.field() },
                                       [&] { QCoreApplication::sendEvent(&button, &press); })
                                   .count());
        QMouseEvent release(QEvent::MouseButtonRelease, at, button.mapToGlobal(at), Qt::LeftButton,
            Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&button, &release);
    }
}

void add(const char* name, void (*run)(benchmark::State&), int iterations)
{
    benchmark::RegisterBenchmark(name, run)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(iterations)
        ->Repetitions(5)
        ->ComputeStatistics("worst",
            [](const std::vector<double>& times) { return *std::ranges::max_element(times); })
        ->ReportAggregatesOnly();
}
} // namespace

int run(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Platforms without windows of their own complain at each showing.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    benchmark::Initialize(&argc, argv);
    add("open/new", showFromMenu, 10);
    add("open/again", showAgainFromMenu, 20);
    add("key-press", showKeyPress, 100);
    add("selection", showSelection, 100);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace kestrel::bench

int main(int argc, char** argv)
{
    return kestrel::bench::run(argc, argv);
}
