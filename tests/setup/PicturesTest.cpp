#include "tests/setup/ShownSetup.h"

namespace kestrel::test {
namespace {

TEST(SetupPictures, a_change_that_waits_to_be_assigned)
{
    ShownSetup bench;
    bench.fillAll();
    press(bench.field(1), with(Modifier::Command | Modifier::Option, Keys::F5));
    click(bench.field(1));
    bench.compare("changed");
}

TEST(SetupPictures, a_name_too_long_for_four_lines)
{
    ShownSetup bench;
    bench.fillAll();
    bench.button(0).setUniqueName("Consolidate clip and export selected as files to the desktop");
    bench.compare("long-name");
}

TEST(SetupPictures, the_rename_box_is_open)
{
    ShownSetup bench;
    bench.fillAll();
    doubleClick(bench.button(5));
    bench.button(5).editBox()->setCursorWidth(0);
    bench.compare("renaming");
}

TEST(SetupPictures, not_available)
{
    ShownSetup bench;
    press(bench.field(0), Keys::F3);
    press(bench.field(1), Keys::F5);
    bench.compare("not-available");
}

} // namespace
} // namespace kestrel::test
