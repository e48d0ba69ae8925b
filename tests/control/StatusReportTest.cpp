#include "control/StatusReport.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

StatusReport fullReport()
{
    StatusReport report;
    report.version = "1.2.3";
    report.process = 4711;
    report.link = StatusReport::Online;
    report.onlineSince = QDateTime({ 2026, 11, 22 }, { 9, 30, 1, 250 }, Qt::UTC);
    report.beats = 12;
    report.missedBeats = 1;
    report.consolePairs = 5;
    report.workstationRuns = true;
    report.front = "Pro Tools";
    report.keysSet = 3;
    report.keysTyped = 7;
    report.keysKeptBack = 2;
    report.mayPostKeys = true;
    report.notices = QStringList { "Ein Hinweis: ü", "two" };
    return report;
}

TEST(StatusReport, is_an_object_of_JSON_on_one_line)
{
    EXPECT_EQ(fullReport().toJson(),
        "{\"beats\":12,\"consolePairs\":5,\"front\":\"Pro "
        "Tools\",\"keysKeptBack\":2,"
        "\"keysSet\":3,\"keysTyped\":7,\"link\":\"online\",\"mayPostKeys\":true,\"missedBeats\":1,"
        "\"notices\":[\"Ein Hinweis: ü\",\"two\"],\"onlineSince\":\"2026-11-22T09:30:01.250Z\","
        "\"process\":4711,\"version\":\"1.2.3\",\"workstationRuns\":true}");
}

TEST(StatusReport, is_read_as_it_was_written)
{
    EXPECT_EQ(StatusReport::fromJson(fullReport().toJson()), fullReport());
    EXPECT_EQ(StatusReport::fromJson(StatusReport().toJson()), StatusReport());
}

TEST(StatusReport, of_a_later_version_may_say_more)
{
    QByteArray text = fullReport().toJson();
    text.replace("{\"beats\"", "{\"news\":[1],\"beats\"");
    EXPECT_EQ(StatusReport::fromJson(text), fullReport());
}

TEST(StatusReport, with_a_member_that_is_missing_or_of_another_type_is_refused)
{
    const auto changed = [](const char* before, const char* after) {
        QByteArray text = fullReport().toJson();
        EXPECT_TRUE(text.contains(before));
        return StatusReport::fromJson(text.replace(before, after));
    };
    EXPECT_FALSE(changed("\"beats\":12,", ""));
    EXPECT_FALSE(changed("\"beats\":12", "\"beats\":\"12\""));
    EXPECT_FALSE(changed("\"beats\":12", "\"beats\":1.5"));
    EXPECT_FALSE(changed("\"beats\":12", "\"beats\":1e300"));
    EXPECT_FALSE(changed("\"version\":\"1.2.3\"", "\"version\":1"));
    EXPECT_FALSE(changed("\"two\"", "2"));
    EXPECT_FALSE(changed("2026-11-22T", "yesterday"));
    EXPECT_FALSE(changed("\"mayPostKeys\":true", "\"mayPostKeys\":null"));
    EXPECT_FALSE(StatusReport::fromJson("[]"));
    EXPECT_FALSE(StatusReport::fromJson(""));
}

} // namespace
} // namespace kestrel::test
