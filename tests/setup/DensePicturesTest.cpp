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

INSTANTIATE_TEST_SUITE_P(, DensePictures, testing::Values(KESTREL_TEST_SUFFIX),
    [](const auto&) { return QString(KESTREL_TEST_SCALE "x").replace(u'.', u'_').toStdString(); });

} // namespace
} // namespace kestrel::test
