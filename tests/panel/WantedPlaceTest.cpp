#include "panel/WantedPlace.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
const QRect Desk(1300, 900, 782, 220);
const QRect Small(0, 24, 632, 178);
} // namespace

TEST(WantedPlace, is_unknown_until_a_place_is_found_or_wanted)
{
    WantedPlace place;
    EXPECT_FALSE(place.isKnown());
    place.foundAt(Desk);
    EXPECT_TRUE(place.isKnown());
    EXPECT_EQ(place.place(), Desk);
}

TEST(WantedPlace, stays_while_the_window_has_another_for_want_of_room)
{
    WantedPlace place;
    place.want(Desk);
    place.give(Small);
    EXPECT_EQ(place.place(), Desk);
    place.foundAt(Small);
    EXPECT_EQ(place.place(), Desk);
}

TEST(WantedPlace, of_a_window_that_the_user_moved_has_the_size_that_was_wanted_before)
{
    WantedPlace place;
    place.want(Desk);
    place.give(Small);
    place.foundAt({ QPoint(4, 50), Small.size() });
    EXPECT_EQ(place.place(), QRect(QPoint(4, 50), Desk.size()));
}

TEST(WantedPlace, of_a_window_that_the_user_resized_is_where_it_was_wanted_before)
{
    WantedPlace place;
    place.want(Desk);
    place.give(Small);
    place.foundAt({ Small.topLeft(), QSize(391, 110) });
    EXPECT_EQ(place.place(), QRect(Desk.topLeft(), QSize(391, 110)));
}

TEST(WantedPlace, is_what_the_user_made_of_it_once_there_is_room)
{
    WantedPlace place;
    place.want(Desk);
    place.foundAt({ 10, 20, 391, 110 });
    EXPECT_EQ(place.place(), QRect(10, 20, 391, 110));
    place.foundAt(Desk);
    EXPECT_EQ(place.place(), Desk);
}

} // namespace kestrel::test
