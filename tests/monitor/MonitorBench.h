#pragma once

#include "activity/ActivityLog.h"
#include "activity/LinkHealth.h"
#include "monitor/ActivityList.h"
#include "monitor/ActivityWindow.h"
#include "monitor/HealthHeader.h"
#include "monitor/MonitorButton.h"
#include "tests/fakes/FakeSystem.h"
#include "tests/support/InterfaceTest.h"
#include "tests/support/ManualClock.h"

#include <chrono>
#include <string>
#include <vector>

namespace kestrel::test {

using namespace std::chrono_literals;

// The activity window over a log and a clock of the test's own.
class MonitorBench {
public:
    using Kind = ActivityEvent::Kind;
    using Outcome = ActivityEvent::Outcome;

    void packet(std::vector<std::uint8_t> bytes, Outcome outcome, std::string_view text = {})
    {
        ActivityEvent event(Kind::Packet, clock.now(), clock.wallTime());
        event.setPacket(bytes);
        event.setOutcome(outcome);
        event.setText(text);
        keep(event);
    }
    void link(Kind kind, std::string_view text = {})
    {
        ActivityEvent event(kind, clock.now(), clock.wallTime());
        event.setText(text);
        keep(event);
    }
    void beat() { packet({ 0x90, 0, 0 }, Outcome::Answered); }
    void press(int key, Outcome outcome, std::string_view text = {})
    {
        packet(
            { 0xB0, 0x0F, 0x40, 0x2F, static_cast<std::uint8_t>(0x40 + key - 1) }, outcome, text);
    }
    void knob(int knob, std::uint8_t value)
    {
        packet({ 0xB0, static_cast<std::uint8_t>(0x18 + knob - 1), value }, Outcome::Shown);
    }

    [[nodiscard]] MonitorButton& button(const QString& name)
    {
        for (auto* const each : window.findChildren<MonitorButton*>()) {
            if (each->accessibleName() == name || each->text() == name)
                return *each;
        }
        throw std::logic_error("no button " + name.toStdString());
    }
    // The texts of one column of the list.
    [[nodiscard]] std::vector<std::string> column(ActivityModel::Column column)
    {
        std::vector<std::string> texts;
        const QAbstractItemModel& model = *window.list().model();
        for (int row = 0; row < model.rowCount(); ++row)
            texts.push_back(model.index(row, column).data().toString().toStdString());
        return texts;
    }
    [[nodiscard]] std::vector<std::string> shown() { return column(ActivityModel::Event); }

    ManualClock clock;
    ActivityLog log;
    LinkHealth health;
    int permissionShown = 0;
    FakeDocumentFiles files;
    ActivityWindow window { { log, health, clock, files }, [this] { ++permissionShown; } };

private:
    void keep(const ActivityEvent& event)
    {
        log.record(event);
        health.note(event);
    }
};

} // namespace kestrel::test
