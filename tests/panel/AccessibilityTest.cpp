#include "panel/PanelAnnouncer.h"
#include "panel/PanelText.h"
#include "panel/PlugInPanelAccessible.h"
#include "tests/panel/GeometryPictures.h"
#include "tests/panel/MirroringPanel.h"

#include <QAccessible>
#include <QTest>

#include <gmock/gmock.h>

namespace kestrel::test {

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

class Accessibility : public testing::Test, protected MirroringPanel {
protected:
    Accessibility()
        : MirroringPanel(Window::Visible, &GeometryPictures::named)
    {
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
        new PanelAnnouncer(view,
            { [this] { return active; }, [this](QAccessibleEvent* event) { listen(event); } });
    }

    // Records each event for assistive technology as a text.
    void listen(QAccessibleEvent* event)
    {
        const std::string child = std::to_string(event->child());
        if (event->type() == QAccessible::NameChanged)
            told.push_back("row " + child);
        if (event->type() == QAccessible::ValueChanged) {
            const auto value = static_cast<QAccessibleValueChangeEvent*>(event)->value();
            told.push_back("knob " + child + " at " + value.toString().toStdString());
        }
        if (event->type() == QAccessible::DescriptionChanged)
            told.push_back("ring " + child);
        if (event->type() == QAccessible::StateChanged
            && static_cast<QAccessibleStateChangeEvent*>(event)->changedStates().checked)
            told.push_back("lamp " + child);
    }

    [[nodiscard]] QAccessibleInterface* panel()
    {
        return QAccessible::queryAccessibleInterface(&view);
    }
    [[nodiscard]] QAccessibleInterface* row(int number) { return panel()->child(number); }
    [[nodiscard]] QAccessibleInterface* knobItem(int number) { return panel()->child(2 + number); }
    [[nodiscard]] QAccessibleInterface* lampItem(int number) { return panel()->child(6 + number); }

    bool active = true;
    std::vector<std::string> told;
};
} // namespace

TEST_F(Accessibility, the_panel_has_two_rows_four_knobs_and_eight_lamps)
{
    ASSERT_NE(panel(), nullptr);
    EXPECT_EQ(panel()->text(QAccessible::Name), "Plug-in panel");
    EXPECT_EQ(panel()->childCount(), 14);
    EXPECT_EQ(row(0)->role(), QAccessible::StaticText);
    EXPECT_EQ(knobItem(3)->role(), QAccessible::Dial);
    EXPECT_EQ(lampItem(7)->role(), QAccessible::CheckBox);
    EXPECT_EQ(panel()->child(14), nullptr);
    EXPECT_EQ(panel()->child(-1), nullptr);
    for (int i = 0; i < 14; ++i) {
        EXPECT_EQ(panel()->indexOfChild(panel()->child(i)), i);
        EXPECT_EQ(panel()->child(i)->parent(), panel());
    }
}

TEST_F(Accessibility, a_row_reads_as_its_text)
{
    display(0, "Threshold ");
    display(1, "Ratio     ");
    display(3, "Gain      ");
    display(4, "-24.0 dB  ");
    EXPECT_EQ(row(0)->text(QAccessible::Name).simplified(), "Threshold Ratio Gain");
    EXPECT_EQ(row(1)->text(QAccessible::Name), "-24.0 dB");
    EXPECT_EQ(row(1)->text(QAccessible::Description), "Lower row");
}

TEST_F(Accessibility, before_the_first_message_the_rows_are_empty)
{
    EXPECT_EQ(row(0)->text(QAccessible::Name), "");
    EXPECT_EQ(row(1)->text(QAccessible::Name), "");
}

TEST_F(Accessibility, a_knob_tells_its_position)
{
    knob(2, 0x47); // one lamp, the seventh, and the lower lamp
    EXPECT_EQ(knobItem(2)->text(QAccessible::Name), "Knob 3");
    EXPECT_EQ(knobItem(2)->text(QAccessible::Value), "7");
    ASSERT_NE(knobItem(2)->valueInterface(), nullptr);
    EXPECT_EQ(knobItem(2)->valueInterface()->currentValue().toInt(), 7);
    EXPECT_EQ(knobItem(2)->valueInterface()->maximumValue().toInt(), 11);
    EXPECT_EQ(knobItem(2)->text(QAccessible::Description), "lamp 7 of 11, lower lamp lit");
    knob(2, 0x0F); // no such frame
    EXPECT_EQ(knobItem(2)->text(QAccessible::Value), "0");
    EXPECT_EQ(knobItem(2)->text(QAccessible::Description), "not shown");
}

TEST_F(Accessibility, a_knob_that_spreads_to_both_sides_is_full_at_its_sixth_position)
{
    knob(2, 0x36);
    EXPECT_EQ(knobItem(2)->valueInterface()->currentValue().toInt(), 6);
    EXPECT_EQ(knobItem(2)->valueInterface()->maximumValue().toInt(), 6);
    EXPECT_EQ(knobItem(2)->text(QAccessible::Description), "5 lamps to each side of the middle");
    knob(2, 0x16);
    EXPECT_EQ(knobItem(2)->valueInterface()->maximumValue().toInt(), 11);
}

TEST_F(Accessibility, lamps_are_named_as_engraved)
{
    QStringList names;
    for (int i = 0; i < 8; ++i)
        names += lampItem(i)->text(QAccessible::Name);
    EXPECT_EQ(names,
        QStringList({ "INSERT/PARAM", "ASSIGN", "SELECT 1", "SELECT 2", "SELECT 3", "SELECT 4",
            "BYPASS", "COMPARE" }));
}

TEST_F(Accessibility, a_lamp_tells_whether_it_is_lit)
{
    lamp(6, true);
    EXPECT_TRUE(lampItem(6)->state().checked);
    EXPECT_EQ(lampItem(6)->text(QAccessible::Value), "lit");
    EXPECT_FALSE(lampItem(7)->state().checked);
    EXPECT_EQ(lampItem(7)->text(QAccessible::Value), "unlit");
    EXPECT_TRUE(lampItem(6)->state().readOnly);
    EXPECT_EQ(lampItem(6)->valueInterface(), nullptr);
}

TEST_F(Accessibility, each_part_is_found_where_it_is_drawn)
{
    const auto at = [this](int x, int y) {
        const QPoint point = view.mapToGlobal(QPoint(x, y));
        return panel()->indexOfChild(panel()->childAt(point.x(), point.y()));
    };
    EXPECT_EQ(at(300, 20), 0);
    EXPECT_EQ(at(670, 40), 1);
    EXPECT_EQ(at(340, 100), 2);
    EXPECT_EQ(at(633, 100), 5);
    EXPECT_EQ(at(40, 150), 6 + 1);
    EXPECT_EQ(at(730, 150), 6 + 0);
    EXPECT_EQ(at(10, 10), -1);
}

TEST_F(Accessibility, changes_are_announced_once_they_pause)
{
    display(4, "-24.0 dB  ");
    knob(1, 0x05);
    lamp(6, true);
    EXPECT_THAT(told, IsEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return told.size() >= 4; }));
    EXPECT_THAT(told, ElementsAre("row 1", "knob 3 at 5", "ring 3", "lamp 12"));
}

TEST_F(Accessibility, a_flood_of_changes_is_told_as_one)
{
    for (int i = 0; i < 1000; ++i) {
        display(0, i % 2 == 0 ? "0123456789" : "abcdefghij");
        knob(0, static_cast<std::uint8_t>(i % 12));
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre("row 0", "knob 2 at 3", "ring 2"));
}

TEST_F(Accessibility, what_changed_back_in_the_meantime_is_not_told)
{
    knob(0, 0x05);
    knob(0, 0x00);
    lamp(2, true);
    lamp(2, false);
    lamp(3, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre("lamp 9"));
}

TEST_F(Accessibility, a_change_of_the_mode_or_of_the_lower_lamp_alone_is_told)
{
    knob(0, 0x11);
    knob(1, 0x40);
    knob(3, 0x0D); // still no lamp lit, but no picture either
    ASSERT_TRUE(QTest::qWaitFor([&] { return told.size() >= 4; }));
    EXPECT_THAT(told, ElementsAre("knob 2 at 1", "ring 2", "ring 3", "ring 5"));
    told.clear();
    knob(0, 0x21);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre("ring 2"));
}

TEST_F(Accessibility, who_starts_to_listen_late_is_told_what_has_changed_so_far)
{
    active = false;
    knob(0, 0x05);
    active = true;
    lamp(3, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre("knob 2 at 5", "ring 2", "lamp 9"));
}

TEST(PanelText, special_glyphs_read_as_what_they_show)
{
    EXPECT_EQ(PanelText::glyph(0x00), " ");
    EXPECT_EQ(PanelText::glyph(0x0F), " ");
    EXPECT_EQ(PanelText::glyph(0x10), "11");
    EXPECT_EQ(PanelText::glyph(0x13), "14");
    EXPECT_EQ(PanelText::glyph(0x14), "█");
    EXPECT_EQ(PanelText::glyph(0x19), "♪");
    EXPECT_EQ(PanelText::glyph(0x1A), "°C");
    EXPECT_EQ(PanelText::glyph(0x1B), "°F");
    EXPECT_EQ(PanelText::glyph(0x1F), "▲");
    EXPECT_EQ(PanelText::glyph('A'), "A");
    EXPECT_EQ(PanelText::glyph(0x7D), "}");
    EXPECT_EQ(PanelText::glyph(0x7E), "→");
    EXPECT_EQ(PanelText::glyph(0x7F), "←");
    EXPECT_EQ(PanelText::glyph(0x80), " ");
    EXPECT_EQ(PanelText::glyph(0xFF), " ");
}

} // namespace kestrel::test
