#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/Patience.h"
#include "tools/stage/StatusIcon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace kestrel::test {
namespace {

using stage::milliseconds;

std::string recording(const std::string& name)
{
    return std::string(KESTREL_RECORDINGS "/").append(name).append(".txt");
}

std::vector<std::string> linesOf(const std::string& path)
{
    std::ifstream file(path);
    EXPECT_TRUE(file) << path;
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

std::size_t packetsIn(const std::string& path)
{
    const auto lines = linesOf(path);
    return static_cast<std::size_t>(std::count_if(lines.begin(), lines.end(),
        [](const std::string& line) { return line.find(" send ") != std::string::npos; }));
}

// A studio with the keys that the recordings press. The recording is the only console.
class Recordings : public testing::Test {
protected:
    Recordings()
    {
        m_studio.studio.assign({ "6", "Command+S" });
        m_studio.studio.assign({ "2", "Command+C", "Option+F5", "A", "Shift+Command+Z" });
        m_studio.startWorkstation();
        m_studio.startKestrel();
    }

    // Returns when every packet was sent.
    void play(const std::string& name, std::vector<std::string> options = {})
    {
        options.push_back(recording(name));
        m_studio.startConsole(options);
        for (std::size_t n = packetsIn(recording(name)); n > 0; --n)
            ASSERT_TRUE(m_studio.console->waitForLineWith("sent ", milliseconds(90000))) << n;
    }
    [[nodiscard]] RunningStudio::Keys typed()
    {
        return m_studio.arrivingKeys(*m_studio.workstation);
    }
    [[nodiscard]] RunningStudio& studio() { return m_studio; }

    [[nodiscard]] bool panelShows(const std::string& approved)
    {
        const auto picture = m_studio.studio.home() / "panel.png";
        for (const auto& window : stage::shownWindows(m_studio.studio.displayName(), "kestrel")) {
            if (window.title == "Plug-in Panel" && m_studio.studio.photograph(picture, window)) {
                stage::ChildProcess compare({ "sh", "-c",
                    "exec compare -metric AE -fuzz 0.5% \"$0\" \"$1\" null: 2>/dev/null",
                    KESTREL_APPROVED "/" + approved + "@1x.png", picture.string() });
                return compare.wait(milliseconds(20000)) == 0;
            }
        }
        return false;
    }

private:
    RunningStudio m_studio;
};

TEST_F(Recordings, keys_are_typed_as_they_were)
{
    play("keys");
    EXPECT_EQ(typed(), linesOf(KESTREL_RECORDINGS "/keys.typed"));
}

TEST_F(Recordings, four_times_as_fast_types_the_same)
{
    play("keys", { "--speed", "4" });
    EXPECT_EQ(typed(), linesOf(KESTREL_RECORDINGS "/keys.typed"));
}

TEST_F(Recordings, in_a_loop_all_comes_again)
{
    play("keys", { "--speed", "20", "--loop" });
    const auto once = linesOf(KESTREL_RECORDINGS "/keys.typed");
    const auto again = [&] {
        return studio().workstation->waitForLineWith(once.front(), milliseconds(20000)).has_value();
    };
    EXPECT_TRUE(again());
    EXPECT_TRUE(again());
    EXPECT_TRUE(again());
}

TEST_F(Recordings, the_panel_shows_what_it_showed)
{
    const stage::StatusIcon icon(studio().studio.displayName(), studio().studio.environment());
    icon.choosePanel();
    play("equaliser", { "--speed", "4" });
    EXPECT_TRUE(stage::comesTrue([this] { return panelShows("equaliser"); }, milliseconds(20000)));
    EXPECT_TRUE(typed().empty());
}

// The console may be started on a file that is cut off or no script at all.
TEST_F(Recordings, a_file_that_is_no_script_sends_nothing_and_says_where)
{
    const auto path = (studio().studio.home() / "cut.txt").string();
    std::ofstream(path) << "heartbeat off\nat 0.5 send B0 0F 4x\n";
    stage::ChildProcess console({ "sh", "-c", "exec \"$0\" \"$1\" 2>&1",
                                    std::string(KESTREL_PROGRAMS) + "/zenta-console", path },
        studio().studio.environment());
    EXPECT_EQ(console.waitForLineWith("", milliseconds(20000)),
        "zenta-console: " + path
            + ": line 2, column 19: at 0.5 send B0 0F 4x: \"4x\" is not a byte of two hex digits");
    EXPECT_EQ(console.wait(milliseconds(20000)), 2);
}

} // namespace
} // namespace kestrel::test
