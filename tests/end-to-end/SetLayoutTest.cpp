#include "tests/end-to-end/KestrelctlBench.h"

#include <fstream>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A user who looks through a set with the keyboard layout of the session.
class SetLayout : public KestrelctlBench {
protected:
    SetLayout()
        : KestrelctlBench({ .tray = false })
    {
    }

    // The first key types Z by name and the second ; as an American keyboard has them.
    void SetUp() override
    {
        std::ofstream(path("set.json")) << R"({ "keys": [
            { "key": 1, "shortcuts": [{ "shortcut": "⌘Z" }] },
            { "key": 2, "shortcuts": [{ "shortcut": ";" }, { "shortcut": "F5" }] },
            { "key": 3, "shortcuts": [{ "shortcut": "S" }] } ] })";
        ASSERT_EQ(run({ "set", "from-json", path("set.json"), "-o", path("set.ZKCF") }).code, 0);
    }
    [[nodiscard]] std::string path(const std::string& name) const
    {
        return (studio.studio.home() / name).string();
    }
    void chooseLayout(const std::string& layout) const
    {
        stage::ChildProcess process({ "setxkbmap", layout }, studio.studio.environment());
        ASSERT_EQ(process.wait(Timeout), 0);
    }
    [[nodiscard]] Outcome check() const { return run({ "set", "check", path("set.ZKCF") }); }
};

TEST_F(SetLayout, check_tells_which_keys_the_present_layout_does_not_have)
{
    chooseLayout("us");
    EXPECT_THAT(check().lines, IsEmpty());
    chooseLayout("de");
    const Outcome german = check();
    EXPECT_EQ(german.code, 1);
    EXPECT_THAT(german.lines,
        ElementsAre("unknown-key: shortcut 1 of key 1: in this keyboard layout the key of \"Z\" "
                    "types \"Y\"",
            "unknown-key: shortcut 1 of key 2: in this keyboard layout the key of \";\" types "
            "\"Ö\""));
    chooseLayout("us");
    EXPECT_EQ(check().code, 0);
}

TEST_F(SetLayout, check_says_when_there_is_no_layout_to_ask)
{
    chooseLayout("de");
    added["DISPLAY"] = "";
    const Outcome outcome = check();
    EXPECT_EQ(outcome.code, 0);
    EXPECT_THAT(outcome.lines,
        ElementsAre("kestrelctl: no keyboard layout could be asked what its keys type"));
}

} // namespace
} // namespace kestrel::test
