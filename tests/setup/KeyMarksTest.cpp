#include "setup/KeyAdvice.h"
#include "tests/setup/SetupBench.h"
#include "tests/support/AccessibleTree.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

#include <functional>
#include <vector>

namespace kestrel::test {
namespace {

// Which keys have the mark "not assigned".
std::vector<int> unassigned(const SetupBench& bench)
{
    std::vector<int> marked;
    for (int key = 0; key < 12; ++key) {
        if (bench.button(key).marks().isUnassigned)
            marked.push_back(key);
    }
    return marked;
}

using Marked = std::vector<int>;

struct TypedBench : SetupBench {
    TypedBench()
    {
        open();
        press(field(0), Keys::F5);
    }
};

// Opens the window, for the second time if it was closed with OK, and assigns neither shortcut.
void typeOnTwoKeys(SetupBench& bench, bool wasOk)
{
    bench.open();
    if (wasOk) {
        bench.controller.ok();
        bench.open();
    }
    press(bench.field(0), Keys::F5);
    click(bench.button(1));
    press(bench.field(0), Keys::F3);
}

TEST(KeyMarks, typing_and_assigning_mark_nothing)
{
    TypedBench bench;
    EXPECT_EQ(unassigned(bench), Marked {});
    bench.controller.assign();
    click(bench.button(1));
    EXPECT_EQ(unassigned(bench), Marked {});
}

TEST(KeyMarks, another_key_leaves_the_mark_until_the_next_edit)
{
    TypedBench bench;
    click(bench.button(1));
    EXPECT_EQ(unassigned(bench), Marked { 0 });
    EXPECT_EQ(bench.field(0).stringValue(), "") << "the typed shortcut is lost as ever";
    press(bench.field(0), Keys::F3);
    click(bench.button(0));
    EXPECT_EQ(unassigned(bench), (Marked { 0, 1 })) << "looking at a key is no edit";
    press(bench.field(0), Keys::F5);
    EXPECT_EQ(unassigned(bench), Marked { 1 });
    bench.controller.assign();
    EXPECT_EQ(unassigned(bench), Marked { 1 });
}

TEST(KeyMarks, ok_leaves_the_mark_for_the_next_time)
{
    TypedBench bench;
    bench.controller.ok();
    EXPECT_EQ(bench.liveText(1), "") << "OK assigns nothing by itself";
    bench.open();
    EXPECT_EQ(unassigned(bench), Marked { 0 });
    press(bench.field(0), Keys::F5);
    bench.controller.assign();
    bench.controller.ok();
    bench.open();
    EXPECT_EQ(unassigned(bench), Marked {});
}

TEST(KeyMarks, save_leaves_the_mark)
{
    TypedBench bench;
    const QTemporaryDir folder;
    bench.controller.save();
    auto* sheet = bench.controller.window()->findChild<QFileDialog*>();
    ASSERT_NE(sheet, nullptr);
    sheet->findChild<QLineEdit*>()->setText(folder.filePath("set.ZKCF"));
    QMetaObject::invokeMethod(sheet, "accept");
    EXPECT_EQ(bench.field(0).stringValue(), "");
    EXPECT_EQ(unassigned(bench), Marked { 0 });
}

TEST(KeyMarks, cancel_and_the_close_box_throw_away_on_purpose_and_leave_none)
{
    for (const bool wasOk : { false, true }) {
        for (const bool isCancel : { false, true }) {
            SetupBench bench;
            typeOnTwoKeys(bench, wasOk);
            if (isCancel)
                bench.controller.cancel();
            else
                bench.controller.window()->close();
            bench.open();
            EXPECT_EQ(unassigned(bench), Marked {}) << wasOk << isCancel;
        }
    }
}

TEST(KeyMarks, what_ok_has_left_stays_marked_whatever_closes_meanwhile)
{
    TypedBench bench;
    bench.controller.ok();
    for (int time = 0; time < 2; ++time) {
        bench.open();
        click(bench.button(1));
        press(bench.field(0), Keys::F3);
        bench.controller.cancel();
        QWidget panel;
        bench.center.post(NotificationName::windowWillClose, &panel);
    }
    bench.open();
    EXPECT_EQ(unassigned(bench), Marked { 0 });
}

TEST(KeyMarks, an_edit_that_is_thrown_away_brings_back_the_mark_that_was_there_before_it)
{
    using Close = std::function<void(SetupBench&)>;
    const QWidget panel;
    const std::vector<Close> ways { [](SetupBench& bench) { bench.controller.cancel(); },
        [](SetupBench& bench) { bench.controller.window()->close(); },
        [&panel](SetupBench& bench) {
            bench.center.post(NotificationName::windowWillClose, &panel);
            bench.controller.window()->hide();
        } };
    for (const Close& close : ways) {
        TypedBench bench;
        bench.controller.ok();
        for (const bool isAssigned : { false, true }) {
            bench.open();
            press(bench.field(0), Keys::F3);
            EXPECT_EQ(unassigned(bench), Marked {});
            if (isAssigned)
                bench.controller.assign();
            close(bench);
            bench.open();
            EXPECT_EQ(unassigned(bench), Marked { 0 }) << isAssigned;
        }
    }
}

TEST(KeyMarks, a_loaded_set_has_none_and_cancel_brings_back_those_of_the_live_set)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("set.ZKCF");
    TypedBench bench;
    ASSERT_TRUE(AssignmentFiles(bench.attributes).write(path, *bench.live));
    bench.controller.ok();
    bench.open();
    ASSERT_TRUE(bench.controller.loadFile(path, true));
    EXPECT_EQ(unassigned(bench), Marked {});
    bench.controller.cancel();
    bench.open();
    EXPECT_EQ(unassigned(bench), Marked { 0 });
    ASSERT_TRUE(bench.controller.loadFile(path, true));
    bench.controller.ok();
    bench.open();
    EXPECT_EQ(unassigned(bench), Marked {});
}

TEST(KeyMarks, a_file_that_becomes_the_live_set_at_once_leaves_none)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("set.ZKCF");
    TypedBench bench;
    ASSERT_TRUE(AssignmentFiles(bench.attributes).write(path, *bench.live));
    bench.controller.ok();
    ASSERT_TRUE(bench.controller.loadFile(path, false));
    bench.controller.changeShortcut(*bench.live);
    bench.open();
    EXPECT_EQ(unassigned(bench), Marked {});
    bench.controller.cancel();
    bench.open();
    EXPECT_EQ(unassigned(bench), Marked {});
}

// The application hides then, and the window takes the live set again when it is next opened.
TEST(KeyMarks, another_window_that_closes_leaves_what_was_typed_marked)
{
    for (const bool wasOk : { false, true }) {
        SetupBench bench;
        typeOnTwoKeys(bench, wasOk);
        QWidget panel;
        bench.center.post(NotificationName::windowWillClose, &panel);
        bench.controller.window()->hide();
        bench.open();
        EXPECT_EQ(unassigned(bench), (Marked { 0, 1 })) << wasOk;
        bench.controller.cancel();
        bench.open();
        EXPECT_EQ(unassigned(bench), Marked {}) << wasOk;
    }
}

TEST(KeyMarks, the_same_shortcut_on_two_keys_marks_both_and_tells_which)
{
    SetupBench bench;
    bench.give(1, 0, Modifier::Command, 1, "S");
    bench.give(7, 2, Modifier::Command | Modifier::CapsLock, 1, "S"); // posted alike
    bench.give(9, 0, Modifier::Command | Modifier::Shift, 1, "S");
    bench.give(9, 1, 0, 96, "F5");
    bench.give(9, 2, 0, 96, "F5"); // the same key twice is no other key
    bench.open();
    EXPECT_EQ(bench.button(0).marks().words(), QStringList { "⌘+S is also on U7" });
    EXPECT_EQ(bench.button(6).marks().words(), QStringList { "⌘+S is also on U1" });
    EXPECT_EQ(bench.button(8).marks().words(), QStringList());
    EXPECT_EQ(accessible(bench.button(0)).text(QAccessible::Description), "⌘+S. ⌘+S is also on U7");
    EXPECT_TRUE(KeyAdvice::toolTip(bench.button(6)).contains("⌘+S is also on U1"));
    click(bench.button(6));
    click(bench.clear(2));
    EXPECT_FALSE(bench.button(0).marks().twins.empty()) << "it is not assigned yet";
    bench.controller.assign();
    EXPECT_TRUE(bench.button(0).marks().twins.empty());
    EXPECT_TRUE(bench.button(6).marks().twins.empty());
}

TEST(KeyMarks, each_mark_is_drawn_in_its_corner)
{
    SetupBench bench;
    const QImage bare = bench.button(2).grab().toImage();
    const auto differs = [&](const KeyMarks& marks, const QRect& part) {
        bench.button(2).setMarks(marks);
        return bench.button(2).grab().toImage().copy(part) != bare.copy(part);
    };
    const QRect left(4, 4, 12, 12);
    const QRect right(62, 4, 12, 12);
    const KeyMarks unassigned { true, {} };
    const KeyMarks twin { false, { { { 0, 96 }, "F5", 0b10 } } };
    EXPECT_TRUE(differs(unassigned, left));
    EXPECT_FALSE(differs(unassigned, right));
    EXPECT_FALSE(differs(twin, left));
    EXPECT_TRUE(differs(twin, right));
}

} // namespace
} // namespace kestrel::test
