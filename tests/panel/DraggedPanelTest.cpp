#include "artwork/PanelBack.h"
#include "panel/PassingSize.h"
#include "tests/panel/MirroringPanel.h"
#include "tests/panel/PaintCounter.h"
#include "tests/panel/Painted.h"
#include "tests/panel/look/NaturalSize.h"

#include <QResizeEvent>
#include <QTest>

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
using namespace std::chrono_literals;

// A panel on a window that is dragged larger. Its clock stands still until the test advances it.
struct Panel : MirroringPanel {
    explicit Panel(
        int width, const PlugInPanelView::ImageLoader& imageNamed = &artwork::panelPicture)
        : MirroringPanel(Window::Visible, imageNamed)
    {
        view.resize(naturalSize(width));
        display(0, "Threshold ");
        lamp(6, true);
    }
    using MirroringPanel::clock;
    using MirroringPanel::lamp;
    using MirroringPanel::view;

    void resize(int width)
    {
        const QSize before = view.size();
        view.resize(naturalSize(width));
        QResizeEvent event(view.size(), before);
        QCoreApplication::sendEvent(&view, &event);
    }
};

// What a panel shows that always had this width.
QImage fresh(int width)
{
    Panel panel(width);
    return painted(panel.view);
}

// Its drawing takes longer than a window rests.
struct SlowBack : artwork::PanelBack {
    static constexpr auto Duration = 2 * PassingSize::Rest;

    explicit SlowBack(ManualClock& clock)
        : clock(clock)
    {
    }
    [[nodiscard]] QImage draw(const QRect& source, QSize pixels) const override
    {
        clock.advance(Duration);
        return PanelBack::draw(source, pixels);
    }

    ManualClock& clock;
};

// Counts the pictures of it that are kept in memory.
struct CountedBack : artwork::PanelBack {
    static inline int kept = 0;

    [[nodiscard]] QImage draw(const QRect& source, QSize pixels) const override
    {
        ++kept;
        auto* drawn = new QImage(PanelBack::draw(source, pixels));
        return { drawn->bits(), drawn->width(), drawn->height(), drawn->format(), &discard, drawn };
    }
    static void discard(void* drawn)
    {
        --kept;
        delete static_cast<QImage*>(drawn);
    }
};

struct SlowPanel : Panel {
    explicit SlowPanel(int width)
        : Panel(width, [this](const QString& name) {
            return name == "back" ? InterfaceImage(std::make_shared<SlowBack>(clock))
                                  : artwork::panelPicture(name);
        })
    {
    }
};
} // namespace

TEST(DraggedPanel, is_stretched_until_it_rests)
{
    Panel panel(700);
    static_cast<void>(painted(panel.view));
    panel.resize(720);
    EXPECT_EQ(painted(panel.view), fresh(720)) << "one step may be the only one";
    panel.resize(740);
    EXPECT_NE(painted(panel.view), fresh(740));
    EXPECT_NE(painted(panel.view).pixel(370, 150), qRgb(255, 0, 255)) << "it is painted";
    panel.clock.advance(PassingSize::Rest - 1ms);
    EXPECT_NE(painted(panel.view), fresh(740));
    panel.clock.advance(1ms);
    EXPECT_EQ(painted(panel.view), fresh(740));
}

TEST(DraggedPanel, is_drawn_again_at_the_first_step_after_a_rest)
{
    Panel panel(700);
    static_cast<void>(painted(panel.view));
    panel.resize(720);
    panel.clock.advance(PassingSize::Rest);
    panel.resize(740);
    EXPECT_EQ(painted(panel.view), fresh(740));
}

TEST(DraggedPanel, is_repainted_when_it_rests)
{
    Panel panel(700);
    panel.view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel.view));
    panel.resize(720);
    panel.resize(740);
    QTest::qWait(2 * PassingSize::Rest / 1ms); // it is painted, and looks whether it is at rest
    const PaintCounter counter(panel.view);
    panel.clock.advance(PassingSize::Rest);
    EXPECT_TRUE(QTest::qWaitFor([&] { return counter.painted == QRegion(panel.view.rect()); }));
}

TEST(DraggedPanel, shows_a_changed_value_at_once)
{
    Panel panel(700);
    static_cast<void>(painted(panel.view));
    panel.resize(720);
    panel.resize(740);
    static_cast<void>(painted(panel.view));
    panel.lamp(6, false);
    const QImage changed = painted(panel.view);
    panel.lamp(6, true);
    EXPECT_EQ(painted(panel.view), fresh(740));
    EXPECT_NE(changed, fresh(740));
    panel.resize(760);
    EXPECT_NE(painted(panel.view), fresh(760));
}

TEST(DraggedPanel, comes_to_rest_although_it_is_painted_again_and_again)
{
    Panel panel(700);
    static_cast<void>(painted(panel.view));
    panel.resize(720);
    panel.resize(740);
    for (auto rested = 0ms; rested < PassingSize::Rest; rested += 10ms) {
        static_cast<void>(painted(panel.view));
        panel.clock.advance(10ms);
    }
    EXPECT_EQ(painted(panel.view), fresh(740));
}

TEST(DraggedPanel, is_stretched_from_the_second_step_on_though_drawing_takes_longer_than_a_rest)
{
    SlowPanel panel(700);
    static_cast<void>(painted(panel.view));
    panel.resize(720);
    EXPECT_EQ(painted(panel.view), fresh(720));
    panel.resize(740);
    const auto before = panel.clock.now();
    EXPECT_NE(painted(panel.view), fresh(740));
    EXPECT_EQ(panel.clock.now(), before) << "nothing was drawn";
    panel.clock.advance(PassingSize::Rest);
    EXPECT_EQ(painted(panel.view), fresh(740));
}

TEST(DraggedPanel, keeps_no_pictures_of_its_parts_while_it_is_stretched)
{
    Panel panel(700, [](const QString& name) {
        return name == "back" ? InterfaceImage(std::make_shared<CountedBack>())
                              : artwork::panelPicture(name);
    });
    static_cast<void>(painted(panel.view));
    panel.resize(720);
    static_cast<void>(painted(panel.view));
    EXPECT_EQ(CountedBack::kept, 1);
    panel.resize(740);
    static_cast<void>(painted(panel.view));
    EXPECT_EQ(CountedBack::kept, 0);
}

} // namespace kestrel::test
