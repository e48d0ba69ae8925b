#include "setup/SetupTables.h"
#include "setup/UserAssignableButtonAccessible.h"
#include "tests/setup/SetupBench.h"
#include "tests/support/AccessibleTree.h"

#include <QAbstractButton>
#include <QTest>

#include <gmock/gmock.h>

namespace kestrel::test {
namespace {

using testing::Contains;
using testing::Not;

// The setup window as assistive technology sees it. The first key has a name and all four
// shortcuts, so every control is shown, and the last field has just been changed.
struct AccessibleBench : SetupBench {
    AccessibleBench()
    {
        for (std::size_t record = 0; record < 4; ++record)
            give(1, record, Modifier::Command, 1, "S");
        live->setShortcutTitle("Save", 1);
        open();
        activate(*controller.window());
        press(field(3), Keys::A);
    }
    [[nodiscard]] QAccessibleInterface& window() const { return accessible(*controller.window()); }
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> names;
        for (QAccessibleInterface* child : children(window()))
            names.push_back(child->text(QAccessible::Name).toStdString());
        return names;
    }
    [[nodiscard]] QAccessibleInterface& named(const std::string& name) const
    {
        for (QAccessibleInterface* child : children(window())) {
            if (child->text(QAccessible::Name).toStdString() == name)
                return *child;
        }
        throw std::logic_error("nothing is named " + name);
    }
};

const std::vector<std::string> ReadingOrder { "Load", "Save", "User assignable keys",
    "User-assignable button 1, Save", "User-assignable button 2", "User-assignable button 3",
    "User-assignable button 4", "User-assignable button 5", "User-assignable button 6",
    "User-assignable button 7", "User-assignable button 8", "User-assignable button 9",
    "User-assignable button 10", "User-assignable button 11", "User-assignable button 12",
    "Shortcuts · U1", "Shortcut 1", "Clear shortcut 1", "Shortcut 2", "Clear shortcut 2",
    "Shortcut 3", "Clear shortcut 3", "Shortcut 4", "Clear shortcut 4", "Assign", "⇪ Shift",
    "⌥ Option", "^ Control", "⌘ Command", "Cancel", "OK" };

TEST(SetupAccessibility, the_window_is_a_window)
{
    const AccessibleBench bench;
    EXPECT_EQ(bench.window().role(), QAccessible::Window);
    EXPECT_EQ(bench.window().text(QAccessible::Name), "User Assignable Setup");
}

TEST(SetupAccessibility, controls_headings_and_legend_stand_in_reading_order)
{
    const AccessibleBench bench;
    EXPECT_EQ(bench.names(), ReadingOrder);
    for (int i = 0; i < bench.window().childCount(); ++i) {
        QAccessibleInterface* child = bench.window().child(i);
        EXPECT_EQ(bench.window().indexOfChild(child), i);
        EXPECT_EQ(child->parent(), &bench.window()) << i;
        EXPECT_FALSE(child->state().invisible) << i;
    }
    EXPECT_EQ(bench.window().child(-1), nullptr);
    EXPECT_EQ(bench.window().child(31), nullptr);
}

TEST(SetupAccessibility, a_sheet_is_no_part_of_the_window)
{
    AccessibleBench bench;
    bench.controller.save();
    EXPECT_EQ(bench.names(), ReadingOrder);
    QApplication::activeModalWidget()->close();
}

TEST(SetupAccessibility, each_part_has_its_role)
{
    const AccessibleBench bench;
    const auto role = [&](const char* name) { return bench.named(name).role(); };
    EXPECT_EQ(role("User assignable keys"), QAccessible::Heading);
    EXPECT_EQ(role("Shortcuts · U1"), QAccessible::Heading);
    EXPECT_EQ(role("⌘ Command"), QAccessible::StaticText);
    EXPECT_TRUE(bench.named("⌘ Command").state().readOnly);
    EXPECT_EQ(role("User-assignable button 2"), QAccessible::RadioButton);
    EXPECT_EQ(role("Shortcut 1"), QAccessible::EditableText);
    for (const char* button : { "Load", "Save", "Clear shortcut 1", "Assign", "Cancel", "OK" })
        EXPECT_EQ(role(button), QAccessible::PushButton) << button;
}

// As with the keyboard, a control that is not shown or not enabled takes no focus.
TEST(SetupAccessibility, every_control_has_a_name_of_its_own_and_can_have_the_focus)
{
    const AccessibleBench bench;
    std::set<std::string> names;
    for (QObject* child : bench.controller.window()->children()) {
        auto* control = dynamic_cast<QWidget*>(child);
        if (!control)
            continue;
        const QString name = accessible(*control).text(QAccessible::Name);
        EXPECT_TRUE(names.insert(name.toStdString()).second) << name.toStdString();
        EXPECT_TRUE(accessible(*control).state().focusable) << name.toStdString();
        bench.controller.window()->setFocus();
        ASSERT_FALSE(control->hasFocus());
        giveFocus(accessible(*control));
        EXPECT_TRUE(control->hasFocus()) << name.toStdString();
        EXPECT_TRUE(accessible(*control).state().focused) << name.toStdString();
    }
    EXPECT_EQ(names.size(), 12U + 4U + 4U + 5U);
    EXPECT_THAT(names, Not(Contains("")));
}

// Fields keep Tab for themselves, so this leaves each of them by its next control.
TEST(SetupAccessibility, tab_goes_the_way_of_the_eye)
{
    const AccessibleBench bench;
    std::vector<std::string> visited;
    QWidget* control = bench.controller.window();
    for (int i = 0; i < 25; ++i) {
        do
            control = control->nextInFocusChain();
        while (!(control->focusPolicy() & Qt::TabFocus));
        visited.push_back(accessible(*control).text(QAccessible::Name).toStdString());
    }
    std::vector<std::string> expected = ReadingOrder;
    for (const char* engraved : { "User assignable keys", "Shortcuts · U1", "⇪ Shift", "⌥ Option",
             "^ Control", "⌘ Command" })
        std::erase(expected, engraved);
    EXPECT_EQ(visited, expected);

    giveFocus(bench.named("Load"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "Save");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "User-assignable button 1, Save");
    giveFocus(bench.named("Assign"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "Cancel");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focusedName(), "OK");
}

TEST(SetupAccessibility, a_field_that_has_taken_tab_escape_and_return_lets_the_focus_go_elsewhere)
{
    const AccessibleBench bench;
    for (const char* target : { "Assign", "Cancel", "Load", "User-assignable button 7",
             "Clear shortcut 2", "Shortcut 3" }) {
        for (const auto& [key, shown] : { std::pair { Keys::Tab, "TAB" }, { Keys::Escape, "ESC" },
                 { Keys::Return, "RETURN" } }) {
            giveFocus(bench.named("Shortcut 1"));
            press(bench.field(0), key);
            ASSERT_EQ(bench.named("Shortcut 1").text(QAccessible::Value), shown);
            ASSERT_TRUE(bench.field(0).isFirstResponder());
            giveFocus(bench.named(target));
            EXPECT_EQ(focusedName(), target);
            EXPECT_FALSE(bench.field(0).isFirstResponder());
            EXPECT_FALSE(bench.named("Shortcut 1").state().focused);
        }
    }
}

// The bright pixels around an engraving lie within its frame.
TEST(SetupAccessibility, headings_and_legend_are_where_they_are_engraved)
{
    const AccessibleBench bench;
    QImage back(bench.controller.window()->size(), QImage::Format_RGB32);
    bench.controller.window()->render(&back, {}, {}, QWidget::DrawWindowBackground);
    const QPoint origin = bench.controller.window()->mapToGlobal(QPoint(0, 0));
    int count = 0;
    for (QAccessibleInterface* child : children(bench.window())) {
        if (child->role() != QAccessible::Heading && child->role() != QAccessible::StaticText)
            continue;
        ++count;
        const QRect frame = child->rect().translated(-origin);
        const QRect around = frame.adjusted(-6, -6, 6, 6);
        QRect bright;
        for (int y = around.top(); y <= around.bottom(); ++y) {
            for (int x = around.left(); x <= around.right(); ++x) {
                if (qGray(back.pixel(x, y)) > 90)
                    bright |= QRect(x, y, 1, 1);
            }
        }
        const std::string name = child->text(QAccessible::Name).toStdString();
        EXPECT_TRUE(frame.contains(bright)) << name;
        EXPECT_TRUE(bright.adjusted(-6, -6, 6, 6).contains(frame)) << name;
    }
    EXPECT_EQ(count, 6);
}

TEST(SetupAccessibility, each_part_is_found_where_it_is_seen)
{
    const AccessibleBench bench;
    for (QAccessibleInterface* child : children(bench.window())) {
        const QPoint middle = child->rect().center();
        const std::string name = child->text(QAccessible::Name).toStdString();
        EXPECT_EQ(bench.window().childAt(middle.x(), middle.y()), child) << name;
        for (QAccessibleInterface* other : children(bench.window()))
            EXPECT_TRUE(other == child || !other->rect().intersects(child->rect()))
                << name << " and " << other->text(QAccessible::Name).toStdString();
    }
    const QPoint corner = bench.controller.window()->mapToGlobal(QPoint(300, 5));
    EXPECT_EQ(bench.window().childAt(corner.x(), corner.y()), nullptr);
}

TEST(SetupAccessibility, a_field_whose_clear_button_is_hidden_is_seen_whole)
{
    const AccessibleBench bench;
    EXPECT_EQ(bench.named("Shortcut 2").rect().width(), 114);
    bench.clear(1).hide();
    EXPECT_EQ(bench.named("Shortcut 2").rect().width(), 171);
}

TEST(SetupAccessibility, engravings_move_with_the_scrolled_content)
{
    const AccessibleBench bench;
    const QRect before = bench.named("Cancel").rect();
    const QRect legend = bench.named("⌘ Command").rect();
    bench.controller.window()->fitInto({ 400, 300 });
    giveFocus(bench.named("Cancel"));
    const QPoint moved = bench.named("Cancel").rect().topLeft() - before.topLeft();
    EXPECT_LT(moved.x(), 0);
    EXPECT_LT(moved.y(), 0);
    EXPECT_EQ(bench.named("⌘ Command").rect(), legend.translated(moved));
}

TEST(SetupAccessibility, a_key_tells_its_number_its_name_and_its_shortcuts)
{
    SetupBench bench;
    bench.give(1, 0, Modifier::Command, 1, "S");
    bench.give(1, 2, 0, 96, "F5");
    bench.live->setShortcutTitle("Save", 1);
    bench.open();
    const QAccessibleInterface& key = accessible(bench.button(0));
    EXPECT_EQ(key.text(QAccessible::Name), "User-assignable button 1, Save");
    EXPECT_EQ(key.text(QAccessible::Description), QString::fromUtf8("⌘+S, F5"));
    EXPECT_EQ(accessible(bench.button(11)).text(QAccessible::Name), "User-assignable button 12");
    EXPECT_EQ(accessible(bench.button(11)).text(QAccessible::Description), "");
}

TEST(SetupAccessibility, a_key_tells_whether_it_is_selected_and_pressed)
{
    const AccessibleBench bench;
    for (const int key : { 0, 5 }) {
        EXPECT_TRUE(accessible(bench.button(key)).state().checkable);
        EXPECT_EQ(accessible(bench.button(key)).state().checked, key == 0);
        EXPECT_FALSE(accessible(bench.button(key)).state().pressed);
        bench.button(key).setDown(true);
        EXPECT_TRUE(accessible(bench.button(key)).state().pressed);
    }
}

TEST(SetupAccessibility, toggling_a_key_selects_it_alone_and_never_turns_it_off)
{
    const AccessibleBench bench;
    const QString& toggle = QAccessibleActionInterface::toggleAction();
    QAccessibleActionInterface& key = *accessible(bench.button(5)).actionInterface();
    EXPECT_THAT(key.actionNames(), Contains(toggle));
    EXPECT_THAT(key.actionNames(), Contains(QAccessibleActionInterface::setFocusAction()));
    for (int i = 0; i < 2; ++i) {
        key.doAction(toggle);
        for (int other = 0; other < 12; ++other)
            EXPECT_EQ(accessible(bench.button(other)).state().checked, other == 5) << other;
    }
    EXPECT_EQ(bench.field(0).stringValue(), "") << "the shortcuts of the key";
}

TEST(SetupAccessibility, renaming_is_an_action_of_a_key_with_a_shortcut)
{
    const AccessibleBench bench;
    QAccessibleActionInterface& key = *accessible(bench.button(0)).actionInterface();
    const QString& action = UserAssignableButtonAccessible::RenameAction;
    ASSERT_TRUE(key.actionNames().contains(action));
    EXPECT_EQ(key.localizedActionName(action), "Rename");
    EXPECT_EQ(key.localizedActionDescription(action), "Opens a box for the name of the key");
    key.doAction(action);
    ASSERT_NE(bench.button(0).editBox(), nullptr);
    EXPECT_TRUE(bench.button(0).editBox()->hasFocus());
    EXPECT_EQ(bench.names()[4], "Name of button 1") << "it stands after its key";
    const QPoint inBox = bench.named("Name of button 1").rect().center();
    EXPECT_EQ(bench.window().childAt(inBox.x(), inBox.y()), &bench.named("Name of button 1"));
    bench.button(0).editBox()->setPlainText("Store");
    bench.button(0).editBox()->document()->setModified(true);
    press(*bench.button(0).editBox(), Keys::Return);
    EXPECT_EQ(bench.names()[3], "User-assignable button 1, Store");

    QAccessibleActionInterface& empty = *accessible(bench.button(5)).actionInterface();
    EXPECT_FALSE(empty.actionNames().contains(action));
    empty.doAction(action);
    EXPECT_EQ(bench.button(5).editBox(), nullptr);
    EXPECT_FALSE(bench.button(5).isChecked());
}

TEST(SetupAccessibility, renaming_another_key_selects_it_first)
{
    AccessibleBench bench;
    bench.give(6, 0, 0, 96, "F5");
    bench.controller.setupUI(*bench.live);
    accessible(bench.button(5))
        .actionInterface()
        ->doAction(UserAssignableButtonAccessible::RenameAction);
    EXPECT_TRUE(bench.button(5).isChecked());
    EXPECT_EQ(bench.field(0).stringValue(), "F5");
    ASSERT_NE(bench.button(5).editBox(), nullptr);
    EXPECT_TRUE(bench.button(5).editBox()->hasFocus());
}

TEST(SetupAccessibility, the_shortcut_of_a_field_is_its_value_and_its_text)
{
    const AccessibleBench bench;
    QAccessibleInterface& field = accessible(bench.field(1));
    EXPECT_TRUE(field.state().editable);
    EXPECT_FALSE(field.state().readOnly);
    press(bench.field(1), with(Modifier::Command | Modifier::Shift, Keys::PageDown));
    const QString shortcut = QString::fromUtf8("⇪⌘+PAGE DOWN");
    EXPECT_EQ(field.text(QAccessible::Value), shortcut);
    ASSERT_NE(field.textInterface(), nullptr);
    EXPECT_EQ(field.textInterface()->characterCount(), shortcut.size());
    EXPECT_EQ(field.textInterface()->text(0, field.textInterface()->characterCount()), shortcut);
    EXPECT_EQ(field.textInterface()->text(1, 3), shortcut.mid(1, 2));
    int start = -1;
    int end = -1;
    EXPECT_EQ(field.textInterface()->attributes(2, &start, &end), "");
    EXPECT_EQ(std::pair(start, end), std::pair(0, static_cast<int>(shortcut.size())))
        << "all of the text looks the same";
    EXPECT_EQ(field.textInterface()->offsetAtPoint(field.rect().center()), 0);
    EXPECT_EQ(field.textInterface()->offsetAtPoint(field.rect().topLeft() - QPoint(1, 1)), -1);
    click(bench.clear(1));
    EXPECT_EQ(field.text(QAccessible::Value), "");
    EXPECT_EQ(field.textInterface()->characterCount(), 0);
}

TEST(SetupAccessibility, a_text_that_breaks_into_two_lines_is_one_value)
{
    const AccessibleBench bench;
    press(bench.field(0),
        with(Modifier::Command | Modifier::Shift | Modifier::Option | Modifier::Control,
            Keys::PageDown));
    ASSERT_TRUE(bench.field(0).stringValue().contains('\n'));
    EXPECT_EQ(
        accessible(bench.field(0)).text(QAccessible::Value), QString::fromUtf8("⇪^⌥⌘+PAGE DOWN"));
}

TEST(SetupAccessibility, not_available_is_an_alert_while_the_key_is_refused)
{
    const AccessibleBench bench;
    press(bench.field(0), Keys::F3);
    QAccessibleInterface& field = accessible(bench.field(1));
    ASSERT_EQ(field.childCount(), 1);
    QAccessibleInterface& alert = *field.child(0);
    EXPECT_EQ(alert.role(), QAccessible::AlertMessage);
    EXPECT_EQ(alert.parent(), &field);
    EXPECT_EQ(field.indexOfChild(&alert), 0);
    EXPECT_EQ(field.indexOfChild(&field), -1);
    EXPECT_TRUE(alert.state().invisible);
    press(bench.field(1), Keys::F5);
    EXPECT_EQ(alert.text(QAccessible::Name), "Not Available");
    EXPECT_FALSE(alert.state().invisible);
    EXPECT_EQ(alert.rect(), field.rect());
    EXPECT_EQ(field.text(QAccessible::Value), "") << "it is no shortcut";
    EXPECT_EQ(field.text(QAccessible::Description),
        "Not Available. A key takes only one function key, F1 to F20, and Shortcut 1 holds F3");
    bench.controller.window()->hide();
    EXPECT_TRUE(alert.state().invisible) << "the window is not shown";
    bench.controller.window()->show();
    ASSERT_FALSE(alert.state().invisible);
    press(bench.field(1), Keys::A);
    EXPECT_TRUE(alert.state().invisible);
    EXPECT_EQ(field.text(QAccessible::Value), "A");
    EXPECT_FALSE(field.text(QAccessible::Description).contains("Not Available"));
}

} // namespace
} // namespace kestrel::test
