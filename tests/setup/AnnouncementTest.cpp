#include "common/AccessibilityListener.h"
#include "tests/setup/SetupBench.h"
#include "tests/support/AccessibleTree.h"

#include <QTest>

#include <gmock/gmock.h>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Records what assistive technology is told about keys and fields while it is switched on.
class Listener {
public:
    Listener()
        : Listener(AlwaysActive)
    {
    }
    explicit Listener(const bool& isActive)
    {
        AccessibilityListener::shared() = { [&isActive] { return isActive; },
            [this](QAccessibleEvent* event) { listen(event); } };
    }
    ~Listener() { AccessibilityListener::shared() = {}; }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    // Returns what was told until the main loop has nothing more to do.
    [[nodiscard]] std::vector<std::string> all()
    {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
        return std::exchange(m_told, {});
    }

private:
    static constexpr bool AlwaysActive = true;

    void listen(QAccessibleEvent* event)
    {
        const QAccessibleInterface* about = event->accessibleInterface();
        const std::string name = about ? about->text(QAccessible::Name).toStdString() : "nobody";
        switch (event->type()) {
        case QAccessible::NameChanged:
            m_told.push_back("name: " + name);
            break;
        case QAccessible::DescriptionChanged:
            m_told.push_back("words: " + about->text(QAccessible::Description).toStdString());
            break;
        case QAccessible::TextUpdated: {
            const auto* text = static_cast<QAccessibleTextUpdateEvent*>(event);
            m_told.push_back(name + " text: " + text->textRemoved().toStdString() + " -> "
                + text->textInserted().toStdString());
            break;
        }
        case QAccessible::ValueChanged:
            m_told.push_back(name + " value: "
                + static_cast<QAccessibleValueChangeEvent*>(event)
                      ->value()
                      .toString()
                      .toStdString());
            break;
        case QAccessible::ObjectShow:
            if (about && about->role() == QAccessible::AlertMessage)
                m_told.push_back("show: " + name);
            break;
        case QAccessible::ObjectHide:
            if (about && about->role() == QAccessible::AlertMessage)
                m_told.push_back("hide: " + name);
            break;
        case QAccessible::Alert:
            m_told.push_back("alert: " + name);
            break;
        default:
            break;
        }
    }

    std::vector<std::string> m_told;
};

const std::string Hint
    = "words: Takes any key as the shortcut, Tab, Return and Escape as well. Shift tapped "
      "twice goes on, Option or Alt tapped twice goes back to the key";

TEST(SetupAnnouncement, a_captured_shortcut_is_told_once_the_key_press_is_handled)
{
    SetupBench bench;
    bench.open();
    Listener listener;
    bench.controller.hideUserAssignEditBox(); // tells the words of all keys so far
    static_cast<void>(listener.all());
    press(bench.field(0), Keys::A);
    EXPECT_THAT(listener.all(), ElementsAre("Shortcut 1 text:  -> A", "Shortcut 1 value: A"));
    press(bench.field(0), Keys::A);
    EXPECT_THAT(listener.all(), IsEmpty());
    click(bench.clear(0));
    EXPECT_THAT(listener.all(), ElementsAre("Shortcut 1 text: A -> ", "Shortcut 1 value: "));
}

TEST(SetupAnnouncement, a_refused_key_raises_the_alert_and_the_next_one_takes_it_away)
{
    SetupBench bench;
    bench.open();
    press(bench.field(0), Keys::F3);
    Listener listener;
    press(bench.field(1), Keys::F5);
    EXPECT_THAT(listener.all(),
        ElementsAre("show: Not Available",
            "words: Not Available. A key takes only one function key, F1 to F20, and Shortcut 1 "
            "holds F3",
            "alert: Not Available"));
    press(bench.field(1), Keys::A);
    EXPECT_THAT(listener.all(),
        ElementsAre("Shortcut 2 text:  -> A", "Shortcut 2 value: A", "hide: Not Available", Hint));
}

TEST(SetupAnnouncement, a_key_tells_its_new_name_and_shortcuts)
{
    SetupBench bench;
    bench.give(1, 0, 0, 96, "F5");
    bench.open();
    Listener listener;
    bench.button(0).setNeedsDisplay();
    static_cast<void>(listener.all()); // the words so far
    bench.button(0).setUniqueName("Save");
    EXPECT_THAT(listener.all(), ElementsAre("name: User-assignable button 1, Save"));
    bench.button(0).setNeedsDisplay();
    EXPECT_THAT(listener.all(), IsEmpty());
    press(bench.field(0), Keys::A);
    static_cast<void>(listener.all());
    bench.controller.assign();
    EXPECT_THAT(listener.all(), ElementsAre("words: A"));
}

TEST(SetupAnnouncement, what_changes_back_after_a_time_without_listeners_is_told)
{
    SetupBench bench;
    bench.give(1, 0, 0, 96, "F5");
    bench.open();
    bool isActive = true;
    Listener listener(isActive);
    bench.button(0).setUniqueName("Save");
    press(bench.field(0), Keys::A);
    static_cast<void>(listener.all());
    isActive = false;
    bench.button(0).setUniqueName("Undo");
    press(bench.field(0), Keys::F3);
    isActive = true;
    bench.button(0).setUniqueName("Save");
    press(bench.field(0), Keys::A);
    EXPECT_THAT(listener.all(),
        ElementsAre("name: User-assignable button 1, Save", "words: F5", "Shortcut 1 text: F3 -> A",
            "Shortcut 1 value: A"));
}

TEST(SetupAnnouncement, nobody_is_told_while_no_assistive_technology_listens)
{
    SetupBench bench;
    bench.open();
    const bool isActive = false;
    Listener listener(isActive);
    press(bench.field(0), Keys::F3);
    press(bench.field(1), Keys::F5);
    bench.controller.assign();
    EXPECT_THAT(listener.all(), IsEmpty());
}

} // namespace
} // namespace kestrel::test
