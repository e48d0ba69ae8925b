#include "tests/setup/SetupBench.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QWheelEvent>

namespace kestrel::test {
namespace {

const QSize WholeContent(620, 453);

// The window on a screen with this much room. All four fields are shown.
struct SmallScreenBench : SetupBench {
    explicit SmallScreenBench(const QSize& room)
    {
        for (std::size_t record = 0; record < 4; ++record)
            give(1, record, 0, 0, "A");
        open();
        activate(window());
        window().fitInto(room);
    }
    [[nodiscard]] SetupWindow& window() const { return *controller.window(); }
    [[nodiscard]] std::vector<QWidget*> controls() const
    {
        std::vector<QWidget*> found;
        for (QObject* child : window().children()) {
            if (auto* control = dynamic_cast<QWidget*>(child))
                if (!dynamic_cast<QScrollBar*>(control))
                    found.push_back(control);
        }
        return found;
    }
    [[nodiscard]] std::vector<QRect> places() const
    {
        std::vector<QRect> places;
        for (const QWidget* control : controls())
            places.push_back(control->geometry());
        return places;
    }
    // The part of the window that no scroll bar covers.
    [[nodiscard]] QRect view() const
    {
        QRect view = window().rect();
        for (const auto* bar : window().findChildren<QScrollBar*>()) {
            if (bar->isHidden())
                continue;
            if (bar->orientation() == Qt::Vertical)
                view.setRight(bar->x() - 1);
            else
                view.setBottom(bar->y() - 1);
        }
        return view;
    }
    [[nodiscard]] QScrollBar& bar(Qt::Orientation orientation) const
    {
        for (auto* bar : window().findChildren<QScrollBar*>()) {
            if (bar->orientation() == orientation)
                return *bar;
        }
        throw std::logic_error("there is no such scroll bar");
    }
};

TEST(SmallScreen, with_room_enough_there_is_no_scroll_bar)
{
    const SmallScreenBench bench(WholeContent);
    EXPECT_EQ(bench.window().size(), WholeContent);
    EXPECT_TRUE(bench.window().findChildren<QScrollBar*>().isEmpty());
}

TEST(SmallScreen, every_control_that_gets_the_focus_is_wholly_in_view)
{
    for (const QSize& room :
        { QSize(512, 272), QSize(683, 372), QSize(540, 900), QSize(620, 452) }) {
        const SmallScreenBench bench(room);
        EXPECT_EQ(bench.window().size(), bench.window().size().boundedTo(room));
        ASSERT_EQ(bench.controls().size(), 25U);
        for (QWidget* control : bench.controls()) {
            if (!control->isEnabled())
                continue;
            bench.window().setFocus(); // so that each control gains the focus
            control->setFocus(Qt::TabFocusReason);
            EXPECT_TRUE(bench.view().contains(control->geometry()))
                << room.width() << ": " << control->accessibleName().toStdString();
        }
    }
}

TEST(SmallScreen, the_bars_reach_every_corner_of_the_content)
{
    const SmallScreenBench bench({ 512, 272 });
    QScrollBar& across = bench.bar(Qt::Horizontal);
    QScrollBar& down = bench.bar(Qt::Vertical);
    across.setValue(across.maximum());
    down.setValue(down.maximum());
    const std::vector<QRect> before = bench.places();
    EXPECT_EQ(bench.view().width(), WholeContent.width() - across.maximum());
    EXPECT_EQ(bench.view().height(), WholeContent.height() - down.maximum());
    across.setValue(0);
    down.setValue(0);
    const std::vector<QRect> after = bench.places();
    for (std::size_t i = 0; i < after.size(); ++i)
        EXPECT_EQ(
            after[i].topLeft() - before[i].topLeft(), QPoint(across.maximum(), down.maximum()));
}

TEST(SmallScreen, the_background_goes_with_the_controls)
{
    const SmallScreenBench bench({ 512, 272 });
    MyShortcutField::makeWindowFirstResponder(bench.window());
    QScrollBar& across = bench.bar(Qt::Horizontal);
    QScrollBar& down = bench.bar(Qt::Vertical);
    across.setValue(40);
    down.setValue(60);
    const QRect view = bench.view();
    const QImage scrolled = bench.window().grab(view).toImage();
    bench.window().fitInto(WholeContent);
    EXPECT_EQ(bench.window().grab(view.translated(40, 60)).toImage(), scrolled);
}

TEST(SmallScreen, with_room_again_everything_is_in_its_place)
{
    const SmallScreenBench never(WholeContent);
    const SmallScreenBench bench({ 512, 272 });
    bench.bar(Qt::Horizontal).setValue(50);
    bench.bar(Qt::Vertical).setValue(70);
    EXPECT_NE(bench.places(), never.places());
    bench.window().fitInto({ 1920, 1052 });
    EXPECT_EQ(bench.window().size(), WholeContent);
    EXPECT_EQ(bench.places(), never.places());
    EXPECT_TRUE(bench.bar(Qt::Horizontal).isHidden());
    EXPECT_TRUE(bench.bar(Qt::Vertical).isHidden());
}

TEST(SmallScreen, the_wheel_scrolls)
{
    const SmallScreenBench bench({ 512, 272 });
    bench.bar(Qt::Vertical).setValue(0);
    QWheelEvent event({ 10, 10 }, bench.window().mapToGlobal(QPointF(10, 10)), {}, { 0, -120 },
        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&bench.window(), &event);
    EXPECT_GT(bench.bar(Qt::Vertical).value(), 0);
}

} // namespace
} // namespace kestrel::test
