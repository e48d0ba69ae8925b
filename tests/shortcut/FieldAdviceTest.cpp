#include "shortcut/FieldAdvice.h"

#include "tests/shortcut/FieldBench.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QToolTip>

namespace kestrel::test {
namespace {

// Fields of a window that has the keyboard, each with a name.
struct AdviceBench : FieldBench {
    AdviceBench()
    {
        for (int i = 0; i < 4; ++i)
            field(i).setAccessibleName(QStringLiteral("Shortcut %1").arg(i + 1));
        activate(window);
        field(0).makeFirstResponder();
    }

    [[nodiscard]] QString toolTip(int i) const
    {
        QToolTip::hideText();
        QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), field(i).mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(&field(i), &event);
        return QToolTip::text();
    }
    // The brightest colour in the part of the field that the clear button leaves.
    [[nodiscard]] QColor ink(int i) const
    {
        const QImage shown = field(i).grab().toImage().copy(4, 4, 106, 26);
        QColor brightest = Qt::black;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                if (shown.pixelColor(x, y).lightness() > brightest.lightness())
                    brightest = shown.pixelColor(x, y);
            }
        }
        return brightest;
    }
};

TEST(FieldAdvice, only_the_empty_field_with_the_focus_quietly_asks_for_a_key)
{
    AdviceBench bench;
    EXPECT_GT(bench.ink(0).lightness(), 100);
    EXPECT_LT(bench.ink(0).lightness(), 160) << "it is no shortcut";
    EXPECT_EQ(bench.ink(1), QColor(Qt::black)) << "a field without the focus takes no key";
    EXPECT_EQ(bench.field(0).stringValue(), "") << "the field itself stays empty";
    press(bench.field(0), Keys::A);
    EXPECT_GT(bench.ink(0).lightness(), 240);
    bench.field(1).makeFirstResponder();
    EXPECT_GT(bench.ink(1).lightness(), 100);
    EXPECT_GT(bench.ink(0).lightness(), 240) << "its shortcut stays";
}

TEST(FieldAdvice, a_field_with_a_captured_key_that_has_no_name_asks_for_none)
{
    AdviceBench bench;
    press(bench.field(0), Keys::Unnamed);
    EXPECT_EQ(bench.ink(0), QColor(Qt::black));
    click(bench.clear(0));
    bench.field(0).clearShortcut();
    EXPECT_GT(bench.ink(0).lightness(), 100);
}

TEST(FieldAdvice, not_available_is_shown_in_the_colour_of_a_warning)
{
    AdviceBench bench;
    press(bench.field(0), Keys::F3);
    press(bench.field(1), Keys::F5);
    EXPECT_GT(bench.ink(1).red(), bench.ink(1).blue() + 60);
    press(bench.field(1), Keys::A);
    EXPECT_EQ(bench.ink(1).red(), bench.ink(1).blue());
}

TEST(FieldAdvice, the_tool_tip_of_a_refused_key_tells_the_rule_and_the_field_that_holds_the_key)
{
    AdviceBench bench;
    EXPECT_EQ(FieldAdvice::refusal(bench.field(1)), "");
    press(bench.field(2), Keys::F3);
    press(bench.field(1), Keys::F5);
    EXPECT_EQ(bench.toolTip(1),
        "<p>A key takes only one function key, F1 to F20, and Shortcut 3 holds F3</p>");
    press(bench.field(2), Keys::F5);
    EXPECT_EQ(bench.toolTip(1),
        "<p>A key takes only one function key, F1 to F20, and Shortcut 3 holds F5</p>");
    press(bench.field(2), Keys::A);
    EXPECT_EQ(FieldAdvice::refusal(bench.field(1)), "") << "nothing refuses a key now";
    press(bench.field(1), Keys::A);
    EXPECT_EQ(bench.toolTip(1),
        "<p>Takes any key as the shortcut, Tab, Return and Escape as well. Shift tapped "
        "twice goes on, Option or Alt tapped twice goes back to the key</p>");
}

TEST(FieldAdvice, a_refused_field_that_shows_nothing_any_more_is_free)
{
    AdviceBench bench;
    press(bench.field(2), Keys::F3);
    press(bench.field(1), Keys::F5);
    bench.field(1).setTitleWithMnemonic({}); // as a field that is hidden
    EXPECT_EQ(FieldAdvice::refusal(bench.field(1)), "");
    EXPECT_TRUE(FieldAdvice::spoken(bench.field(1)).startsWith("Takes any key"));
}

TEST(FieldAdvice, a_name_from_a_file_is_shown_as_it_is_written_and_not_at_any_length)
{
    AdviceBench bench;
    press(bench.field(2), Keys::F3);
    const ArchiveValue keyCode = bench.record(2)[ShortcutRecord::KeyCode];
    const ArchiveArray loaded { 0, keyCode, "<b>" + QString(100'000, u'x'), 0 };
    bench.field(2).setUserAssignParam(0, std::make_shared<ArchiveArray>(loaded));
    press(bench.field(1), Keys::F5);
    EXPECT_TRUE(bench.toolTip(1).contains("&lt;b&gt;xxx"));
    EXPECT_LT(bench.toolTip(1).size(), 1000);
}

TEST(FieldAdvice, without_its_neighbours_a_refused_field_knows_no_rule)
{
    AdviceBench bench;
    bench.field(1).setBNotAvailable(true);
    bench.field(1).setTitleWithMnemonic(MyShortcutField::NotAvailable);
    bench.field(1).setShortcutFields(nullptr);
    EXPECT_EQ(FieldAdvice::refusal(bench.field(1)), "");
    EXPECT_EQ(FieldAdvice::spoken(bench.field(1)), "Not Available");
}

} // namespace
} // namespace kestrel::test
