#include "archive/KeyedArchive.h"
#include "tests/sets/GraphText.h"
#include "tests/sets/RandomSet.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kestrel::test {
namespace {

// KESTREL_SETS=100000 makes each of these tests try so many sets.
int numberOfSets()
{
    const char* const number = std::getenv("KESTREL_SETS");
    return number ? std::atoi(number) : 10'000;
}

TEST(SetTextRoundTrip, the_archive_of_a_text_is_the_archive_that_was_written_as_text)
{
    RandomSet sets(1, RandomSet::Strings::AsInArchives);
    for (int i = 0; i < numberOfSets(); ++i) {
        const Bytes written = KeyedArchive::archivedData(sets.next());
        const ArchiveValue set = KeyedArchive::unarchivedRoot(written);
        const QByteArray text = SetText::text(set.object());
        const ArchiveValue again = SetText::fromText(text);
        ASSERT_EQ(graphText(again), graphText(set)) << "set " << i << '\n' << text.constData();
        ASSERT_EQ(KeyedArchive::archivedData(again), KeyedArchive::archivedData(set))
            << "set " << i << '\n'
            << text.constData();
    }
}

TEST(SetTextRoundTrip, a_set_in_memory_is_the_one_that_was_written_as_text)
{
    RandomSet sets(2, RandomSet::Strings::WithUnpairedSurrogates);
    for (int i = 0; i < numberOfSets(); ++i) {
        const SetText::Root set = sets.next();
        const QByteArray text = SetText::text(set);
        const SetText::Root again = SetText::fromText(text);
        ASSERT_EQ(graphText(again), graphText(set)) << "set " << i << '\n' << text.constData();
        ASSERT_EQ(SetText::text(again), text);
    }
}

} // namespace
} // namespace kestrel::test
