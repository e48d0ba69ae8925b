#include "common/NotificationCenter.h"

#include <gtest/gtest.h>

#include <utility>

namespace kestrel::test {
namespace {

const QString Name = QStringLiteral("name");

TEST(NotificationCenter, observers_are_called_in_the_order_in_which_they_asked_before_post_returns)
{
    NotificationCenter center;
    std::vector<int> calls;
    const auto first = center.addObserver(Name, [&](const Notification&) { calls.push_back(1); });
    const auto second = center.addObserver(Name, [&](const Notification&) { calls.push_back(2); });
    center.post(Name);
    EXPECT_EQ(calls, (std::vector { 1, 2 }));
}

TEST(NotificationCenter, another_name_is_not_heard)
{
    NotificationCenter center;
    int calls = 0;
    const auto observation = center.addObserver(Name, [&](const Notification&) { ++calls; });
    center.post(QStringLiteral("Name"));
    EXPECT_EQ(calls, 0);
}

TEST(NotificationCenter, an_observer_without_an_object_hears_everybody_one_with_an_object_only_it)
{
    NotificationCenter center;
    QObject one;
    QObject other;
    std::vector<const QObject*> all;
    std::vector<const QObject*> filtered;
    const auto everybody = center.addObserver(
        Name, [&](const Notification& notification) { all.push_back(notification.object); });
    const auto onlyOne = center.addObserver(
        Name, [&](const Notification& notification) { filtered.push_back(notification.object); },
        &one);
    center.post(Name, &one);
    center.post(Name, &other);
    center.post(Name);
    EXPECT_EQ(all, (std::vector<const QObject*> { &one, &other, nullptr }));
    EXPECT_EQ(filtered, (std::vector<const QObject*> { &one }));
}

TEST(NotificationCenter, an_observation_that_ended_is_not_called_any_more)
{
    NotificationCenter center;
    int calls = 0;
    {
        const auto observation = center.addObserver(Name, [&](const Notification&) { ++calls; });
        center.post(Name);
    }
    center.post(Name);
    EXPECT_EQ(calls, 1);
}

TEST(NotificationCenter, a_handler_may_end_later_observations_and_its_own)
{
    NotificationCenter center;
    int calls = 0;
    NotificationCenter::Observation second;
    NotificationCenter::Observation first = center.addObserver(Name, [&](const Notification&) {
        ++calls;
        first = {};
        second = {};
    });
    second = center.addObserver(Name, [&](const Notification&) { calls += 100; });
    center.post(Name);
    center.post(Name);
    EXPECT_EQ(calls, 1);
}

TEST(NotificationCenter, an_observer_added_while_handling_gets_only_the_next_notification)
{
    NotificationCenter center;
    int late = 0;
    bool isAdded = false;
    NotificationCenter::Observation added;
    const auto observation = center.addObserver(Name, [&](const Notification&) {
        if (!std::exchange(isAdded, true))
            added = center.addObserver(Name, [&](const Notification&) { ++late; });
    });
    center.post(Name);
    EXPECT_EQ(late, 0);
    center.post(Name);
    EXPECT_EQ(late, 1);
}

TEST(NotificationCenter, a_handler_may_end_earlier_observations_and_begin_many_new_ones)
{
    NotificationCenter center;
    std::vector<int> calls;
    auto first = center.addObserver(Name, [&](const Notification&) { calls.push_back(1); });
    std::vector<NotificationCenter::Observation> added;
    const auto second = center.addObserver(Name, [&](const Notification&) {
        calls.push_back(2);
        first = {};
        for (int i = 0; i < 100; ++i)
            added.push_back(center.addObserver(Name, [](const Notification&) {}));
    });
    const auto third = center.addObserver(Name, [&](const Notification&) { calls.push_back(3); });
    center.post(Name);
    EXPECT_EQ(calls, (std::vector { 1, 2, 3 }));
    center.post(Name);
    EXPECT_EQ(calls, (std::vector { 1, 2, 3, 2, 3 }));
}

TEST(NotificationCenter, an_observation_may_outlive_the_centre)
{
    NotificationCenter::Observation observation;
    {
        NotificationCenter center;
        observation = center.addObserver(Name, [](const Notification&) {});
    }
    observation = {};
}

} // namespace
} // namespace kestrel::test
