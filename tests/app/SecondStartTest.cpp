#include "app/SecondStart.h"

#include "app/FileOpenEvents.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileOpenEvent>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using Claim = SingleInstance::Claim;
using Outcome = SecondStart::Outcome;

class SecondStartTest : public testing::Test {
protected:
    SecondStartTest() { EXPECT_EQ(first->claim(), Claim::First); }

    void takeStarts()
    {
        QObject::connect(first.get(), &SingleInstance::startedAgain,
            [this](const QStringList& paths) { starts.append(paths); });
    }

    QTemporaryDir folder;
    QString path = folder.filePath("kestrel");
    std::unique_ptr<SingleInstance> first = std::make_unique<SingleInstance>(path);
    SingleInstance second { path };
    QList<QStringList> starts;
};

TEST_F(SecondStartTest, is_answered_after_its_files_were_handled)
{
    SecondStart start(second, { "/a" });
    bool isHandled = false;
    QObject::connect(first.get(), &SingleInstance::startedAgain, [&] {
        QElapsedTimer time; // if the answer came before, it would be read in here
        for (time.start(); time.elapsed() < 100;)
            QCoreApplication::processEvents();
        isHandled = start.files() == QStringList { "/a" };
    });
    start.begin();
    EXPECT_EQ(start.wait(), Outcome::HandedOver);
    EXPECT_TRUE(isHandled);
}

TEST_F(SecondStartTest, takes_the_place_when_the_program_has_closed_its_socket_and_ends)
{
    first->close();
    SecondStart start(second, { "/a" });
    start.begin();
    QTimer::singleShot(300, [this] { first.reset(); });
    EXPECT_EQ(start.wait(), Outcome::Claimed);
    EXPECT_EQ(start.files(), QStringList { "/a" });
}

TEST_F(SecondStartTest, hands_over_files_that_come_while_it_waits)
{
    takeStarts();
    SecondStart start(second, {});
    QObject::connect(first.get(), &SingleInstance::startedAgain, [&](const QStringList& paths) {
        if (paths == QStringList { "/a" })
            start.add({ "/b", "/c" });
    });
    start.add({ "/a" }); // before it begins: an event of the launch
    start.begin();
    EXPECT_EQ(start.wait(), Outcome::HandedOver);
    EXPECT_EQ(starts, QList<QStringList>({ { "/a" }, { "/b", "/c" } }));
}

TEST_F(SecondStartTest, sends_nothing_before_it_begins)
{
    takeStarts();
    SecondStart start(second, {});
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    EXPECT_TRUE(starts.isEmpty());
    start.add({ "/a" });
    start.begin();
    EXPECT_EQ(start.wait(), Outcome::HandedOver);
    EXPECT_EQ(starts, QList<QStringList> { { "/a" } });
}

TEST_F(SecondStartTest, takes_along_the_files_that_arrive_as_events_of_its_launch)
{
    takeStarts();
    SecondStart start(second, {});
    FileOpenEvents events([&start](const QStringList& paths) { start.add(paths); });
    for (const char* path : { "/a", "/b" }) {
        QFileOpenEvent event { QString(path) };
        QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
    }
    start.begin(); // the launch is over
    EXPECT_EQ(start.wait(), Outcome::HandedOver);
    EXPECT_EQ(starts, QList<QStringList>({ { "/a", "/b" } }));
}

TEST_F(SecondStartTest, says_why_it_is_refused)
{
    SecondStart start(second, { "relative" });
    start.begin();
    EXPECT_EQ(start.wait(), Outcome::Refused);
    EXPECT_EQ(start.problem(), "A path is not absolute or not in UTF-8.");
    EXPECT_EQ(start.files(), QStringList { "relative" });
}

TEST_F(SecondStartTest, can_be_given_up)
{
    first->close();
    SecondStart start(second, {});
    start.begin();
    QTimer::singleShot(50, [&start] { start.giveUp(); });
    EXPECT_EQ(start.wait(), Outcome::GivenUp);
}

TEST_F(SecondStartTest, says_once_that_nobody_answers_and_goes_on)
{
    first->close();
    SecondStart start(second, {});
    int said = 0;
    QObject::connect(&start, &SecondStart::runsOutOfPatience, [&] {
        ++said;
        first.reset();
    });
    QElapsedTimer time;
    time.start();
    start.begin();
    EXPECT_EQ(start.wait(), Outcome::Claimed);
    EXPECT_EQ(said, 1);
    EXPECT_GE(time.elapsed(), SecondStart::Patience.count() - 10);
}

TEST(SecondStartFailing, says_why_the_place_cannot_be_known)
{
    SingleInstance nowhere { QString() };
    EXPECT_EQ(nowhere.claim(), Claim::Failed);
    SecondStart start(nowhere, {});
    start.begin();
    EXPECT_EQ(start.wait(), Outcome::Failed);
    EXPECT_EQ(start.problem(), "There is no folder for the files of the session");
}

} // namespace
} // namespace kestrel::test
