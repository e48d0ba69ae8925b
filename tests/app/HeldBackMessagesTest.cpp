#include "tests/app/AppDelegateBench.h"

#include <utility>

namespace kestrel::test {
namespace {

const Bytes press6 { 0xB0, 0x0F, 0x40, 0x2F, 0x45 };
const Bytes release6 { 0xB0, 0x0F, 0x40, 0x2F, 0x05 };

// Key 6 types ⌘S into the workstation in front, and a menu of the program is open. What is given to
// whileItCloses() happens while a key closes that menu.
class HeldBackMessages : public testing::Test {
protected:
    HeldBackMessages()
    {
        bench.receive({ 0x90, 0x00, 0x01 }); // opens the link
        bench.workspace.applications = { { "Pro Tools", true } };
        ArchiveArray& entry = *bench.delegate->myUserAssignFile()->getSwitchShortcut(6);
        entry.replace(ShortcutRecord::Modifiers, ArchiveValue(Modifier::Command));
        entry.replace(ShortcutRecord::KeyCode, ArchiveValue(1));
        entry.replace(ShortcutRecord::Text, ArchiveValue(QStringLiteral("S")));
        m_menu.addAction("About");
        QObject::connect(&m_menu, &QMenu::aboutToHide, &m_menu, [this] {
            if (const auto act = std::exchange(m_act, {}))
                act();
        });
        m_menu.popup({ 10, 10 });
        QCoreApplication::processEvents();
        EXPECT_EQ(QApplication::activePopupWidget(), &m_menu);
        static_cast<void>(bench.keyEvents.take());
    }

    void whileItCloses(std::function<void()> act) { m_act = std::move(act); }

    LaunchedBench bench;

private:
    QMenu m_menu;
    std::function<void()> m_act;
};

TEST_F(HeldBackMessages, wait_for_the_key_that_closes_the_menu_and_keep_their_order)
{
    whileItCloses([this] {
        bench.receive(release6);
        bench.receive(press6);
        EXPECT_EQ(bench.keyEvents.take(), "");
    });
    bench.receive(press6);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    const std::string first = bench.keyEvents.take();

    bench.receive(release6);
    const std::string up = bench.keyEvents.take();
    bench.receive(press6);
    const std::string down = bench.keyEvents.take();
    EXPECT_NE(up, "");
    EXPECT_NE(down, "");
    EXPECT_EQ(first, down + "; " + up + "; " + down);
}

TEST_F(HeldBackMessages, are_handled_once)
{
    whileItCloses([this] { bench.receive(release6); });
    bench.receive(press6);
    static_cast<void>(bench.keyEvents.take());
    bench.receive({ 0x90, 0x00, 0x00 });
    EXPECT_EQ(bench.keyEvents.take(), "");
}

TEST_F(HeldBackMessages, that_are_lost_let_go_of_the_key_after_it_is_pressed)
{
    whileItCloses([this] { bench.midiServices.packetsLost(); });
    bench.receive(press6);
    EXPECT_EQ(bench.keyEvents.take(), "release all; key 1 down ⌘; bare 55 up; release all");
}

} // namespace
} // namespace kestrel::test
