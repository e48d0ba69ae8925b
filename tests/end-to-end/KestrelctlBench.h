#pragma once

#include "tests/end-to-end/RunningStudio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace kestrel::test {

using stage::milliseconds;

// A studio in which the user runs kestrelctl.
class KestrelctlBench : public testing::Test {
protected:
    struct Outcome {
        int code = -1;
        std::vector<std::string> lines; // of both outputs
    };

    static constexpr milliseconds Timeout { 20000 };

    explicit KestrelctlBench(const stage::Studio::Options& options = {})
        : studio(options)
    {
    }

    [[nodiscard]] std::unique_ptr<stage::ChildProcess> start(
        const std::vector<std::string>& arguments) const
    {
        std::vector<std::string> command { "sh", "-c", "exec \"$0\" \"$@\" 2>&1",
            std::string(KESTREL_PROGRAMS) + "/kestrelctl" };
        command.insert(command.end(), arguments.begin(), arguments.end());
        auto environment = added;
        environment.merge(studio.studio.environment());
        return std::make_unique<stage::ChildProcess>(command, environment);
    }
    [[nodiscard]] Outcome run(const std::vector<std::string>& arguments) const
    {
        const auto process = start(arguments);
        Outcome outcome;
        outcome.code = process->wait(Timeout).value_or(-1);
        outcome.lines = process->linesUntilQuiet(milliseconds(200));
        return outcome;
    }
    // The lines of the doctor that say that something is wrong.
    [[nodiscard]] Outcome wrongs() const
    {
        Outcome outcome = run({ "doctor" });
        EXPECT_FALSE(outcome.lines.empty());
        std::erase_if(
            outcome.lines, [](const std::string& line) { return line.starts_with("ok "); });
        return outcome;
    }
    void expectWrong(const std::vector<std::string>& lines) const
    {
        const Outcome outcome = wrongs();
        EXPECT_EQ(outcome.lines, lines);
        EXPECT_EQ(outcome.code, lines.empty() ? 0 : 1);
    }

    RunningStudio studio;
    stage::ChildProcess::Environment added; // to the environment of kestrelctl
};

} // namespace kestrel::test
