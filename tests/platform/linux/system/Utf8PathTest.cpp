#include "platform/Utf8Path.h"

#include "tools/stage/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace kestrel::test {
namespace {

TEST(Utf8Path, leads_to_a_file_whose_name_is_in_another_encoding)
{
    const stage::TemporaryFolder folder;
    const auto path = folder.path() / "\xE4";
    EXPECT_FALSE(utf8PathTo(path.c_str())) << "there is no such file";
    std::ofstream(path) << "content";
    const auto other = utf8PathTo(path.c_str());
    ASSERT_TRUE(other);
    std::string content;
    std::ifstream(*other) >> content;
    EXPECT_EQ(content, "content");
}

} // namespace
} // namespace kestrel::test
