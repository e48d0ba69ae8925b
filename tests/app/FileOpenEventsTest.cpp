#include "app/FileOpenEvents.h"

#include <QCoreApplication>
#include <QFileOpenEvent>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

class FileOpenEventsTest : public testing::Test {
protected:
    static void open(QObject* receiver, const QString& path)
    {
        QCoreApplication::postEvent(receiver, new QFileOpenEvent(path));
    }
    // The first turn of the loop gathers the files. The second one delivers them.
    static void turn()
    {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
    static void open(const QString& path) { open(QCoreApplication::instance(), path); }

    QList<QStringList> calls;
    FileOpenEvents events { [this](const QStringList& paths) { calls.append(paths); } };
};

TEST_F(FileOpenEventsTest, files_opened_together_come_in_one_call_and_in_their_order)
{
    open("/b.ZKCF");
    open("/a b.ZKCF");
    turn();
    EXPECT_EQ(calls, (QList<QStringList> { { "/b.ZKCF", "/a b.ZKCF" } }));
}

TEST_F(FileOpenEventsTest, files_opened_later_come_in_a_call_of_their_own)
{
    open("/first.ZKCF");
    turn();
    open("/second.ZKCF");
    turn();
    EXPECT_EQ(calls, (QList<QStringList> { { "/first.ZKCF" }, { "/second.ZKCF" } }));
}

TEST_F(FileOpenEventsTest, files_without_a_handler_wait_for_the_next_one)
{
    events.setHandler({});
    open("/a.ZKCF");
    turn();
    EXPECT_EQ(calls, QList<QStringList>());
    QList<QStringList> later;
    events.setHandler([&later](const QStringList& paths) { later.append(paths); });
    turn();
    EXPECT_EQ(calls, QList<QStringList>());
    EXPECT_EQ(later, QList<QStringList> { { "/a.ZKCF" } });
}

TEST_F(FileOpenEventsTest, what_is_no_file_and_what_is_for_another_object_is_left_out)
{
    QObject other;
    open(&other, "/other.ZKCF");
    QCoreApplication::postEvent(
        QCoreApplication::instance(), new QFileOpenEvent(QUrl("https://example.org/a.ZKCF")));
    turn();
    EXPECT_EQ(calls, QList<QStringList>());
}

} // namespace
} // namespace kestrel::test
