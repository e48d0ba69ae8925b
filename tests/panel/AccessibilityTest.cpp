#include "panel/DSPWindow.h"
#include "panel/PanelAnnouncer.h"
#include "panel/PanelText.h"
#include "panel/PlugInPanelAccessible.h"
#include "tests/panel/GeometryPictures.h"
#include "tests/panel/MirroringPanel.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QTest>

#include <gmock/gmock.h>

namespace kestrel::test {

namespace {
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

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
        if (event->object() == &view && isAnnouncement(*event)) {
            sentences.push_back(view.accessibleDescription().toStdString());
            return;
        }
        if (event->child() == PlugInPanelAccessible::Notification)
            return listenToNotification(*event);
        const std::string child = std::to_string(event->child());
        if (event->type() == QAccessible::NameChanged)
            told.push_back("name " + child);
        if (event->type() == QAccessible::ValueChanged) {
            const auto value = static_cast<QAccessibleValueChangeEvent*>(event)->value();
            told.push_back("value " + child + " at " + value.toString().toStdString());
        }
        if (event->type() == QAccessible::DescriptionChanged)
            told.push_back("words " + child);
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
    // The lamps stand in the order 1, 7, 6, 2, 3, 4, 5, 0 from left to right.
    [[nodiscard]] QAccessibleInterface* lampItem(int number)
    {
        constexpr std::array Places { 7, 0, 3, 4, 5, 6, 2, 1 };
        return panel()->child(6 + Places[static_cast<std::size_t>(number)]);
    }

    bool active = true;
    std::vector<std::string> told;
    std::vector<std::string> sentences;
    std::vector<std::string> hidden; // names of notifications when they were hidden

private:
    static bool isAnnouncement(const QAccessibleEvent& event)
    {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
        return event.type() == QAccessible::Announcement;
#else
        Q_UNUSED(event)
        return false;
#endif
    }
    // A listener keeps names until it is told of another one.
    void listenToNotification(const QAccessibleEvent& event)
    {
        QAccessibleInterface& notification = *event.accessibleInterface();
        if (event.type() == QAccessible::NameChanged)
            m_notified = notification.text(QAccessible::Name).toStdString();
        if (event.type() == QAccessible::ObjectShow
            && notification.role() == QAccessible::Notification)
            sentences.push_back(m_notified);
        if (event.type() == QAccessible::ObjectHide)
            hidden.push_back(m_notified);
    }

    std::string m_notified;
};
} // namespace

TEST_F(Accessibility, the_panel_has_two_rows_four_knobs_and_eight_lamps)
{
    ASSERT_NE(panel(), nullptr);
    EXPECT_EQ(panel()->text(QAccessible::Name), "Plug-in panel");
    EXPECT_EQ(panel()->childCount(), PlugInPanelAccessible::Children);
    EXPECT_EQ(panel()->role(), QAccessible::Grouping);
    EXPECT_EQ(row(0)->role(), QAccessible::StaticText);
    EXPECT_EQ(knobItem(3)->role(), QAccessible::Dial);
    EXPECT_EQ(lampItem(7)->role(), QAccessible::CheckBox);
    EXPECT_EQ(PlugInPanelAccessible::Notification, 14);
    EXPECT_EQ(panel()->child(PlugInPanelAccessible::Children), nullptr);
    EXPECT_EQ(panel()->child(-1), nullptr);
    for (int i = 0; i < PlugInPanelAccessible::Children; ++i) {
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

// Bits 4 and 5 are the mode, bit 6 is the lower lamp.
TEST_F(Accessibility, a_knob_tells_each_mode_of_its_ring_and_its_lower_lamp)
{
    const auto words = [this](int value) {
        knob(1, value);
        return knobItem(1)->text(QAccessible::Description);
    };
    EXPECT_EQ(words(0x04), "lamp 4 of 11");
    EXPECT_EQ(words(0x14), "from the middle to lamp 4 of 11");
    EXPECT_EQ(words(0x24), "from the first to lamp 4 of 11");
    EXPECT_EQ(words(0x34), "3 lamps to each side of the middle");
    EXPECT_EQ(words(0x32), "1 lamp to each side of the middle");
    EXPECT_EQ(words(0x31), "the middle lamp");
    EXPECT_EQ(words(0x37), "not shown") << "there are only five lamps to each side";
    for (const int dark : { 0x00, 0x10, 0x20, 0x30 }) {
        EXPECT_EQ(words(dark), "dark") << dark;
        EXPECT_EQ(words(dark + 0x40), "dark, lower lamp lit") << dark;
    }
    EXPECT_EQ(words(0x54), "from the middle to lamp 4 of 11, lower lamp lit");
    EXPECT_EQ(words(0x64), "from the first to lamp 4 of 11, lower lamp lit");
    EXPECT_EQ(words(0x74), "3 lamps to each side of the middle, lower lamp lit");
}

TEST_F(Accessibility, a_knob_is_named_by_the_two_zones_above_it)
{
    display(0, "Threshold ");
    display(4, " -24.0 dB ");
    display(1, "  Ratio   ");
    display(7, "4:1-soft  ");
    display(8, "elsewhere ");
    EXPECT_EQ(knobItem(0)->text(QAccessible::Name), QString::fromUtf8("Threshold, −24.0 dB"));
    EXPECT_EQ(knobItem(1)->text(QAccessible::Name), "Ratio");
    EXPECT_EQ(knobItem(2)->text(QAccessible::Name), "Knob 3");
    EXPECT_EQ(knobItem(3)->text(QAccessible::Name), "Knob 4, 4:1-soft");
    display(5, "-.5  x-2  ");
    EXPECT_EQ(knobItem(1)->text(QAccessible::Name), QString::fromUtf8("Ratio, −.5 x-2"));
    view.initMessageArry();
    EXPECT_EQ(knobItem(0)->text(QAccessible::Name), "Knob 1");
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
    EXPECT_EQ(row(0)->valueInterface(), nullptr);
    for (std::uint8_t number = 0; number < 4; ++number)
        lamp(number, true);
    for (int part = 0; part < PlugInPanelAccessible::FirstSwitch; ++part) {
        EXPECT_FALSE(panel()->child(part)->state().checkable) << part;
        EXPECT_FALSE(panel()->child(part)->state().checked) << part;
    }
}

TEST_F(Accessibility, a_lamp_is_a_value_of_0_or_1_and_says_it_in_words)
{
    lamp(3, true);
    for (const auto& [number, value, words] : { std::tuple { 3, 1, "lit" }, { 4, 0, "unlit" } }) {
        ASSERT_NE(lampItem(number)->valueInterface(), nullptr);
        EXPECT_EQ(lampItem(number)->valueInterface()->currentValue().toInt(), value);
        EXPECT_EQ(lampItem(number)->valueInterface()->minimumValue().toInt(), 0);
        EXPECT_EQ(lampItem(number)->valueInterface()->maximumValue().toInt(), 1);
        EXPECT_EQ(lampItem(number)->text(QAccessible::Description), words);
        EXPECT_TRUE(lampItem(number)->state().checkable);
    }
    view.hide();
    EXPECT_TRUE(lampItem(3)->state().checked) << "a hidden panel knows its lamps as well";
    EXPECT_TRUE(lampItem(3)->state().invisible);
}

TEST_F(Accessibility, the_parts_stand_in_reading_order)
{
    QStringList names;
    for (int i = 0; i < PlugInPanelAccessible::Notification; ++i)
        names += panel()->child(i)->text(QAccessible::Name);
    EXPECT_EQ(names.join('|'),
        "||Knob 1|Knob 2|Knob 3|Knob 4"
        "|ASSIGN|COMPARE|BYPASS|SELECT 1|SELECT 2|SELECT 3|SELECT 4|INSERT/PARAM");
}

// The keys of the artwork are far smaller than the frames of their pictures.
TEST(AccessiblePanel, a_part_is_as_large_as_it_is_seen)
{
    const PlugInPanelView view({ 0, 0, 1564, 440 }); // twice the size of the design
    QAccessibleInterface& panel
        = *QAccessible::queryAccessibleInterface(const_cast<PlugInPanelView*>(&view));
    const auto seen = [&](int child) {
        return panel.child(child)->rect().translated(-view.mapToGlobal(QPoint(0, 0)));
    };
    const QRect assign(2 * 18, 440 - 2 * (38 + 67), 2 * 67, 2 * 67);
    ASSERT_EQ(view.switchRect(1), assign.adjusted(-1, -1, 1, 1)) << "one pixel more may be touched";
    const QRect key(2 * 26 + 1, 440 - 2 * 66, 100, 44); // its artwork is 50 × 22 units
    EXPECT_TRUE(seen(6).adjusted(-2, -2, 2, 2).contains(key));
    EXPECT_TRUE(key.adjusted(-4, -4, 4, 4).contains(seen(6)));
    const QRect knob = seen(2);
    EXPECT_TRUE(view.knobRect(0).contains(knob));
    EXPECT_GT(knob.width(), 90);
    EXPECT_LT(knob.width(), view.knobRect(0).width());
    for (int child = 0; child < 14; ++child) {
        const QPoint middle = panel.child(child)->rect().center();
        EXPECT_EQ(panel.indexOfChild(panel.childAt(middle.x(), middle.y())), child);
        for (int other = 0; other < child; ++other)
            EXPECT_FALSE(seen(child).intersects(seen(other))) << child << " and " << other;
    }
}

TEST(AccessiblePanel, its_window_is_a_window_with_the_title_as_its_name)
{
    DSPWindow window;
    window.setWindowTitle("Panel");
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&window);
    EXPECT_EQ(accessible->role(), QAccessible::Window);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Panel");
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
    EXPECT_EQ(at(40, 150), 6 + 0); // lamp 1
    EXPECT_EQ(at(730, 150), 6 + 7); // lamp 0
    EXPECT_EQ(at(10, 10), -1);
}

TEST_F(Accessibility, changes_are_announced_once_they_pause)
{
    display(4, "-24.0 dB  ");
    knob(1, 0x05);
    lamp(6, true);
    EXPECT_THAT(told, IsEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told,
        ElementsAre(
            "name 1", "name 2", "value 3 at 5", "words 3", "lamp 8", "value 8 at 1", "words 8"));
}

TEST_F(Accessibility, a_flood_of_changes_is_told_as_one)
{
    for (int i = 0; i < 1000; ++i) {
        display(0, i % 2 == 0 ? "0123456789" : "abcdefghij");
        knob(0, static_cast<std::uint8_t>(i % 12));
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre("name 0", "name 2", "value 2 at 3", "words 2"));
}

TEST_F(Accessibility, what_changed_back_in_the_meantime_is_not_told)
{
    knob(0, 0x05);
    knob(0, 0x00);
    lamp(2, true);
    lamp(2, false);
    lamp(3, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre("lamp 10", "value 10 at 1", "words 10"));
}

TEST_F(Accessibility, a_change_of_the_mode_or_of_the_lower_lamp_alone_is_told)
{
    knob(0, 0x11);
    knob(1, 0x40);
    knob(3, 0x0D); // still no lamp lit, but no picture either
    ASSERT_TRUE(QTest::qWaitFor([&] { return told.size() >= 4; }));
    EXPECT_THAT(told, ElementsAre("value 2 at 1", "words 2", "words 3", "words 5"));
    told.clear();
    knob(0, 0x21);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre("words 2"));
    told.clear();
    knob(0, 0x61);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre("words 2")) << "the lower lamp";
}

TEST_F(Accessibility, who_starts_to_listen_late_is_told_everything_with_the_first_change)
{
    active = false;
    knob(0, 0x05);
    active = true;
    lamp(3, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told, IsSupersetOf({ "value 2 at 5", "words 2", "lamp 10", "value 10 at 1" }));
    EXPECT_EQ(told.size(), 4U * 3U + 8U * 3U);
    told.clear();
    lamp(3, false);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre("lamp 10", "value 10 at 0", "words 10")) << "once only";
}

TEST_F(Accessibility, what_changes_back_after_a_time_without_listeners_is_told)
{
    display(0, "Threshold ");
    knob(0, 0x05);
    lamp(3, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    active = false;
    display(0, "Ratio     ");
    knob(0, 0x07);
    lamp(3, false);
    active = true; // a listener that starts now reads the present values for itself
    told.clear();
    display(0, "Threshold ");
    knob(0, 0x05);
    lamp(3, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    EXPECT_THAT(
        told, IsSupersetOf({ "name 0", "name 2", "value 2 at 5", "words 2", "value 10 at 1" }));
}

TEST_F(Accessibility, nothing_is_told_while_nobody_listens)
{
    active = false;
    knob(0, 0x05);
    // An announcement of the next panel comes after one of this panel.
    PlugInPanelView other({ 0, 0, 782, 220 });
    bool isOtherTold = false;
    new PanelAnnouncer(
        other, { [] { return true; }, [&](QAccessibleEvent*) { isOtherTold = true; } });
    other.updateDSParea(PanelMessages::knob(0, 0x05), true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return isOtherTold; }));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Accessibility, changes_that_never_pause_are_told_three_times_a_second_at_most)
{
    QElapsedTimer time;
    time.start();
    int value = 0;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        knob(0, 1 + ++value % 11);
        return !told.empty();
    })) << "each change would put the announcement off";
    constexpr double CoarseTimer = 0.95; // Qt's coarse timers may be early by a twentieth
    EXPECT_GE(static_cast<double>(time.elapsed()),
        CoarseTimer * static_cast<double>(PanelAnnouncer::Pause.count()));
}

TEST_F(Accessibility, a_change_of_a_parameter_is_told_as_one_sentence)
{
    display(0, "Threshold ");
    display(4, "-24.0 dB  ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !sentences.empty(); }));
    display(4, "-23.5 dB  ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return sentences.size() == 2; }));
    display(4, "-24.0 dB  ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return sentences.size() == 3; }));
    EXPECT_THAT(
        sentences, ElementsAre("Threshold −24.0 dB", "Threshold −23.5 dB", "Threshold −24.0 dB"));
}

#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
TEST_F(Accessibility, the_sentence_is_a_notification_until_the_panel_falls_silent)
{
    const auto* notification = panel()->child(PlugInPanelAccessible::Notification);
    EXPECT_EQ(notification->role(), QAccessible::Notification);
    EXPECT_TRUE(notification->state().invisible);
    display(0, "Threshold ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !sentences.empty(); }));
    EXPECT_EQ(notification->text(QAccessible::Name), "Threshold");
    EXPECT_EQ(notification->text(QAccessible::Description), "");
    EXPECT_FALSE(notification->state().invisible);
    display(0, "          ");
    EXPECT_TRUE(QTest::qWaitFor([&] { return notification->state().invisible; }));
    EXPECT_THAT(hidden, ElementsAre(""));
}
#endif

TEST_F(Accessibility, parameters_that_change_together_are_told_together)
{
    display(0, "Ratio     ");
    display(1, "  Attack  ");
    display(5, "10 ms     ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !sentences.empty(); }));
    EXPECT_THAT(sentences, ElementsAre("Ratio, Attack 10 ms"));
}

TEST_F(
    Accessibility, a_parameter_in_motion_is_told_twice_a_second_at_most_and_its_last_value_always)
{
    display(0, "Gain      ");
    QElapsedTimer time;
    time.start();
    int value = 0;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        display(4, std::to_string(1000000000 + ++value));
        return sentences.size() == 3;
    }));
    EXPECT_GE(time.elapsed(), 3 * PanelAnnouncer::PauseBetweenSentences.count() - 2);
    display(4, "almost    ");
    display(4, "the last  ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return sentences.size() == 4; }));
    EXPECT_EQ(sentences.back(), "Gain the last");
}

TEST_F(Accessibility, a_panel_that_falls_silent_is_not_described_by_its_last_sentence)
{
    display(0, "Gain      ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.accessibleDescription() == "Gain"; }));
    display(0, "          ");
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.accessibleDescription().isEmpty(); }));
    EXPECT_THAT(sentences, ElementsAre("Gain"));
}

TEST_F(Accessibility, what_has_changed_when_nobody_listens_any_more_is_told_later)
{
    display(0, "Gain      ");
    active = false;
    QTest::qWait(400); // longer than the pause
    EXPECT_THAT(told, IsEmpty());
    active = true;
    knob(0, 0x05);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return std::find(told.begin(), told.end(), "name 0") != told.end(); }));
}

TEST_F(Accessibility, no_sentence_is_told_while_nobody_listens_or_nothing_has_changed)
{
    display(0, "Gain      ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !sentences.empty(); }));
    EXPECT_THAT(sentences, ElementsAre("Gain"));
    told.clear();
    knob(0, 0x06);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    QTest::qWait(static_cast<int>(PanelAnnouncer::PauseBetweenSentences.count()));
    EXPECT_EQ(sentences.size(), 1U);
    active = false;
    display(0, "Ratio     ");
    QTest::qWait(static_cast<int>(PanelAnnouncer::PauseBetweenSentences.count()) + 100);
    EXPECT_EQ(view.accessibleDescription(), "Gain");
    EXPECT_EQ(sentences.size(), 1U);
}

TEST_F(Accessibility, a_sentence_that_is_due_when_nobody_listens_any_more_is_not_told)
{
    display(0, "Gain      ");
    active = false;
    // A sentence of the next panel comes after one of this panel.
    PlugInPanelView other({ 0, 0, 782, 220 });
    new PanelAnnouncer(other, { [] { return true; }, [](QAccessibleEvent*) {} });
    other.updateZone(PanelMessages::display({ { 0, "Ratio     " } }), true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return other.accessibleDescription() == "Ratio"; }));
    EXPECT_THAT(sentences, IsEmpty());
    EXPECT_EQ(view.accessibleDescription(), "");
}

TEST_F(Accessibility, who_stops_to_listen_starts_no_comparison)
{
    display(0, "Gain      ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !sentences.empty(); }));
    active = false;
    display(0, "Ratio     ");
    QAccessible::setActive(false);
    EXPECT_EQ(view.accessibleDescription(), "Gain");
}

TEST_F(Accessibility, who_starts_to_listen_late_is_told_the_sentences_of_later_changes_only)
{
    active = false;
    display(0, "Threshold ");
    display(1, "Ratio     ");
    display(4, "-24.0 dB  ");
    active = true;
    QAccessible::setActive(true); // tells the observers, as Qt does for a new screen reader
    display(5, "4.0:1     ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !sentences.empty(); }));
    EXPECT_THAT(sentences, ElementsAre("Ratio 4.0:1"));
}

TEST_F(Accessibility, a_question_of_a_listener_takes_no_sentence_that_is_due)
{
    display(0, "Threshold ");
    QAccessible::setActive(true); // as Qt for macOS does for each question
    ASSERT_TRUE(QTest::qWaitFor([&] { return !sentences.empty(); }));
    EXPECT_THAT(sentences, ElementsAre("Threshold"));
}

TEST_F(Accessibility, a_new_listener_finds_no_old_sentence_in_the_description)
{
    display(0, "Threshold ");
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.accessibleDescription() == "Threshold"; }));
    active = false;
    display(0, "Ratio     ");
    active = true;
    QAccessible::setActive(true);
    EXPECT_EQ(view.accessibleDescription(), "");
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
