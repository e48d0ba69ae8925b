#include "tests/end-to-end/SecondStartBench.h"

#include <sys/resource.h>

namespace kestrel::test {
namespace {

using SecondStart = SecondStartBench;

constexpr milliseconds LongerThanPatience { 6500 };

TEST_F(SecondStart, outwaits_a_program_that_ends_slowly_and_takes_its_place)
{
    const auto first = startFirst();
    first->signal(SIGSTOP);
    first->signal(SIGTERM);
    const auto second = start({ writeSet() });
    EXPECT_TRUE(second->waitForLineWith("waiting until it answers or ends", Timeout));
    first->signal(SIGCONT);
    EXPECT_EQ(first->wait(Timeout), 0);
    EXPECT_TRUE(isAnswering());
    EXPECT_TRUE(isLiveIn(*second));
}

TEST_F(SecondStart, hands_its_file_to_a_program_that_goes_on_again)
{
    const auto first = startFirst();
    first->signal(SIGSTOP);
    const auto second = start({ writeSet() });
    EXPECT_FALSE(second->wait(LongerThanPatience));
    first->signal(SIGCONT);
    EXPECT_EQ(second->wait(Timeout), 0);
    EXPECT_TRUE(isLiveIn(*first));
}

TEST_F(SecondStart, takes_the_place_of_a_program_that_is_killed_while_it_stands_still)
{
    const auto first = startFirst();
    first->signal(SIGSTOP);
    const auto second = start({ writeSet() });
    EXPECT_FALSE(second->wait(milliseconds(1000)));
    first->signal(SIGKILL);
    EXPECT_TRUE(isAnswering());
    EXPECT_TRUE(isLiveIn(*second));
}

TEST_F(SecondStart, is_never_lost_when_the_program_is_just_ending)
{
    auto running = startFirst();
    const auto file = writeSet();
    for (int round = 0; round < 10; ++round) {
        running->signal(SIGTERM);
        auto next = start({ file });
        EXPECT_EQ(running->wait(Timeout), 0);
        ASSERT_TRUE(isAnswering());
        ASSERT_FALSE(next->wait(milliseconds(0))) << "round " << round;
        running = std::move(next);
    }
    EXPECT_TRUE(isLiveIn(*running));
}

TEST_F(SecondStart, can_be_given_up_in_the_box_that_says_what_it_waits_for)
{
    const auto first = startFirst();
    first->signal(SIGSTOP);
    const auto second = start();
    const auto isBoxClosed = [&] {
        stage::ChildProcess key({ "xdotool", "search", "--onlyvisible", "--name", "^ZENTA Kestrel$",
                                    "windowfocus", "key", "--window", "0", "Escape" },
            environment);
        static_cast<void>(key.wait(Timeout));
        return second->wait(milliseconds(200)).has_value();
    };
    EXPECT_TRUE(second->waitForLineWith("another Kestrel is running", Timeout));
    EXPECT_TRUE(stage::comesTrue(isBoxClosed, Timeout));
    EXPECT_EQ(second->wait(Timeout), 1);
    first->signal(SIGCONT);
    EXPECT_EQ(terminate(*first), 0);
}

TEST_F(SecondStart, that_waits_is_ended_by_a_signal)
{
    const auto first = startFirst();
    first->signal(SIGSTOP);
    const auto second = start();
    EXPECT_TRUE(second->waitForLineWith("another Kestrel is running", Timeout));
    second->signal(SIGTERM);
    EXPECT_EQ(second->wait(Timeout), 1);
    first->signal(SIGCONT);
    EXPECT_EQ(terminate(*first), 0);
}

TEST_F(SecondStart, is_answered_as_soon_as_the_program_has_descriptors_again)
{
    const auto first = startFirst();
    rlimit before {};
    ASSERT_EQ(::prlimit(first->pid(), RLIMIT_NOFILE, nullptr, &before), 0);
    rlim_t used = 0; // descriptors, without a gap
    const auto descriptors = "/proc/" + std::to_string(first->pid()) + "/fd/";
    while (std::filesystem::is_symlink(descriptors + std::to_string(used)))
        ++used;
    const rlimit none { used, before.rlim_max };
    ASSERT_EQ(::prlimit(first->pid(), RLIMIT_NOFILE, &none, nullptr), 0);
    const auto second = start({ writeSet() });
    EXPECT_FALSE(second->wait(milliseconds(1000)));
    ASSERT_EQ(::prlimit(first->pid(), RLIMIT_NOFILE, &before, nullptr), 0);
    EXPECT_EQ(second->wait(Timeout), 0);
    EXPECT_TRUE(isLiveIn(*first));
}

TEST_F(SecondStart, passes_its_first_file_also_with_more_arguments_than_a_message_holds)
{
    const auto first = startFirst();
    std::vector<std::string> files { writeSet() };
    for (int i = 0; i < 15; ++i)
        files.push_back(std::string(100'000, 'x'));
    EXPECT_EQ(start(files)->wait(Timeout), 0);
    EXPECT_TRUE(isLiveIn(*first));
}

TEST_F(SecondStart, passes_a_file_whose_name_is_not_in_UTF_8)
{
    const auto first = startFirst();
    EXPECT_EQ(start({ writeSet("\xE4 \xFF.ZKCF") })->wait(Timeout), 0);
    EXPECT_TRUE(isLiveIn(*first));
}

TEST_F(SecondStart, passes_a_relative_path_and_one_with_a_line_feed)
{
    const auto first = startFirst();
    static_cast<void>(writeSet("a\nb.ZKCF"));
    EXPECT_EQ(start({ "a\nb.ZKCF" }, "cd " + settings.home().string())->wait(Timeout), 0);
    EXPECT_TRUE(isLiveIn(*first));
}

TEST_F(SecondStart, passes_the_file_of_a_URL)
{
    const auto first = startFirst();
    static_cast<void>(writeSet("a b.ZKCF"));
    EXPECT_EQ(start({ "file://" + settings.home().string() + "/a%20b.ZKCF" })->wait(Timeout), 0);
    EXPECT_TRUE(isLiveIn(*first));
}

TEST_F(SecondStart, is_not_needed_for_a_file_whose_name_is_not_in_UTF_8)
{
    const auto first = start({ writeSet("\xE4.ZKCF") });
    EXPECT_TRUE(isAnswering());
    EXPECT_TRUE(isLiveIn(*first));
}

} // namespace
} // namespace kestrel::test
