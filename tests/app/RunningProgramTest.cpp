#include "app/RunningProgram.h"

#include "app/FileOpenEvents.h"
#include "app/SecondStart.h"
#include "tests/app/AppDelegateBench.h"

#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileOpenEvent>

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>

namespace kestrel::test {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds LongestTurn { 10000 };

// Says on stderr when it is destroyed, which releases the keys.
class TellingKeyEvents final : public KeyEvents {
public:
    ~TellingKeyEvents() override { std::fputs("keys released", stderr); }
    Result post(KeyCode, Direction, ModifierFlags, AutoRepeat) override { return Result::Posted; }
    Result postBare(KeyCode, Direction) override { return Result::Posted; }
    void releaseAll() override { }
};

// The real one would end the tests.
void noDeadline(unsigned, int) { }

class RunningProgramTest : public testing::Test, protected PlatformBench {
protected:
    RunningProgramTest() { EXPECT_EQ(instance.claim(), SingleInstance::Claim::First); }

    // Runs the program until `isDone`, and then tells it to quit.
    int runUntil(const std::function<bool()>& isDone, const QStringList& files = {})
    {
        QTimer look;
        QElapsedTimer passed;
        passed.start();
        QObject::connect(&look, &QTimer::timeout, qApp, [&] {
            if (isDone() || passed.hasExpired(LongestTurn.count()))
                QCoreApplication::exit(ExitCode);
        });
        look.start(1);
        return program.run(files);
    }
    // Starts the program again, which happens while it runs.
    void startAgain(const QStringList& files)
    {
        second.emplace(secondInstance, files);
        second->begin();
    }
    [[nodiscard]] bool wasHandedOver()
    {
        return second->wait() == SecondStart::Outcome::HandedOver;
    }
    [[nodiscard]] QString titleOfFirstKey()
    {
        return program.delegate()
            .myUserAssignFile()
            ->getShortcutTitle(ArchiveValue(1))
            .value_or(QString());
    }
    QString fileWithTitle(const QString& title)
    {
        return write(title + QStringLiteral(".ZKCF"), setWithTitle(title));
    }

    static constexpr int ExitCode = 7;
    QString place = folder.filePath(QStringLiteral("instance"));
    SingleInstance instance { place };
    SingleInstance secondInstance { place };
    std::optional<SecondStart> second;
    FileOpenEvents fileOpenEvents;
    RunningProgram program { platform, { mainLoop, clock, instance, fileOpenEvents }, noDeadline };
};

TEST_F(RunningProgramTest, opens_the_first_file_that_it_is_started_with)
{
    const QString first = fileWithTitle("First");
    runUntil([] { return true; }, { first, fileWithTitle("Second") });
    EXPECT_EQ(titleOfFirstKey(), "First");
}

TEST_F(RunningProgramTest, opens_the_files_that_the_system_announces)
{
    const QString file = fileWithTitle("Announced");
    QCoreApplication::postEvent(qApp, new QFileOpenEvent(file));
    runUntil([this] { return titleOfFirstKey() == "Announced"; });
    EXPECT_EQ(titleOfFirstKey(), "Announced");
}

TEST_F(RunningProgramTest, opens_the_files_of_a_later_start)
{
    startAgain({ fileWithTitle("Later") });
    runUntil([this] { return titleOfFirstKey() == "Later" && wasHandedOver(); });
    EXPECT_EQ(titleOfFirstKey(), "Later");
    EXPECT_TRUE(wasHandedOver());
    EXPECT_FALSE(program.delegate().userAssignableWindowController()->isVisible());
}

TEST_F(RunningProgramTest, a_later_start_without_files_brings_up_the_setup_window)
{
    startAgain({});
    const auto isShown
        = [this] { return program.delegate().userAssignableWindowController()->isVisible(); };
    bool wasShown = false;
    runUntil([&] { return (wasShown = isShown()) && wasHandedOver(); });
    EXPECT_TRUE(wasShown);
    EXPECT_TRUE(wasHandedOver());
}

TEST_F(RunningProgramTest, ends_in_order_with_the_exit_code_that_it_is_told)
{
    int storedBefore = -1;
    EXPECT_EQ(runUntil([&] {
        storedBefore = defaults.synchronised;
        return true;
    }),
        ExitCode);
    EXPECT_FALSE(program.delegate().activeSenceTimer().isActive());
    EXPECT_EQ(defaults.synchronised, storedBefore + 1);
}

TEST_F(RunningProgramTest, a_system_that_asks_for_its_end_gets_it_with_an_alert_and_a_sheet_open)
{
    int storedBefore = -1;
    int storedBeforeClosing = -1;
    int open = 0;
    QTimer::singleShot(0, [this] { program.delegate().about(); });
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, qApp, [&] {
        auto* const alert = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!alert)
            return;
        look.stop();
        QFileDialog sheet; // a dialog that is only modal to its own window
        sheet.setOption(QFileDialog::DontUseNativeDialog);
        sheet.show();
        for (const QDialog* dialog :
            { static_cast<QDialog*>(alert), static_cast<QDialog*>(&sheet) })
            open += dialog->isVisible() ? 1 : 0;
        QObject::connect(
            alert, &QDialog::finished, qApp, [&] { storedBeforeClosing = defaults.synchronised; });
        storedBefore = defaults.synchronised;
        workspace.quitRequested();
        open -= sheet.isVisible() ? 0 : 1;
        open -= alert->isVisible() ? 0 : 1;
    });
    look.start(1);
    EXPECT_EQ(program.run({}), EXIT_SUCCESS);
    EXPECT_EQ(open, 0);
    EXPECT_EQ(storedBeforeClosing, storedBefore + 1);
}

TEST_F(RunningProgramTest, nobody_asks_it_for_its_end_once_it_is_gone)
{
    {
        FileOpenEvents events;
        const RunningProgram other(platform, { mainLoop, clock, instance, events }, noDeadline);
        EXPECT_TRUE(workspace.quitRequested);
    }
    EXPECT_FALSE(workspace.quitRequested);
}

class RunningProgramDeathTest : public PlatformBench {
public:
    // Ends the process as Qt does when the display has gone.
    [[noreturn]] void exitWhileRunning()
    {
        platform.keyEvents = std::make_unique<TellingKeyEvents>();
        SingleInstance instance(folder.filePath("instance"));
        FileOpenEvents fileOpenEvents;
        RunningProgram program(platform, { mainLoop, clock, instance, fileOpenEvents }, noDeadline);
        defaults.onSynchronise = [] { std::fputs("assignments stored, ", stderr); };
        QTimer::singleShot(0, [] { std::exit(1); });
        (void)program.run({});
        std::abort();
    }
};

TEST(RunningProgramExit, of_the_process_stores_the_assignments_and_then_releases_the_keys)
{
    EXPECT_EXIT(RunningProgramDeathTest().exitWhileRunning(), testing::ExitedWithCode(1),
        "assignments stored, keys released$");
}

} // namespace
} // namespace kestrel::test
