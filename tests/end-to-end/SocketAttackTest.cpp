#include "tests/end-to-end/SecondStartBench.h"

#include <sys/stat.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>

namespace kestrel::test {
namespace {

namespace fs = std::filesystem;

constexpr uid_t Nobody = 65534;

std::string message(char kind, const std::string& body)
{
    std::string bytes = "KSTL\1"s + kind;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(body.size() >> shift & 0xFF);
    return bytes + body;
}

const std::string Done = message('D', "");

class SocketAttack : public SecondStartBench {
protected:
    // A second start reaches the first with its file.
    void expectSecondStartArrives(stage::ChildProcess& first) const
    {
        EXPECT_EQ(start({ writeSet() })->wait(Timeout), 0);
        EXPECT_TRUE(isLiveIn(first));
    }
    [[nodiscard]] bool isShown() const
    {
        stage::ChildProcess search(
            { "xdotool", "search", "--onlyvisible", "--name", "User Assignable Setup" },
            environment);
        return search.wait(Timeout) == 0;
    }
};

TEST_F(SocketAttack, anything_in_the_place_of_the_socket_is_replaced)
{
    const fs::path other = settings.home() / "other";
    std::ofstream(other) << "precious";
    const std::vector<std::function<void()>> squatters {
        [&] { std::ofstream { socket } << "stale"; },
        [&] { fs::create_symlink(other, socket); },
        [&] { fs::create_symlink(settings.home() / "nowhere", socket); },
        [&] { ASSERT_EQ(::mkfifo(socket.c_str(), 0600), 0); },
    };
    fs::create_directory(folder);
    for (const auto& squat : squatters) {
        squat();
        const auto first = startFirst();
        EXPECT_EQ(fs::symlink_status(socket).type(), fs::file_type::socket);
        expectSecondStartArrives(*first);
        EXPECT_FALSE(fs::exists(fs::symlink_status(socket))) << "removed at the end";
    }
    std::string content;
    std::getline(std::ifstream(other), content);
    EXPECT_EQ(content, "precious");
}

TEST_F(SocketAttack, a_lock_left_behind_by_a_kill_is_no_running_program)
{
    fs::create_directory(folder);
    std::ofstream(folder + "/kestrel.lock").close();
    const auto first = startFirst();
    expectSecondStartArrives(*first);
}

TEST_F(SocketAttack, the_real_reason_is_said_when_nobody_can_know_who_runs)
{
    const auto expectReason = [&](const std::string& reason) {
        const auto failed = start();
        const auto line = failed->waitForLineWith("kestrel: ", Timeout);
        ASSERT_TRUE(line);
        EXPECT_EQ(*line, "kestrel: " + reason);
    };
    std::ofstream(folder).close();
    expectReason(folder + ": Not a directory");
    fs::remove(folder);
    fs::create_symlink(settings.home(), folder);
    expectReason(folder + ": Not a directory");
    fs::remove(folder);
    fs::create_directories(folder + "/kestrel.lock");
    expectReason(folder + "/kestrel.lock: Is a directory");
}

TEST_F(SocketAttack, another_user_cannot_reach_the_program)
{
    const auto first = startFirst();
    struct stat status { };
    ASSERT_EQ(::stat(folder.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    ASSERT_EQ(::stat(socket.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    if (::geteuid() == 0) { // only root can try it as another user
        for (fs::path parent = fs::path(folder).parent_path(); parent != "/tmp" && parent != "/";
             parent = parent.parent_path())
            fs::permissions(parent, fs::perms::others_exec, fs::perm_options::add);
        const auto errorOfConnecting
            = [&] { return ::setuid(Nobody) == 0 ? RawConnection(socket).error() : -1; };
        EXPECT_EXIT(::_exit(errorOfConnecting()), testing::ExitedWithCode(EACCES), "");
    }
    expectSecondStartArrives(*first);
}

TEST_F(SocketAttack, thousands_of_silent_connections_do_not_keep_a_second_start_away)
{
    const auto first = startFirst();
    const auto descriptors = [&] {
        const fs::directory_iterator list("/proc/" + std::to_string(first->pid()) + "/fd");
        return std::distance(begin(list), {});
    };
    const auto before = descriptors();
    std::vector<std::unique_ptr<RawConnection>> connections;
    for (int i = 0; i < 3000; ++i) {
        connections.push_back(std::make_unique<RawConnection>(socket));
        if (connections.size() > 500)
            connections.erase(connections.begin()); // or this process runs out of descriptors
    }
    EXPECT_EQ(start({ writeSet() })->wait(Timeout), 0);
    EXPECT_LE(descriptors(), before + 64);
    connections.clear();
    EXPECT_TRUE(stage::comesTrue([&] { return descriptors() <= before + 2; }, Timeout));
    EXPECT_TRUE(isLiveIn(*first));
}

TEST_F(SocketAttack, a_slow_client_is_dropped_and_delays_nobody)
{
    const auto first = startFirst();
    const RawConnection slow(socket);
    ASSERT_TRUE(slow.send("KST"));
    const RawConnection silent(socket);
    EXPECT_EQ(start({ writeSet() })->wait(milliseconds(4000)), 0);
    EXPECT_EQ(slow.readToEnd(milliseconds(10000)), "");
    EXPECT_EQ(silent.readToEnd(milliseconds(10000)), "");
    EXPECT_TRUE(isLiveIn(*first));
}

TEST_F(SocketAttack, a_message_that_is_cut_huge_or_foreign_opens_nothing)
{
    const auto first = startFirst();
    EXPECT_EQ(answerTo("KSTL\1O\x7F\xFF\xFF\xFF"s), message('R', "The message is too long."));
    EXPECT_EQ(answerTo("KSTL\1O\0\x10\0\1"s), message('R', "The message is too long."));
    EXPECT_EQ(
        answerTo("GET / HTTP/1.1\r\n\r\n"), message('R', "This is not a message to Kestrel."));
    EXPECT_EQ(answerTo("KSTL\2O\0\0\0\0"s),
        message('R', "The running Kestrel speaks version 1 of the protocol."));
    EXPECT_EQ(answerTo(message('X', "")),
        message('R', "The running Kestrel does not know this request."));
    EXPECT_EQ(answerTo("KSTL\1O\0\0\0\x05/a"s, milliseconds(10000)), "") << "cut";
    { // a huge one that is announced as a small one
        const RawConnection connection(socket);
        std::string much = message('O', "relative\0"s) + std::string(200'000, 'x');
        static_cast<void>(connection.send(much));
        static_cast<void>(connection.readToEnd(Timeout));
    }
    EXPECT_FALSE(isShown());
    expectSecondStartArrives(*first);
}

TEST_F(SocketAttack, a_request_that_arrives_with_the_end_is_not_answered)
{
    const auto first = startFirst();
    const RawConnection connection(socket);
    ASSERT_EQ(answerTo(message('X', "")).substr(4, 2), "\1R"); // by now the other is accepted too
    first->signal(SIGSTOP);
    ASSERT_TRUE(connection.send(message('O', "")));
    first->signal(SIGTERM);
    first->signal(SIGCONT);
    EXPECT_EQ(connection.readToEnd(Timeout), "");
    EXPECT_EQ(first->wait(Timeout), 0);
}

TEST_F(SocketAttack, only_absolute_paths_in_UTF_8_are_taken)
{
    const auto first = startFirst();
    static_cast<void>(writeSet("relative.ZKCF"));
    const auto refusal = message('R', "A path is not absolute or not in UTF-8.");
    EXPECT_EQ(answerTo(message('O', "relative.ZKCF\0"s)), refusal);
    EXPECT_EQ(answerTo(message('O', "/a\xFF\0"s)), refusal);
    EXPECT_EQ(answerTo(message('O', "\0"s)), refusal);
    EXPECT_EQ(answerTo(message('O', "/no end")), refusal);
    EXPECT_EQ(answerTo(message('O', writeSet("a\nb\n.ZKCF") + '\0')), Done);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(answerTo(message('O', "")), Done);
    EXPECT_TRUE(stage::comesTrue([this] { return isShown(); }, Timeout));
    EXPECT_TRUE(isLiveIn(*first));
}

// The folder of the session is not one that another user could have prepared.
TEST_F(SocketAttack, without_a_usable_runtime_folder_the_starts_meet_in_the_state_folder)
{
    const fs::path runtime = settings.home() / "runtime";
    folder = settings.home() / "state" / "kestrel";
    socket = folder + "/kestrel.socket";
    const auto expectStartsMeet = [&](const std::string& before) {
        SCOPED_TRACE(before);
        const auto first = startFirst(before);
        EXPECT_EQ(start({ writeSet() }, before)->wait(Timeout), 0);
        EXPECT_TRUE(isLiveIn(*first));
        EXPECT_FALSE(fs::exists(runtime / "kestrel"));
    };
    expectStartsMeet("unset XDG_RUNTIME_DIR");
    expectStartsMeet("XDG_RUNTIME_DIR=relative");
    fs::permissions(runtime, fs::perms::all);
    expectStartsMeet(":");
    fs::permissions(runtime, fs::perms::owner_read | fs::perms::owner_exec);
    expectStartsMeet(":");
    fs::permissions(runtime, fs::perms::owner_all);
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(runtime.c_str(), Nobody, Nobody), 0);
        expectStartsMeet(":");
    }
}

} // namespace
} // namespace kestrel::test
