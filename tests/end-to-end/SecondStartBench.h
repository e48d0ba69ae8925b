#pragma once

#include "tests/end-to-end/RawConnection.h"
#include "tests/end-to-end/SetFile.h"
#include "tools/stage/ChildProcess.h"
#include "tools/stage/Patience.h"
#include "tools/stage/PrivateXServer.h"
#include "tools/stage/ThrowAwaySettings.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::test {

using stage::milliseconds;
using std::string_literals::operator""s;

// Starts of the real program by one user, on a display of their own and without a JACK server.
class SecondStartBench : public testing::Test {
protected:
    using Process = std::unique_ptr<stage::ChildProcess>;
    static constexpr milliseconds Timeout { 20000 };

    explicit SecondStartBench(const stage::PrivateXServer::Options& options = {})
        : display(options)
    {
        environment = settings.environment();
        environment.merge(display.environment());
        environment["JACK_DEFAULT_SERVER"] = "kestrel-none";
        environment["JACK_NO_START_SERVER"] = "1";
    }

    // `before` runs in the shell before the program starts. The output includes that on stderr.
    [[nodiscard]] Process start(
        const std::vector<std::string>& arguments = {}, const std::string& before = ":") const
    {
        std::vector<std::string> command { "sh", "-c", before + "; exec \"$0\" \"$@\" 2>&1",
            std::string(KESTREL_PROGRAMS) + "/kestrel" };
        command.insert(command.end(), arguments.begin(), arguments.end());
        return std::make_unique<stage::ChildProcess>(command, environment);
    }
    [[nodiscard]] Process startFirst(const std::string& before = ":") const
    {
        auto process = start({}, before);
        EXPECT_TRUE(isAnswering());
        return process;
    }
    // What the program answers to these bytes.
    [[nodiscard]] std::string answerTo(
        std::string_view request, milliseconds timeout = Timeout) const
    {
        const RawConnection connection(socket);
        if (connection.error() != 0 || !connection.send(request))
            return {};
        return connection.readToEnd(timeout);
    }
    // Asks with a request of an unknown kind.
    [[nodiscard]] bool isAnswering() const
    {
        return stage::comesTrue(
            [this] { return answerTo("KSTL\1?\0\0\0\0"s).size() > 10; }, Timeout);
    }
    [[nodiscard]] static int terminate(stage::ChildProcess& process)
    {
        process.signal(SIGTERM);
        return process.wait(Timeout).value_or(-1);
    }
    // True when the set of writeSet() is live in the program that runs. Ends the program.
    [[nodiscard]] bool isLiveIn(stage::ChildProcess& process) const
    {
        EXPECT_EQ(terminate(process), 0);
        stage::ChildProcess show(
            { std::string(KESTREL_PROGRAMS) + "/kestrelctl", "show" }, environment);
        const auto line = show.waitForLineWith("1 ", Timeout);
        return line && line->starts_with("1 ") && line->ends_with("B");
    }
    [[nodiscard]] std::string writeSet(const std::string& name = "set.ZKCF") const
    {
        return writeSetThatTypesB(settings.home() / name);
    }

    stage::ThrowAwaySettings settings;
    stage::PrivateXServer display;
    stage::ChildProcess::Environment environment;
    std::string folder = settings.home() / "runtime" / "kestrel";
    std::string socket = folder + "/kestrel.socket";
};

} // namespace kestrel::test
