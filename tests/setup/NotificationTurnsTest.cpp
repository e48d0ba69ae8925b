#include "tests/setup/SetupBench.h"

#include <gmock/gmock.h>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The first key is selected and named, and its rename box is open, so no field has the focus.
class NotificationTurns : public testing::Test, protected SetupBench {
protected:
    NotificationTurns()
    {
        give(1, 0, 0, 99, "F3");
        give(5, 0, 0, 96, "F5");
        open();
        activate(*controller.window());
        doubleClick(button(0));
        EXPECT_NE(button(0).editBox(), nullptr);
        log.state = [this](const QObject* sender) { return state(sender); };
    }
    ~NotificationTurns() override { log.state = nullptr; }

    // The sender, the selected key, the text of the first field, a plus when that field takes
    // shortcuts, and the key whose rename box is open.
    [[nodiscard]] std::string state(const QObject* sender) const
    {
        std::string text = " from ? at ";
        std::string box = " no box";
        for (int i = 0; i < 12; ++i) {
            if (sender == &button(i))
                text = " from key " + std::to_string(i) + " at ";
            if (button(i).editBox())
                box = " box " + std::to_string(i);
        }
        for (int i = 0; i < 4; ++i) {
            if (sender == &field(i))
                text = " from field " + std::to_string(i) + " at ";
            if (sender == &clear(i))
                text = " from clear " + std::to_string(i) + " at ";
        }
        if (sender == controller.window())
            text = " from window at ";
        return text + std::to_string(ButtonGroup::sharedInstance().currentButtonId()) + " '"
            + field(0).stringValue().toStdString() + "'" + (field(0).bBecome() ? "+" : "") + box;
    }
};

TEST_F(NotificationTurns, a_click_on_another_key_selects_it_then_asks_for_its_shortcuts)
{
    click(button(4));
    EXPECT_THAT(log.told,
        ElementsAre("refreshShortcutName from key 4 at 4 'F3' no box",
            "hideUserAssignEditBox from field 0 at 4 'F5' no box"));
    EXPECT_EQ(state(nullptr), " from ? at 4 'F5'+ no box");
}

// Such a click is the second one of a pair whose first one met another control.
TEST_F(NotificationTurns, a_double_click_opens_the_box_before_it_asks_for_the_shortcuts)
{
    QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton,
        Qt::LeftButton, Qt::NoModifier);
    button(4).mouseDown(second, 2);
    EXPECT_THAT(log.told,
        ElementsAre("refreshShortcutName from key 4 at 4 'F3' box 4",
            "hideUserAssignEditBox from field 0 at 4 'F5' box 4"));
    EXPECT_EQ(state(nullptr), " from ? at 4 'F5'+ no box");
}

TEST_F(NotificationTurns, a_clear_button_closes_boxes_when_pressed_and_clears_when_released)
{
    press(clear(0), Qt::LeftButton, { 5, 5 });
    EXPECT_THAT(log.told, ElementsAre("hideUserAssignEditBox from clear 0 at 0 'F3' box 0"));
    EXPECT_EQ(state(nullptr), " from ? at 0 'F3' no box");
    log.told.clear();
    release(clear(0), Qt::LeftButton, { 5, 5 });
    EXPECT_THAT(log.told, ElementsAre("hideUserAssignEditBox from field 0 at 0 '' no box"))
        << "the field is empty before it takes the focus";
    EXPECT_EQ(state(nullptr), " from ? at 0 ''+ no box");
}

TEST_F(NotificationTurns, a_field_closes_boxes_before_it_takes_shortcuts)
{
    click(field(0));
    EXPECT_THAT(log.told, ElementsAre("hideUserAssignEditBox from field 0 at 0 'F3' box 0"));
    EXPECT_EQ(state(nullptr), " from ? at 0 'F3'+ no box");
    EXPECT_TRUE(field(0).acceptsFirstResponder());
    EXPECT_THAT(log.told,
        ElementsAre("hideUserAssignEditBox from field 0 at 0 'F3' box 0",
            "hideUserAssignEditBox from field 0 at 0 'F3'+ no box"))
        << "it stops to take them after the notification";
    EXPECT_FALSE(field(0).bBecome());
}

TEST_F(NotificationTurns, closing_the_window_is_posted_while_the_box_is_still_open)
{
    controller.closeDialog();
    EXPECT_THAT(log.told, ElementsAre("NSWindowWillCloseNotification from window at 0 'F3' box 0"));
    EXPECT_EQ(state(nullptr), " from ? at 0 'F3' no box");
}

TEST_F(NotificationTurns, the_selected_key_and_the_window_post_nothing)
{
    click(button(0));
    controller.mouseDown();
    controller.assign();
    EXPECT_THAT(log.told, IsEmpty());
}

} // namespace
} // namespace kestrel::test
