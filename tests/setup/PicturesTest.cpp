#include "tests/setup/ShownSetup.h"

namespace kestrel::test {
namespace {

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

} // namespace
} // namespace kestrel::test
