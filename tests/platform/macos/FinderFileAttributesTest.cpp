#include "platform/macos/FinderFileAttributes.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace kestrel::test {
namespace {

class FinderFileAttributesTest : public testing::Test {
protected:
    FinderFileAttributesTest() { close(mkstemp(path.data())); }
    ~FinderFileAttributesTest() override { unlink(path.c_str()); }

    std::string path = testing::TempDir() + "kestrel.XXXXXX";
    FinderFileAttributes attributes;
};

TEST_F(FinderFileAttributesTest, a_new_file_has_no_codes)
{
    EXPECT_EQ(attributes.codes(path), std::nullopt);
}

TEST_F(FinderFileAttributesTest, codes_come_back_as_they_were_set)
{
    const FileCodes codes { .type = 0x5A4B4346, .creator = 0x4B737472 };
    ASSERT_TRUE(attributes.setCodes(path, codes));
    EXPECT_EQ(attributes.codes(path), codes);
}

TEST_F(FinderFileAttributesTest, a_file_that_is_not_there_takes_no_codes)
{
    EXPECT_FALSE(attributes.setCodes(path + ".missing", { .type = 1, .creator = 2 }));
    EXPECT_EQ(attributes.codes(path + ".missing"), std::nullopt);
}

} // namespace
} // namespace kestrel::test
