#include "common/KestrelUtilities.h"
#include "setup/SetupTables.h"
#include "tests/setup/ProcessorTime.h"
#include "tests/setup/SetupBench.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>

namespace kestrel::test {
namespace {

template <typename Control> std::vector<Control*> controls(const SetupBench& bench)
{
    std::vector<Control*> found;
    for (QObject* child : bench.controller.window()->children()) {
        if (auto* control = dynamic_cast<Control*>(child))
            found.push_back(control);
    }
    return found;
}

// Converts a frame to an origin at the upper left of the content, which is 453 high.
QRect frame(int x, int y, int width, int height)
{
    return { x, 453 - y - height, width, height };
}

TEST(SetupWindow, it_is_titled_closable_and_of_fixed_size)
{
    SetupBench bench;
    const SetupWindow& window = *bench.controller.window();
    EXPECT_EQ(window.windowTitle(), u"User Assignable Setup");
    EXPECT_EQ(window.minimumSize(), QSize(620, 453));
    EXPECT_EQ(window.maximumSize(), QSize(620, 453));
    const Qt::WindowFlags flags = window.windowFlags();
    EXPECT_TRUE(flags & Qt::WindowTitleHint);
    EXPECT_TRUE(flags & Qt::WindowCloseButtonHint);
    EXPECT_FALSE(flags & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
}

TEST(SetupWindow, twelve_buttons_stand_in_four_columns_and_three_rows)
{
    SetupBench bench;
    ASSERT_EQ(bench.controller.userAssignableButtons().size(), 12U);
    EXPECT_EQ(bench.button(0).geometry(), frame(36, 272, 78, 78));
    EXPECT_EQ(bench.button(3).geometry(), frame(330, 272, 78, 78));
    EXPECT_EQ(bench.button(4).geometry(), frame(36, 174, 78, 78));
    EXPECT_EQ(bench.button(11).geometry(), frame(330, 76, 78, 78));
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(bench.button(i).tag(), i);
}

TEST(SetupWindow, four_fields_stand_below_each_other_with_clear_buttons_over_their_right_ends)
{
    SetupBench bench;
    EXPECT_EQ(bench.field(0).geometry(), frame(430, 315, 171, 34));
    EXPECT_EQ(bench.field(3).geometry(), frame(430, 168, 171, 34));
    EXPECT_EQ(bench.clear(0).geometry(), frame(544, 315, 56, 31));
    EXPECT_EQ(bench.clear(3).geometry(), frame(544, 168, 56, 31));
    const auto& children = bench.controller.window()->children();
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(bench.field(i).tag(), 12 + i);
        EXPECT_EQ(bench.clear(i).myShortcutfield(), &bench.field(i));
        EXPECT_EQ(bench.field(i).shortcutFields(), &bench.controller.shortcutFields());
        EXPECT_LT(children.indexOf(&bench.field(i)), children.indexOf(&bench.clear(i)));
    }
    EXPECT_EQ(bench.controller.getMyShortcutField(4), nullptr);
    EXPECT_EQ(bench.controller.getMyShortcutField(-1), nullptr);
}

TEST(SetupWindow, load_save_assign_ok_and_cancel_are_in_their_places_with_their_pictures)
{
    SetupBench bench;
    std::map<QString, ImageButton*> buttons;
    for (ImageButton* button : controls<ImageButton>(bench))
        buttons[button->accessibleName()] = button;
    const SetupTables& tables = SetupTables::shared();
    const auto check = [&](const QString& name, const QRect& place, const InterfaceImage& image,
                           const InterfaceImage& alternate) {
        ASSERT_TRUE(buttons.contains(name)) << name.toStdString();
        EXPECT_EQ(buttons[name]->geometry(), place) << name.toStdString();
        EXPECT_EQ(buttons[name]->image().single(), image.single()) << name.toStdString();
        EXPECT_EQ(buttons[name]->alternateImage().single(), alternate.single());
        EXPECT_FALSE(image.isNull()) << name.toStdString();
        EXPECT_NE(image.single(), alternate.single()) << name.toStdString();
    };
    check("Load", frame(3, 419, 56, 31), tables.LoadSaveButtonOffImage[0],
        tables.LoadSaveButtonImage[0]);
    check("Save", frame(61, 419, 56, 31), tables.LoadSaveButtonOffImage[1],
        tables.LoadSaveButtonImage[1]);
    check("Assign", frame(540, 119, 56, 31), tables.AssignOkCancelButtonImage[0],
        tables.AssignOkCancelButtonOffImage[0]);
    check("OK", frame(540, 15, 56, 31), tables.AssignOkCancelButtonImage[1],
        tables.AssignOkCancelButtonOffImage[1]);
    check("Cancel", frame(460, 15, 56, 31), tables.AssignOkCancelButtonImage[2],
        tables.AssignOkCancelButtonOffImage[2]);
    check("Clear shortcut 1", frame(544, 315, 56, 31), tables.ClearButtonImage,
        tables.ClearButtonOnPressImage);
}

TEST(SetupWindow, every_picture_is_there_in_the_size_of_its_frame)
{
    const SetupTables& tables = SetupTables::shared();
    EXPECT_EQ(tables.BackgroundImage.size(), QSizeF(620, 453));
    for (const InterfaceImage* image : { &tables.ClearButtonImage, &tables.ClearButtonOnPressImage,
             &tables.ClearButtonDisableImage, &tables.ClearButtonOffImage,
             &tables.LoadSaveButtonImage[0], &tables.LoadSaveButtonImage[1],
             &tables.LoadSaveButtonOffImage[0], &tables.LoadSaveButtonOffImage[1],
             &tables.AssignOkCancelButtonImage[0], &tables.AssignOkCancelButtonOffImage[2] })
        EXPECT_EQ(image->size(), QSizeF(56, 31));
}

TEST(SetupWindow, the_focus_is_seen_on_buttons_and_fields)
{
    SetupBench bench;
    bench.open();
    activate(*bench.controller.window());
    QWidget* const controls[] { &bench.button(2), bench.controller.assignButton() };
    press(bench.field(0), Keys::F5); // enables Assign
    for (QWidget* control : controls) {
        control->clearFocus();
        const QImage without = control->grab().toImage();
        control->setFocus(Qt::TabFocusReason);
        EXPECT_NE(control->grab().toImage(), without);
    }
}

TEST(SetupWindow, button_0_is_selected_after_construction_and_its_shortcuts_fill_the_fields)
{
    SetupBench bench;
    bench.give(1, 0, Modifier::Command, 1, "S");
    bench.give(1, 1, 0, 96, "F5");
    bench.give(2, 0, 0, 0, "A");
    bench.open();
    EXPECT_EQ(bench.button(0).state(), UserAssignableButton::State::On);
    EXPECT_EQ(bench.field(0).stringValue(), u"\u2318+S");
    EXPECT_EQ(bench.field(1).stringValue(), u"F5");
    EXPECT_TRUE(bench.field(0).isFirstResponder());
}

TEST(SetupWindow, another_selection_shows_that_buttons_shortcuts_and_focuses_the_first_field)
{
    SetupBench bench;
    bench.give(1, 0, 0, 96, "F5");
    bench.give(2, 0, 0, 0, "A");
    bench.open();
    activate(*bench.controller.window());
    MyShortcutField::makeWindowFirstResponder(*bench.controller.window());
    click(bench.button(1));
    EXPECT_EQ(bench.field(0).stringValue(), u"A");
    EXPECT_EQ(bench.shownFields(), "01");
    EXPECT_TRUE(bench.field(0).hasFocus());
    click(bench.button(2));
    EXPECT_EQ(bench.field(0).stringValue(), u"");
    EXPECT_EQ(bench.shownFields(), "0");
}

TEST(SetupWindow, it_is_shown_within_a_tenth_of_a_second)
{
    SetupBench bench;
    const ProcessorTime time;
    bench.open();
    bench.controller.window()->grab();
    EXPECT_LT(time.elapsedMs(), 100);
}

ImageButton& named(const SetupBench& bench, const QString& name)
{
    for (ImageButton* button : bench.controller.window()->findChildren<ImageButton*>()) {
        if (button->accessibleName() == name)
            return *button;
    }
    throw std::logic_error("no such button");
}

TEST(SetupWindow, every_picture_is_the_one_of_its_name)
{
    const SetupTables& tables = SetupTables::shared();
    const auto expectNamed = [](const InterfaceImage& image, const char* name) {
        const QString path = QStringLiteral("UserAssignable/") + QLatin1String(name);
        ASSERT_FALSE(image.single().isNull()) << name;
        EXPECT_EQ(image.single(), KestrelUtilities::imageAtPath(path).single()) << name;
    };
    expectNamed(tables.BackgroundImage, "back");
    expectNamed(tables.ClearButtonImage, "Clear_button/on");
    expectNamed(tables.ClearButtonOnPressImage, "Clear_button/on_press");
    expectNamed(tables.ClearButtonDisableImage, "Clear_button/disable");
    expectNamed(tables.ClearButtonOffImage, "Clear_button/off");
    expectNamed(tables.LoadSaveButtonOffImage[0], "Load_Button/off");
    expectNamed(tables.LoadSaveButtonOffImage[1], "Save_Button/off");
    expectNamed(tables.LoadSaveButtonImage[0], "Load_Button/on_press");
    expectNamed(tables.LoadSaveButtonImage[1], "Save_Button/on_press");
    expectNamed(tables.AssignOkCancelButtonImage[0], "Assign_button/on");
    expectNamed(tables.AssignOkCancelButtonImage[1], "OK_button/on");
    expectNamed(tables.AssignOkCancelButtonImage[2], "Cancel_button/on");
    expectNamed(tables.AssignOkCancelButtonOffImage[0], "Assign_button/on_press");
    expectNamed(tables.AssignOkCancelButtonOffImage[1], "OK_button/on_press");
    expectNamed(tables.AssignOkCancelButtonOffImage[2], "Cancel_button/on_press");
    expectNamed(tables.AssignButtonDisableImage, "Assign_button/disable");
}

TEST(SetupWindow, a_button_shows_its_other_picture_while_it_is_pressed)
{
    SetupBench bench;
    bench.open();
    ImageButton& ok = named(bench, "OK");
    const QImage resting = ok.grab().toImage();
    press(ok, Qt::LeftButton, { 5, 5 });
    EXPECT_NE(ok.grab().toImage(), resting);
    release(ok, Qt::LeftButton, { -50, -50 });
    EXPECT_EQ(ok.grab().toImage(), resting);
    EXPECT_TRUE(bench.controller.isVisible()) << "a release outside does nothing";
}

TEST(SetupWindow, ok_and_cancel_do_what_their_faces_say)
{
    SetupBench bench;
    bench.open();
    click(named(bench, "Cancel"));
    EXPECT_FALSE(bench.controller.isVisible());
    EXPECT_FALSE(bench.controller.bOKclose());
    bench.open();
    click(named(bench, "OK"));
    EXPECT_FALSE(bench.controller.isVisible());
    EXPECT_TRUE(bench.controller.bOKclose());
}

TEST(SetupWindow, load_and_save_do_what_their_faces_say)
{
    for (const auto& [name, mode] :
        { std::pair { "Load", QFileDialog::AcceptOpen }, { "Save", QFileDialog::AcceptSave } }) {
        SetupBench bench;
        bench.open();
        click(named(bench, name));
        auto* sheet = bench.controller.window()->findChild<QFileDialog*>();
        ASSERT_NE(sheet, nullptr) << name;
        EXPECT_EQ(sheet->acceptMode(), mode) << name;
        sheet->reject();
    }
}

} // namespace
} // namespace kestrel::test
