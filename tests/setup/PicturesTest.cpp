#include "tests/setup/SetupBench.h"
#include "tests/support/ApprovedPicture.h"

#include <QPainter>
#include <QWidget>

namespace kestrel::test {
namespace {

// Rendering of text may differ by this much of 255 between versions of the font library.
constexpr int Tolerance = 8;

// Draws the window in the given pixel density.
QImage picture(SetupBench& bench, int density = 1)
{
    QWidget& window = *bench.controller.window();
    QImage image(window.size() * density, QImage::Format_RGB32);
    image.setDevicePixelRatio(density);
    window.render(&image);
    return image;
}

void compare(const QImage& shown, const QString& name)
{
    compareWithApproved(QStringLiteral("setup/") + name, shown, Tolerance);
}

struct Shown : SetupBench {
    Shown()
    {
        open();
        activate(*controller.window());
    }
    void fillAll()
    {
        using namespace Modifier;
        give(1, 0, Command, 1, "S");
        give(2, 0, Command, 6, "Z");
        give(2, 1, Command | Shift, 6, "Z");
        give(3, 0, 0, 49, "SPACE");
        give(3, 1, Control | Option, 96, "F5");
        give(3, 2, Option, 1, "S");
        give(4, 0, Shift | Control | Option | Command, 121, "PAGE DOWN");
        give(4, 1, Shift, 48, "TAB");
        give(4, 2, 0, 87, "NUM 5");
        give(4, 3, Command, 123, u"\u2190"_qs);
        for (int number = 5; number <= 12; ++number)
            give(number, 0, Command, 18, QString::number(number));
        live->setShortcutTitle("Save", 5);
        live->setShortcutTitle("Trim to selection", 6);
        live->setShortcutTitle("Loop playback on / off & count in", 7);
        live->setShortcutTitle("Mute", 9);
        controller.setupUI(*live);
    }
};

TEST(SetupPictures, empty)
{
    Shown bench;
    compare(picture(bench), "empty");
}

TEST(SetupPictures, empty_on_a_dense_screen)
{
    Shown bench;
    compare(picture(bench, 2), "empty@2x");
}

TEST(SetupPictures, all_twelve_filled)
{
    Shown bench;
    bench.fillAll();
    click(bench.button(3));
    compare(picture(bench), "filled");
    compare(picture(bench, 2), "filled@2x");
}

TEST(SetupPictures, a_change_that_waits_to_be_assigned)
{
    Shown bench;
    bench.fillAll();
    press(bench.field(1), with(Modifier::Command | Modifier::Option, Keys::F5));
    click(bench.field(1));
    compare(picture(bench), "changed");
}

TEST(SetupPictures, a_name_too_long_for_four_lines)
{
    Shown bench;
    bench.fillAll();
    bench.button(0).setUniqueName("Consolidate clip and export selected as files to the desktop");
    compare(picture(bench), "long-name");
}

TEST(SetupPictures, the_rename_box_is_open)
{
    Shown bench;
    bench.fillAll();
    doubleClick(bench.button(5));
    bench.button(5).editBox()->setCursorWidth(0);
    compare(picture(bench), "renaming");
}

TEST(SetupPictures, not_available)
{
    Shown bench;
    press(bench.field(0), Keys::F3);
    press(bench.field(1), Keys::F5);
    compare(picture(bench), "not-available");
}

} // namespace
} // namespace kestrel::test
