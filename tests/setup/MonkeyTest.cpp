#include "tests/setup/SetupBench.h"

#include <QCoreApplication>
#include <QTest>

#include <random>

namespace kestrel::test {
namespace {

constexpr int Events = 100'000;

// Presses, types and clicks at random. The sequence is the same in each run.
class Monkey {
public:
    explicit Monkey(SetupBench& bench)
        : m_bench(bench)
    {
    }

    void act()
    {
        switch (pick(14)) {
        case 0:
            return click(m_bench.button(pick(12)));
        case 1:
            return doubleClick(m_bench.button(pick(12)));
        case 2:
            return clickIfShown(m_bench.field(pick(4)));
        case 3:
            return clickIfShown(m_bench.clear(pick(4)));
        case 4:
            return m_bench.controller.assign();
        case 5:
            return press(*m_bench.controller.window(), Qt::LeftButton, { 10, 440 });
        case 6:
            return closeSomehow();
        case 7:
            return typeIntoBox();
        default:
            return typeIntoField();
        }
    }

    bool pressedOK = false;

private:
    int pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

    static void clickIfShown(QWidget& widget)
    {
        if (!widget.isHidden())
            click(widget);
    }
    void typeIntoField()
    {
        const KeyCode codes[] { 0, 1, 36, 48, 53, 96, 97, 99, 120, 122, 64, 200, 121 };
        const Key key { .keyCode = codes[pick(13)],
            .flags = static_cast<ModifierFlags>(pick(32)) << 16,
            .characters = pick(3) ? "x" : "",
            .isARepeat = pick(2) == 1 };
        if (MyShortcutField& field = m_bench.field(pick(4)); !field.isHidden())
            press(field, key);
    }
    void typeIntoBox()
    {
        for (int i = 0; i < 12; ++i) {
            RenameBox* box = m_bench.button(i).editBox();
            if (!box)
                continue;
            const Key keys[] { Keys::Return, Keys::Escape, with(Modifier::Command, Keys::A),
                Keys::A, { .flags = Modifier::Command, .characters = "z" } };
            press(*box, keys[pick(5)]);
            return;
        }
    }
    void closeSomehow()
    {
        switch (pick(6)) {
        case 0:
            pressedOK = true;
            m_bench.controller.ok();
            break;
        case 1:
            m_bench.controller.cancel();
            break;
        case 2:
            m_bench.controller.window()->close();
            break;
        default:
            return;
        }
        m_bench.open();
    }

    SetupBench& m_bench;
    std::mt19937 m_random { 20'230 }; // an arbitrary seed
};

int selectedButtons(const SetupBench& bench)
{
    int count = 0;
    for (int i = 0; i < 12; ++i)
        count += bench.button(i).state() == UserAssignableButton::State::On ? 1 : 0;
    return count;
}

int fieldsWithFunctionKeys(const SetupBench& bench)
{
    int count = 0;
    for (int i = 0; i < 4; ++i)
        count += bench.field(i).isFncKey() ? 1 : 0;
    return count;
}

bool everyEntryIsWhole(const SetupBench& bench)
{
    for (int number = 1; number <= 12; ++number) {
        const ButtonEntry entry = bench.controller.myShortcutArray()->value(number).array();
        if (entry->size() != 16 || bench.button(number - 1).shortcutArray() != entry)
            return false;
    }
    return true;
}

TEST(Monkey, a_hundred_thousand_events_break_no_rule)
{
    SetupBench bench;
    bench.open();
    activate(*bench.controller.window());
    bench.controller.window()->setUpdatesEnabled(false); // painted now and then, below
    Monkey monkey(bench);
    UserAssignFile::Bytes shortcuts = bench.live->getData();
    UserAssignFile::Bytes titles = bench.live->getTitleData();
    for (int i = 0; i < Events; ++i) {
        monkey.act();
        ASSERT_EQ(selectedButtons(bench), 1) << i;
        ASSERT_LE(fieldsWithFunctionKeys(bench), 1) << i;
        if (i % 64 != 0 && !monkey.pressedOK)
            continue;
        ASSERT_TRUE(everyEntryIsWhole(bench)) << i;
        if (!monkey.pressedOK) {
            ASSERT_EQ(bench.live->getData(), shortcuts) << i;
            ASSERT_EQ(bench.live->getTitleData(), titles) << i;
        }
        monkey.pressedOK = false;
        shortcuts = bench.live->getData();
        titles = bench.live->getTitleData();
        bench.controller.window()->grab();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace
} // namespace kestrel::test
