#include "tests/monitor/MonitorBench.h"

#include <QAbstractItemModelTester>

#include <gmock/gmock.h>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ModelBench : public MonitorBench {
public:
    ActivityModel model { log };
    QAbstractItemModelTester tester { &model,
        QAbstractItemModelTester::FailureReportingMode::Fatal };

    [[nodiscard]] std::string text(int row, ActivityModel::Column column) const
    {
        return model.index(row, column).data().toString().toStdString();
    }
};

TEST(ActivityModel, a_row_says_when_what_what_became_of_it_and_the_bytes)
{
    qputenv("TZ", "UTC");
    ModelBench bench;
    bench.clock.advance(4min + 31s + 482ms);
    bench.press(6, ActivityEvent::Outcome::Typed, "⌘S");
    bench.model.refresh();
    ASSERT_EQ(bench.model.rowCount(), 1);
    EXPECT_EQ(bench.text(0, ActivityModel::Time), "01:04:31.482");
    EXPECT_EQ(bench.text(0, ActivityModel::Event), "Key 6 pressed");
    EXPECT_EQ(bench.text(0, ActivityModel::Outcome), "typed ⌘S");
    EXPECT_EQ(bench.text(0, ActivityModel::Bytes), "B0 0F 40 2F 45");
}

TEST(ActivityModel, what_the_log_has_overwritten_is_dropped_from_the_top)
{
    ModelBench bench;
    bench.press(1, ActivityEvent::Outcome::NoShortcut);
    bench.press(2, ActivityEvent::Outcome::NoShortcut);
    EXPECT_EQ(bench.model.refresh(), 0);
    for (std::size_t i = 0; i < ActivityLog::Capacity - 1; ++i)
        bench.knob(1, 1);
    EXPECT_EQ(bench.model.eventAt(0), nullptr) << "overwritten and not yet dropped";
    EXPECT_EQ(bench.text(0, ActivityModel::Event), "");
    EXPECT_EQ(bench.model.refresh(), 1);
    EXPECT_EQ(bench.model.rowCount(), static_cast<int>(ActivityLog::Capacity));
    EXPECT_EQ(bench.text(0, ActivityModel::Event), "Key 2 pressed");
}

TEST(ActivityModel, more_events_than_the_log_holds_between_two_looks_leave_the_last_ones)
{
    ModelBench bench;
    for (std::size_t i = 0; i < 3 * ActivityLog::Capacity; ++i)
        bench.knob(1, 1);
    bench.press(3, ActivityEvent::Outcome::NoShortcut);
    bench.model.refresh();
    EXPECT_EQ(bench.model.rowCount(), static_cast<int>(ActivityLog::Capacity));
    EXPECT_EQ(bench.text(bench.model.rowCount() - 1, ActivityModel::Event), "Key 3 pressed");
}

TEST(ActivityModel, a_paused_list_takes_in_what_it_missed_once_it_goes_on)
{
    ModelBench bench;
    bench.model.setPaused(true);
    bench.beat();
    bench.model.refresh();
    EXPECT_EQ(bench.model.rowCount(), 0);
    bench.model.setPaused(false);
    bench.model.refresh();
    EXPECT_EQ(bench.model.rowCount(), 1);
}

TEST(ActivityModel, a_paused_list_shows_other_groups_of_the_same_time)
{
    ModelBench bench;
    bench.beat();
    bench.model.refresh();
    bench.model.setPaused(true);
    bench.beat();
    bench.model.setGroups(ActivityModel::Groups().set());
    EXPECT_EQ(bench.model.rowCount(), 1);
}

TEST(ActivityModel, shows_the_chosen_groups_of_old_and_new_events)
{
    ModelBench bench;
    const auto all = [&bench] {
        bench.beat();
        bench.press(1, ActivityEvent::Outcome::NoShortcut);
        bench.packet({ 0xB0, 0x0F, 0x40 }, ActivityEvent::Outcome::Awaited);
        bench.packet({ 0xB0, 0x0C, 0x1C }, ActivityEvent::Outcome::Awaited);
        bench.knob(2, 0);
        bench.link(ActivityEvent::Kind::LinkOpened, "ZENTA, port 5");
        bench.packet({ 0x80, 0, 0 }, ActivityEvent::Outcome::Ignored);
    };
    const std::vector<std::vector<std::string>> expected { { "Key 1 pressed", "Key follows" },
        { "Lamp follows", "Knob 2: dark" }, { "Heartbeat" }, { "Link opened: ZENTA, port 5" },
        { "Unknown packet" } };
    all();
    for (std::size_t group = 0; group < EventGroups; ++group) {
        bench.model.setGroups(ActivityModel::Groups().set(group));
        all();
        bench.model.refresh();
        const int rows = bench.model.rowCount();
        std::vector<std::string> last;
        for (int row = rows - static_cast<int>(expected[group].size()); row < rows; ++row)
            last.push_back(bench.text(row, ActivityModel::Event));
        EXPECT_EQ(last, expected[group]);
        EXPECT_EQ(static_cast<std::size_t>(rows), (group + 2) * expected[group].size());
    }
}

TEST(ActivityModel, clearing_leaves_the_log_as_it_is)
{
    ModelBench bench;
    bench.beat();
    bench.model.refresh();
    bench.model.clear();
    EXPECT_EQ(bench.model.rowCount(), 0);
    EXPECT_EQ(bench.log.first(), 0U);
    bench.beat();
    bench.model.refresh();
    EXPECT_EQ(bench.model.rowCount(), 1);
    bench.model.setGroups(ActivityModel::Groups().set());
    EXPECT_EQ(bench.model.rowCount(), 1) << "what was cleared stays away";
}

} // namespace
} // namespace kestrel::test
