#include "panel/MyWindowController.h"

#include "link/MIDIMessage.h"
#include "tests/fakes/FakeSystem.h"
#include "tests/panel/GeometryPictures.h"
#include "tests/panel/PaintCounter.h"
#include "tests/panel/Painted.h"
#include "tests/panel/PanelMessages.h"

#include <QApplication>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <gmock/gmock.h>

namespace kestrel::test {

namespace {
using PanelMessages::Bytes;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Not;

// Processes all pending events.
void settle()
{
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
}

class WindowController : public testing::Test {
protected:
    void show()
    {
        controller.showWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(controller.window()));
        settle();
        // After this time the repaint gate lets a new repaint through at once.
        const auto open = RepaintGate::TimePoint::clock::now() + RepaintGate::Refresh;
        ASSERT_TRUE(QTest::qWaitFor([&] { return RepaintGate::TimePoint::clock::now() > open; }));
    }
    // Shows a hidden panel as the application does. Afterwards no part of the panel is stale.
    void showAllPainted()
    {
        show();
        PaintCounter paints(view());
        controller.setNeedDisplay();
        ASSERT_TRUE(QTest::qWaitFor([&] { return paints.count == 1; }));
    }
    void sendLCD(MyWindowController& to, const Bytes& bytes)
    {
        MIDIMessage message;
        message.setReadData(bytes);
        to.redrawLCDdisplay(message);
    }
    void sendDSP(MyWindowController& to, const Bytes& bytes)
    {
        MIDIMessage message;
        message.setReadData(bytes);
        to.redrawDSParea(message);
    }
    void sendLCD(const Bytes& bytes) { sendLCD(controller, bytes); }
    void sendDSP(const Bytes& bytes) { sendDSP(controller, bytes); }
    void display(std::uint8_t zone, std::string_view characters)
    {
        sendLCD(PanelMessages::display({ { zone, characters } }));
    }
    [[nodiscard]] PlugInPanelView& view() { return *controller.plugInPanelView(); }

    FakeWindowTraits traits;
    FakeDefaultsStore defaults;
    MyWindowController controller { "Plug-in_Panel", traits, defaults, &GeometryPictures::named };
};
} // namespace

TEST_F(WindowController, its_panel_has_the_pictures_of_the_product)
{
    MyWindowController ofProduct("Plug-in_Panel", traits, defaults);
    const PlugInPanelView& panel = *ofProduct.plugInPanelView();
    for (const InterfaceImage* picture :
        { &panel.imageBack(), &panel.imageAscii(), &panel.imageKnob(), &panel.imageSwitchGreen(),
            &panel.imageSwitchRed(), &panel.imageSwitchOrange() })
        EXPECT_FALSE(picture->isNull());
}

TEST_F(WindowController, the_window_comes_from_the_interface_file)
{
    EXPECT_EQ(controller.window()->windowTitle(), "Plug-in Panel");
    EXPECT_EQ(controller.window()->size(), QSize(782, 220));
    EXPECT_FALSE(controller.window()->isVisible());
}

TEST_F(WindowController, the_view_replaces_the_content_view_of_the_interface_file)
{
    EXPECT_EQ(view().parentWidget(), controller.window());
    EXPECT_EQ(view().geometry(), QRect(0, 0, 782, 220));
    EXPECT_THAT(controller.window()->findChildren<QWidget*>(), ElementsAre(&view()));
}

TEST_F(WindowController, under_another_name_there_is_no_window_and_nothing_happens)
{
    MyWindowController none("Main_Menu", traits, defaults, &GeometryPictures::named);
    sendLCD(none, PanelMessages::display({ { 0, "0123456789" } }));
    sendDSP(none, PanelMessages::knob(0, 1));
    none.initMessage();
    none.setNeedDisplay();
    none.showWindow();
    EXPECT_EQ(none.window(), nullptr);
    EXPECT_EQ(none.plugInPanelView(), nullptr);
}

TEST_F(WindowController, the_window_can_become_neither_key_nor_main)
{
    const DSPWindow& window = *controller.window();
    EXPECT_FALSE(window.canBecomeKeyWindow());
    EXPECT_FALSE(window.canBecomeMainWindow());
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(window.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(window.windowType(), Qt::Tool);
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(window.focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(view().focusPolicy(), Qt::NoFocus);
}

TEST_F(WindowController, the_window_never_uses_the_attribute_that_lets_it_sink_when_inactive)
{
    EXPECT_FALSE(controller.window()->testAttribute(Qt::WA_MacAlwaysShowToolWindow));
}

TEST_F(WindowController, the_native_window_is_told_its_traits_once_it_exists)
{
    EXPECT_THAT(traits.calls, testing::IsEmpty());
    show();
    EXPECT_THAT(traits.calls, Contains("never focused"));
    EXPECT_THAT(traits.calls, Contains("floating"));
    EXPECT_THAT(traits.calls, Contains("ratio 782:220"));
}

TEST_F(WindowController, the_traits_are_told_again_when_a_hidden_window_shows)
{
    show();
    controller.window()->hide();
    traits.calls.clear();
    show();
    EXPECT_THAT(traits.calls, ElementsAre("never focused", "floating", "ratio 782:220", "front"));
}

TEST_F(WindowController, a_window_that_shows_already_is_ordered_front_when_it_is_shown_again)
{
    show();
    traits.calls.clear();
    controller.showWindow();
    EXPECT_THAT(traits.calls, ElementsAre("front"));
}

TEST_F(WindowController, a_window_that_was_hidden_again_at_once_is_not_ordered_front)
{
    controller.showWindow();
    controller.window()->hide();
    QCoreApplication::processEvents();
    EXPECT_THAT(traits.calls, Not(Contains("front")));
}

TEST_F(WindowController, closing_hides_the_window_and_keeps_it)
{
    show();
    EXPECT_TRUE(controller.window()->close());
    settle();
    ASSERT_NE(controller.window(), nullptr);
    EXPECT_FALSE(controller.window()->isVisible());
    display(0, "while away");
    show();
    EXPECT_EQ((*view().myZonesArray())[0][0], 'w');
}

TEST_F(WindowController, display_messages_reach_the_view)
{
    display(5, "Ratio     ");
    EXPECT_THAT(
        (*view().myZonesArray())[5], ElementsAre('R', 'a', 't', 'i', 'o', ' ', ' ', ' ', ' ', ' '));
}

TEST_F(WindowController, knob_and_lamp_messages_reach_the_view)
{
    sendDSP(PanelMessages::knob(2, 0x2A));
    sendDSP(PanelMessages::lamp(4, true));
    EXPECT_EQ((*view().myKnobArray())[2], 0x2A);
    EXPECT_EQ((*view().mySwitchArray())[4], 0x44);
}

TEST_F(WindowController, a_message_without_data_changes_nothing)
{
    controller.redrawLCDdisplay(MIDIMessage());
    controller.redrawDSParea(MIDIMessage());
    EXPECT_THAT(*view().myZonesArray(), Each(Each(0)));
    EXPECT_THAT(*view().myKnobArray(), Each(0));
}

TEST_F(WindowController, initMessage_empties_the_display_and_keeps_knobs_and_lamps)
{
    display(0, "0123456789");
    sendDSP(PanelMessages::knob(0, 7));
    sendDSP(PanelMessages::lamp(0, true));
    controller.initMessage();
    EXPECT_THAT(*view().myZonesArray(), Each(Each(0)));
    EXPECT_EQ((*view().myKnobArray())[0], 7);
    EXPECT_EQ((*view().mySwitchArray())[0], 0x40);
}

TEST_F(WindowController, after_initMessage_on_a_visible_panel_no_old_text_outlives_the_next_message)
{
    display(0, "0123456789");
    display(7, "0123456789");
    showAllPainted();
    PaintCounter paints(view());
    controller.initMessage();
    display(0, "ABCDEFGHIJ");
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count == 1; }));
    EXPECT_EQ(paints.painted, QRegion(view().rect()));
}

TEST_F(WindowController, a_message_to_a_visible_panel_repaints_it)
{
    show();
    PaintCounter paints(view());
    display(0, "0123456789");
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count == 1; }));
}

TEST_F(WindowController, a_knob_message_repaints_even_if_nothing_changed)
{
    show();
    PaintCounter paints(view());
    sendDSP(PanelMessages::knob(0, 0));
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count == 1; }));
}

TEST_F(WindowController, messages_that_change_nothing_repaint_nothing)
{
    show();
    PaintCounter paints(view());
    sendLCD({ 0xF0, 0, 0, 0x66, 5, 0, 0x12 });
    sendLCD({ 0xF0, 0, 0, 0x66, 5, 0, 0x12, 0xF7 });
    display(10, "0123456789");
    sendDSP({ 0xB0, 0x40, 0x01 });
    sendDSP({ 0xB0 });
    settle();
    EXPECT_EQ(paints.count, 0);
}

TEST_F(WindowController, the_view_believes_what_it_is_told_of_the_windows_visibility)
{
    show();
    PaintCounter paints(view());
    view().updateZone(PanelMessages::display({ { 0, "0123456789" } }), false);
    view().updateDSParea(PanelMessages::knob(0, 5), false);
    view().updateDSParea(PanelMessages::lamp(0, true), false);
    settle();
    EXPECT_EQ(paints.count, 0);
    EXPECT_EQ((*view().myKnobArray())[0], 5);
}

TEST_F(WindowController, setNeedDisplay_repaints_all_of_the_panel)
{
    show();
    PaintCounter paints(view());
    controller.setNeedDisplay();
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count == 1; }));
    EXPECT_EQ(paints.painted, QRegion(view().rect()));
}

TEST_F(WindowController, a_hidden_panel_is_not_painted_and_shows_the_latest_state_later)
{
    show();
    controller.window()->hide();
    settle();
    int changes = 0; // announced to assistive technology
    QObject::connect(&view(), &PlugInPanelView::contentChanged, [&] { ++changes; });
    PaintCounter paints(view());
    for (int i = 0; i < 100; ++i) {
        display(0, i % 2 == 0 ? "even      " : "odd       ");
        sendDSP(PanelMessages::knob(1, 0x15));
    }
    settle();
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(paints.count, 0);

    show();
    EXPECT_GE(paints.count, 1);
    const QImage shown
        = controller.window()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(shown.pixel(298, 17), GeometryPictures::cell('o'));
    EXPECT_EQ(shown.pixel(406, 220 - 73 - 67), GeometryPictures::frame(0x15));
}

TEST_F(WindowController, a_minimised_panel_is_not_painted_and_shows_the_latest_state_later)
{
    show();
    controller.window()->showMinimized();
    settle();
    EXPECT_FALSE(controller.isVisible());
    PaintCounter paints(view());
    for (int i = 0; i < 100; ++i)
        display(0, "minimised ");
    settle();
    EXPECT_EQ(paints.count, 0);

    controller.window()->showNormal();
    EXPECT_TRUE(controller.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] {
        QScreen* screen = controller.window()->screen();
        const QImage shown = screen->grabWindow(controller.window()->winId()).toImage();
        return shown.pixel(298, 17) == GeometryPictures::cell('m');
    }));
}

TEST_F(WindowController, showing_a_minimised_panel_restores_it)
{
    show();
    controller.window()->showMinimized();
    settle();
    controller.showWindow();
    EXPECT_TRUE(controller.isVisible());
    EXPECT_EQ(controller.window()->windowState(), Qt::WindowNoState);
    EXPECT_EQ(controller.window()->size(), QSize(782, 220));
}

TEST_F(WindowController, a_lamp_or_knob_message_repaints_even_if_it_stores_nothing)
{
    show();
    PaintCounter paints(view());
    sendDSP({ 0xB0, 0x2C, 0x48 });
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count == 1; }));
    sendDSP({ 0xB0, 0x18 });
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count == 2; }));
}

TEST_F(WindowController, zones_that_are_only_stored_repaint_too)
{
    show();
    PaintCounter paints(view());
    display(8, "0123456789");
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count == 1; }));
}

TEST_F(WindowController, a_burst_of_messages_repaints_no_oftener_than_the_display_can_show)
{
    show();
    PaintCounter paints(view());
    const auto start = RepaintGate::TimePoint::clock::now();
    for (int i = 0; i < 10'000; ++i) {
        display(static_cast<std::uint8_t>(i % 8), i % 3 == 0 ? "0123456789" : "abcdefghij");
        if (i % 10 == 0)
            QApplication::processEvents();
    }
    const auto spent = RepaintGate::TimePoint::clock::now() - start;
    EXPECT_GE(paints.count, 1);
    EXPECT_LE(paints.count, 1 + spent / RepaintGate::Refresh);
}

TEST_F(WindowController, messages_that_arrive_together_are_painted_together)
{
    show();
    PaintCounter paints(view());
    for (int i = 0; i < 10'000; ++i)
        display(static_cast<std::uint8_t>(i % 8), "0123456789");
    settle();
    EXPECT_EQ(paints.count, 1);
}

TEST_F(WindowController, all_that_waited_for_the_next_refresh_gets_painted)
{
    show();
    display(0, "first     ");
    settle(); // painted: the next repaint has to wait
    display(0, "last      ");
    sendDSP(PanelMessages::knob(3, 0x15));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        QScreen* screen = controller.window()->screen();
        const QImage shown = screen->grabWindow(controller.window()->winId()).toImage();
        return shown.pixel(298, 17) == GeometryPictures::cell('l')
            && shown.pixel(600, 220 - 73 - 67) == GeometryPictures::frame(0x15);
    }));
}

TEST_F(WindowController, shown_on_no_screen_the_window_is_brought_back)
{
    controller.window()->move(5000, 6000);
    show();
    EXPECT_TRUE(
        controller.window()->screen()->geometry().contains(controller.window()->geometry()));
}

TEST_F(WindowController, the_window_leaves_a_screen_that_goes)
{
    show();
    controller.window()->move(5000, 6000);
    QScreen* const screen = QGuiApplication::primaryScreen();
    emit qGuiApp->screenRemoved(screen);
    settle();
    EXPECT_TRUE(screen->geometry().contains(controller.window()->geometry()));
}

TEST_F(WindowController, the_window_opens_where_the_last_run_left_it)
{
    const std::string frame = "30 40 587 165";
    defaults.setData(PanelPlacement::Key, DefaultsStore::Bytes(frame.begin(), frame.end()));
    const MyWindowController next("Plug-in_Panel", traits, defaults, &GeometryPictures::named);
    EXPECT_EQ(next.window()->pos(), QPoint(30, 40));
    EXPECT_EQ(next.window()->size(), QSize(587, 165));
}

TEST_F(WindowController, a_proposed_size_keeps_its_width_and_gets_the_height_that_goes_with_it)
{
    show();
    const DSPWindow& window = *controller.window();
    const int decoration = window.frameGeometry().height() - window.geometry().height();
    for (const double width : { 391.0, 500.0, 782.0, 783.0, 1000.5, 1564.0, 2346.0 }) {
        const QSizeF better = controller.windowWillResize(window, QSizeF(width, 17));
        EXPECT_EQ(better.width(), width);
        EXPECT_DOUBLE_EQ(better.height() - decoration, width * 0.2813299232736573);
    }
}

TEST_F(WindowController, the_first_display_message_on_a_visible_panel_paints_every_zone)
{
    show();
    PaintCounter paints(view());
    display(2, "0123456789"); // creates the zones, so the other zones show text too
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count == 1; }));
    EXPECT_EQ(paints.painted, QRegion(view().rect()));
}

TEST_F(WindowController, a_store_that_a_malformed_message_made_is_painted_with_the_next_message)
{
    show();
    PaintCounter paints(view());
    sendLCD({ 0xF0, 0, 0, 0x66, 5, 0, 0x12, 0xF7 });
    settle();
    EXPECT_EQ(paints.count, 0);
    sendDSP(PanelMessages::knob(0, 5));
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count == 1; }));
    EXPECT_EQ(paints.painted, QRegion(view().rect()));
}

TEST_F(WindowController, each_zone_knob_and_lamp_of_a_visible_panel_is_repainted_where_it_is)
{
    display(0, "          "); // creates the zones
    showAllPainted();
    const auto isRepainted = [&](const QRect& place, const Bytes& bytes) {
        PaintCounter paints(view());
        if (bytes[0] == 0xF0)
            sendLCD(bytes);
        else
            sendDSP(bytes);
        return QTest::qWaitFor([&] { return paints.count == 1; })
            && QRegion(place).subtracted(paints.painted).isEmpty()
            && paints.painted != QRegion(view().rect());
    };
    for (std::uint8_t i = 0; i < 8; ++i) {
        EXPECT_TRUE(
            isRepainted(view().zoneRect(i), PanelMessages::display({ { i, "0123456789" } })))
            << "zone " << int(i);
        EXPECT_TRUE(isRepainted(view().switchRect(i), PanelMessages::lamp(i, true)))
            << "lamp " << int(i);
    }
    for (std::uint8_t i = 0; i < 4; ++i)
        EXPECT_TRUE(isRepainted(view().knobRect(i), PanelMessages::knob(i, 0x15)))
            << "knob " << int(i);
}

TEST_F(WindowController, a_proposed_width_is_neither_raised_nor_limited)
{
    const DSPWindow& window = *controller.window();
    const int decoration = window.frameGeometry().height() - window.geometry().height();
    for (const double width : { 0.0, 1.0, 390.0, 5'000.0, 100'000.0 }) {
        const QSizeF better = controller.windowWillResize(window, QSizeF(width, 17));
        EXPECT_EQ(better.width(), width);
        EXPECT_NEAR(better.height(), width * 220 / 782 + decoration, 1e-6);
    }
}

} // namespace kestrel::test
