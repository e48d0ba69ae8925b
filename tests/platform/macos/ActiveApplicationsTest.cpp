#include "platform/macos/ActiveApplications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrel::test {
namespace {

using testing::ElementsAre;

struct Application {
    const char* name;
    bool isActive;
};

using Names = std::vector<std::string>;

struct Visit {
    Names visited;
    Names asked; // for their names
};

Visit visit(const std::vector<Application>& applications, const std::string& last = "none")
{
    Visit result;
    visitActive(
        applications,
        [&](std::string_view name) {
            result.visited.emplace_back(name);
            return name != last;
        },
        [](const Application& each) { return each.isActive; },
        [&](const Application& each) {
            result.asked.emplace_back(each.name ? each.name : "nameless");
            return each.name;
        });
    return result;
}

TEST(ActiveApplications, are_visited_in_order_and_the_others_are_not_asked_for_their_names)
{
    const Visit result = visit({ { "Finder", false }, { "Pro Tools", true }, { "Notes", true } });
    EXPECT_THAT(result.visited, ElementsAre("Pro Tools", "Notes"));
    EXPECT_THAT(result.asked, ElementsAre("Pro Tools", "Notes"));
}

TEST(ActiveApplications, are_visited_until_the_visitor_stops)
{
    EXPECT_THAT(visit({ { "Pro Tools", true }, { "Notes", true } }, "Pro Tools").asked,
        ElementsAre("Pro Tools"));
}

TEST(ActiveApplications, without_a_name_are_visited_with_an_empty_one)
{
    EXPECT_THAT(visit({ { nullptr, true }, { "Notes", true } }).visited, ElementsAre("", "Notes"));
}

} // namespace
} // namespace kestrel::test
