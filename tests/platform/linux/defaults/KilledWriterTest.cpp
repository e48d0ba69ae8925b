#include "archive/AtomicFile.h"
#include "platform/linux/defaults/FileDefaultsStore.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <random>
#include <string>

namespace kestrel::test {

namespace {

constexpr int Kills = 150;
constexpr std::uint8_t Rounds = 100;

// Runs `work` in a new process. `work` must not return.
pid_t started(const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    return child;
}

int ended(pid_t child)
{
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

// Starts a process that repeats `step`, kills it at many different moments, and calls `check` after
// each kill.
void killAtRandom(const std::function<void(int)>& step, const std::function<void()>& check)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<useconds_t> microseconds(0, 12'000);
    for (int i = 0; i < Kills; ++i) {
        const pid_t child = started([&] {
            for (int turn = 0;; ++turn)
                step(turn);
        });
        ASSERT_GT(child, 0);
        usleep(microseconds(random));
        kill(child, SIGKILL);
        EXPECT_EQ(ended(child), SIGKILL);
        check();
        if (testing::Test::HasFailure())
            return;
    }
}

// Returns a text for `turn`. Its length differs between turns, so that a mixture of two texts
// shows.
QByteArray contentOf(int turn)
{
    return QByteArray(1000 + turn % 7 * 3000, static_cast<char>('a' + turn % 7));
}

bool isWhole(const QByteArray& content)
{
    return !content.isEmpty() && content == contentOf(content[0] - 'a');
}

QByteArray contentOfFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(KilledWriter, leaves_a_file_with_its_old_or_its_new_content)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("set.ZKCF");
    ASSERT_TRUE(AtomicFile::write(path, viewOf(contentOf(0))));
    killAtRandom(
        [&](int turn) {
            if (!AtomicFile::write(path, viewOf(contentOf(turn))))
                _exit(1);
        },
        [&] { EXPECT_TRUE(isWhole(contentOfFile(path))); });
}

TEST(KilledWriter, leaves_defaults_that_are_whole_and_not_locked)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("defaults.plist");
    const auto set = [&](const char* key, const QByteArray& value) {
        FileDefaultsStore store(path);
        store.setData(key, viewOf(value));
        return store.synchronise();
    };
    ASSERT_TRUE(set("other", "kept"));
    ASSERT_TRUE(set("key", contentOf(0)));
    killAtRandom(
        [&](int turn) {
            if (!set("key", contentOf(turn)))
                _exit(1);
        },
        [&] {
            FileDefaultsStore store(path);
            const auto value = store.data("key").value_or(Bytes());
            EXPECT_TRUE(isWhole(
                QByteArray(reinterpret_cast<const char*>(value.data()), std::ssize(value))));
            EXPECT_EQ(store.data("other"), (Bytes { 'k', 'e', 'p', 't' }));
            EXPECT_TRUE(set("other", "kept"));
        });
    EXPECT_FALSE(QFile::exists(path + ".damaged"));
}

std::string keyOf(int writer, int round)
{
    return std::to_string(writer) + ", " + std::to_string(round);
}

TEST(TwoWriters, lose_nothing_of_each_other)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("defaults.plist");
    const auto write = [&](std::uint8_t writer) {
        return started([&path, writer] {
            FileDefaultsStore store(path);
            for (std::uint8_t round = 0; round < Rounds; ++round) {
                store.setData(keyOf(writer, round), Bytes { writer, round });
                if (!store.synchronise())
                    _exit(1);
            }
        });
    };
    const pid_t one = write(0);
    const pid_t other = write(1);
    EXPECT_EQ(ended(one), 0);
    EXPECT_EQ(ended(other), 0);
    FileDefaultsStore store(path);
    for (std::uint8_t round = 0; round < Rounds; ++round) {
        for (const std::uint8_t writer : Bytes { 0, 1 }) {
            EXPECT_EQ(store.data(keyOf(writer, round)), (Bytes { writer, round }));
        }
    }
}

} // namespace

} // namespace kestrel::test
