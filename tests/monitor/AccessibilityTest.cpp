#include "common/AccessibilityListener.h"
#include "tests/monitor/MonitorBench.h"
#include "tests/support/AccessibleTree.h"

#include <QScopeGuard>

#include <gmock/gmock.h>

namespace kestrel::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

// The open window as assistive technology sees it, with one event of each kind that matters.
struct AccessibleBench : MonitorBench {
    AccessibleBench()
    {
        link(Kind::LinkOpened, "ZENTA, port 5");
        beat();
        clock.advance(1010ms);
        beat();
        press(6, Outcome::OtherInFront, "Finder");
        window.show();
    }

    void collect(QAccessibleInterface& parent, std::vector<QAccessibleInterface*>& found)
    {
        for (QAccessibleInterface* const child : children(parent)) {
            if (child->state().invisible)
                continue;
            found.push_back(child);
            if (child->role() != QAccessible::Table)
                collect(*child, found);
        }
    }
    [[nodiscard]] std::vector<QAccessibleInterface*> parts()
    {
        std::vector<QAccessibleInterface*> found;
        collect(accessible(window), found);
        return found;
    }
    [[nodiscard]] QAccessibleInterface& named(const QString& name)
    {
        for (QAccessibleInterface* const part : parts()) {
            if (part->text(QAccessible::Name) == name)
                return *part;
        }
        throw std::logic_error("nothing is named " + name.toStdString());
    }
};

TEST(MonitorAccessibility, the_window_has_its_name)
{
    AccessibleBench bench;
    EXPECT_EQ(accessible(bench.window).role(), QAccessible::Window);
    EXPECT_EQ(accessible(bench.window).text(QAccessible::Name), "Activity");
}

TEST(MonitorAccessibility, each_figure_has_a_name_and_a_value)
{
    AccessibleBench bench;
    for (const auto& [name, value] : { std::pair { "Beats: 2", "2" }, { "Missed: 0", "0" },
             { "Answers: 2", "2" }, { "Link built: 1", "1" }, { "Typed: 0", "0" },
             { "Kept back: 1", "1" }, { "Losses: 0", "0" } }) {
        EXPECT_EQ(bench.named(name).role(), QAccessible::StaticText);
        EXPECT_EQ(bench.named(name).text(QAccessible::Value), value);
    }
    EXPECT_EQ(bench.named("Jitter of the beat: 10 ms").role(), QAccessible::Chart);
    EXPECT_EQ(bench.named("Jitter of the beat: 10 ms").text(QAccessible::Value), "10 ms");
}

TEST(MonitorAccessibility, every_button_has_a_name_of_its_own_and_can_have_the_focus)
{
    AccessibleBench bench;
    activate(bench.window);
    std::set<std::string> names;
    for (auto* const button : bench.window.findChildren<MonitorButton*>()) {
        if (!button->isVisible())
            continue;
        QAccessibleInterface& part = accessible(*button);
        EXPECT_TRUE(names.insert(part.text(QAccessible::Name).toStdString()).second);
        EXPECT_EQ(part.state().checkable, button->isCheckable());
        giveFocus(part);
        EXPECT_TRUE(button->hasFocus()) << part.text(QAccessible::Name).toStdString();
    }
    EXPECT_EQ(names.size(), 9U);
    EXPECT_THAT(names, Not(Contains("")));
}

TEST(MonitorAccessibility, a_filter_can_be_switched_without_a_mouse)
{
    AccessibleBench bench;
    QAccessibleInterface& filter = bench.named("Show heartbeats");
    EXPECT_TRUE(filter.state().checked);
    filter.actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(filter.state().checked);
    EXPECT_THAT(bench.shown(), ElementsAre("Link opened: ZENTA, port 5", "Key 6 pressed"));
}

TEST(MonitorAccessibility, the_list_is_a_table_whose_cells_say_what_they_show)
{
    AccessibleBench bench;
    QAccessibleInterface& list = bench.named("Events");
    EXPECT_EQ(list.role(), QAccessible::Table);
    QAccessibleTableInterface& table = *list.tableInterface();
    EXPECT_EQ(table.rowCount(), 4);
    EXPECT_EQ(table.columnCount(), 4);
    EXPECT_EQ(table.columnDescription(2), "What became of it");
    EXPECT_EQ(table.cellAt(3, 1)->text(QAccessible::Name), "Key 6 pressed");
    EXPECT_EQ(
        table.cellAt(3, 2)->text(QAccessible::Name), "nothing: Finder is in front, not Pro Tools");
}

TEST(MonitorAccessibility, what_is_wrong_is_announced_once)
{
    AccessibleBench bench;
    std::vector<std::string> alerts;
    AccessibilityListener& listener = AccessibilityListener::shared();
    const auto restore
        = qScopeGuard([before = listener] { AccessibilityListener::shared() = before; });
    listener.isActive = [] { return true; };
    listener.tell = [&alerts](QAccessibleEvent* event) {
        EXPECT_EQ(event->type(), QAccessible::Alert);
        alerts.push_back(event->accessibleInterface()->text(QAccessible::Name).toStdString());
    };
    bench.link(ActivityEvent::Kind::ConsoleSilent);
    bench.window.refresh();
    bench.window.refresh();
    EXPECT_THAT(
        alerts, ElementsAre("The console has stopped sending. Check its cable and its power."));
}

} // namespace
} // namespace kestrel::test
