#include "tests/setup/ShownSetup.h"

namespace kestrel::test {
namespace {

// Qt reads the scale when the application starts, so each scale has a test program of its own.
[[maybe_unused]] const bool isScaled = qputenv("QT_SCALE_FACTOR", KESTREL_TEST_SCALE);

// The parameter is the end of the pictures' names.
class DensePictures : public testing::TestWithParam<const char*> {
protected:
    void compare(const QString& name) { bench.compare(name + QString::fromLatin1(GetParam())); }

    ShownSetup bench;
};

TEST_P(DensePictures, empty)
{
    compare("empty");
}

TEST_P(DensePictures, all_twelve_filled)
{
    bench.fillAll();
    click(bench.button(3));
    compare("filled");
}

TEST_P(DensePictures, a_shortcut_waits_for_assign)
{
    bench.fillAll();
    press(bench.field(1), with(Modifier::Command | Modifier::Option, Keys::F5));
    bench.field(2).makeFirstResponder();
    compare("waiting");
}

TEST_P(DensePictures, not_available_on_a_keyboard_with_alt_and_super)
{
    bench.translation.names = ModifierNames::AltSuper;
    press(bench.field(0), Keys::F3);
    press(bench.field(1), Keys::F5);
    compare("not-available");
}

TEST_P(DensePictures, keys_that_were_not_assigned_or_share_a_shortcut)
{
    bench.fillAll();
    bench.give(8, 1, Modifier::Command, 6, "Z");
    bench.controller.setupUI(*bench.live);
    press(bench.field(1), Keys::F5);
    click(bench.button(1));
    press(bench.field(2), Keys::F5);
    click(bench.button(7));
    compare("marked");
}

INSTANTIATE_TEST_SUITE_P(, DensePictures, testing::Values(KESTREL_TEST_SUFFIX),
    [](const auto&) { return QString(KESTREL_TEST_SCALE "x").replace(u'.', u'_').toStdString(); });

} // namespace
} // namespace kestrel::test
