#include "tests/panel/MirroringPanel.h"
#include "tests/panel/PaintCounter.h"
#include "tests/panel/Painted.h"
#include "tests/panel/look/NaturalSize.h"

#include <QTest>

#include <gtest/gtest.h>

#include <functional>

namespace kestrel::test {

namespace {
struct Scale {
    int width; // the width of the panel in units of the painter
    double density;

    friend void PrintTo(const Scale& scale, std::ostream* out)
    {
        *out << scale.width << " wide at density " << scale.density;
    }
};

class Mirror : public MirroringPanel {
public:
    explicit Mirror(int width)
        : MirroringPanel(Window::Visible)
    {
        view.resize(naturalSize(width));
        display(0, "Threshold ");
        display(5, "4.0:1     ");
        knob(1, 0x24);
        lamp(6, true);
    }
    using MirroringPanel::display;
    using MirroringPanel::knob;
    using MirroringPanel::lamp;
    using MirroringPanel::view;
};

using Change = std::function<void(Mirror&)>;

const std::vector<Change> Changes {
    [](Mirror& panel) { panel.display(0, "Thresh/ld "); },
    [](Mirror& panel) { panel.display(5, "4.0:\x14     "); },
    [](Mirror& panel) { panel.display(5, "          "); },
    [](Mirror& panel) { panel.knob(1, 0x46); },
    [](Mirror& panel) { panel.knob(1, 0x0F); }, // without a picture
    [](Mirror& panel) { panel.lamp(6, false); }, [](Mirror& panel) { panel.lamp(0, true); },
    [](Mirror& panel) { panel.lamp(3, true); }, // below a knob
};

// What a panel shows that was never painted before.
QImage fresh(const Scale& scale, const Change& change)
{
    Mirror panel(scale.width);
    change(panel);
    return painted(panel.view, scale.density);
}

class IncrementalDrawing : public testing::TestWithParam<Scale> { };
} // namespace

TEST_P(IncrementalDrawing, a_changed_part_gives_the_pixels_of_a_fresh_panel)
{
    for (std::size_t i = 0; i < Changes.size(); ++i) {
        Mirror panel(GetParam().width);
        static_cast<void>(painted(panel.view, GetParam().density));
        Changes[i](panel);
        EXPECT_EQ(painted(panel.view, GetParam().density), fresh(GetParam(), Changes[i])) << i;
    }
}

TEST_P(IncrementalDrawing, a_message_makes_all_stale_that_it_changes)
{
    for (std::size_t i = 0; i < Changes.size(); ++i) {
        Mirror panel(GetParam().width);
        panel.view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel.view));
        QTest::qWait(50); // until the window is painted at rest
        const QImage before = painted(panel.view, GetParam().density);
        PaintCounter counter(panel.view);
        Changes[i](panel);
        ASSERT_TRUE(QTest::qWaitFor([&] { return counter.count > 0; })) << i;
        const QImage after = painted(panel.view, GetParam().density);
        int missed = 0;
        for (int y = 0; y < after.height(); ++y) {
            for (int x = 0; x < after.width(); ++x) {
                if (after.pixel(x, y) != before.pixel(x, y)
                    && !counter.painted.contains(QPoint(static_cast<int>(x / GetParam().density),
                        static_cast<int>(y / GetParam().density))))
                    ++missed;
            }
        }
        EXPECT_EQ(missed, 0) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(, IncrementalDrawing,
    testing::Values(Scale { 391, 1 }, Scale { 587, 1 }, Scale { 701, 1.25 }, Scale { 783, 1.25 },
        Scale { 613, 1.5 }, Scale { 782, 1.5 }, Scale { 391, 1.75 }, Scale { 845, 1.75 },
        Scale { 1001, 1 }, Scale { 499, 2 }));

} // namespace kestrel::test
