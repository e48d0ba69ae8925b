#include "setup/KeyAdvice.h"

#include "tests/setup/SetupBench.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QToolTip>

namespace kestrel::test {
namespace {

TEST(KeyAdvice, a_key_tells_all_of_its_name_and_shortcuts_and_how_to_rename_it)
{
    SetupBench bench;
    bench.give(1, 0, Modifier::Command, 1, "S");
    bench.give(1, 1, 0, 43, "<");
    bench.live->setShortcutTitle("Save & go on", 1);
    bench.open();
    QHelpEvent event(QEvent::ToolTip, { 5, 5 }, bench.button(0).mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&bench.button(0), &event);
    EXPECT_EQ(QToolTip::text(),
        "U1 · Save &amp; go on<br>⌘+S, &lt;<br>Double-click to name it, or press F2 or Return "
        "while "
        "the key has the focus");
    EXPECT_EQ(KeyAdvice::toolTip(bench.button(11)), "U12<br>Can be named once it has a shortcut");
}

TEST(KeyAdvice, a_name_of_any_length_makes_a_short_tool_tip)
{
    SetupBench bench;
    bench.give(1, 0, Modifier::Command, 1, "S");
    bench.live->setShortcutTitle(QString(100'000, u'x'), 1);
    bench.open();
    EXPECT_LT(KeyAdvice::toolTip(bench.button(0)).size(), 1000);
}

TEST(KeyAdvice, the_cursor_over_a_name_is_that_of_a_text)
{
    SetupBench bench;
    bench.give(1, 0, 0, 96, "F5");
    bench.open();
    EXPECT_EQ(bench.button(0).cursor().shape(), Qt::PointingHandCursor);
    bench.button(0).setUniqueName("Save");
    EXPECT_EQ(bench.button(0).cursor().shape(), Qt::IBeamCursor);
    bench.button(0).setUniqueName({});
    EXPECT_EQ(bench.button(0).cursor().shape(), Qt::PointingHandCursor);
}

TEST(KeyAdvice, a_named_key_without_a_shortcut_does_not_look_editable)
{
    SetupBench bench;
    bench.live->setShortcutTitle("Save", 1);
    bench.open();
    EXPECT_EQ(bench.button(0).cursor().shape(), Qt::PointingHandCursor);
    EXPECT_EQ(KeyAdvice::toolTip(bench.button(0)),
        "U1 · Save<br>Can be renamed once it has a shortcut again");
}

TEST(KeyAdvice, a_text_keeps_a_margin_to_the_edges_of_its_key)
{
    SetupBench bench;
    bench.open();
    UserAssignableButton& key = bench.button(1);
    const QImage bare = [&] {
        key.setUniqueName(" ");
        return key.grab().toImage();
    }();
    key.setUniqueName({});
    bench.give(2, 0, 0x1E0000, 121, "PAGE DOWN PAGE DOWN");
    bench.controller.setupUI(*bench.live);
    const QImage shown = key.grab().toImage();
    ASSERT_NE(shown, bare);
    for (int y = 0; y < 78; ++y) {
        for (const int x : { 0, 1, 2, 3, 4, 73, 74, 75, 76, 77 })
            ASSERT_EQ(shown.pixel(x, y), bare.pixel(x, y)) << x << ", " << y;
    }
}

} // namespace
} // namespace kestrel::test
