#include "platform/macos/FoundationDocumentFiles.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <string_view>

namespace kestrel::test {
namespace {

class FoundationDocumentFilesTest : public testing::Test {
protected:
    FoundationDocumentFilesTest() { close(mkstemp(path.data())); }
    ~FoundationDocumentFilesTest() override { unlink(path.c_str()); }

    std::string replace(const std::string& name, std::string_view content)
    {
        return files.replace(
            name, { reinterpret_cast<const std::uint8_t*>(content.data()), content.size() });
    }
    static std::string contentOf(const std::string& name)
    {
        std::string content;
        std::getline(std::ifstream(name), content);
        return content;
    }

    std::string path = testing::TempDir() + "kestrel.XXXXXX";
    FoundationDocumentFiles files;
};

TEST_F(FoundationDocumentFilesTest, writes_a_new_file_and_replaces_an_old_one)
{
    EXPECT_EQ(replace(path, "first, which is longer"), "");
    EXPECT_EQ(contentOf(path), "first, which is longer");
    EXPECT_EQ(replace(path, "2"), "");
    EXPECT_EQ(contentOf(path), "2");
    unlink(path.c_str());
    EXPECT_EQ(replace(path, "new"), "");
    EXPECT_EQ(contentOf(path), "new");
}

TEST_F(FoundationDocumentFilesTest, a_link_stays_one_and_its_file_is_replaced)
{
    const std::string link = path + ".link";
    std::filesystem::create_symlink(path, link);
    EXPECT_EQ(replace(link, "new"), "");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(contentOf(path), "new");
    unlink(link.c_str());
}

TEST_F(FoundationDocumentFilesTest, a_file_marked_read_only_is_not_replaced)
{
    ASSERT_EQ(replace(path, "old"), "");
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    EXPECT_EQ(replace(path, "new"), "Permission denied");
    EXPECT_EQ(contentOf(path), "old");
}

TEST_F(FoundationDocumentFilesTest, a_folder_in_the_place_of_the_file_stays_with_all_that_is_in_it)
{
    for (const std::string& folder : { path + ".folder", path + ".rtfd" }) { // also a package
        std::filesystem::create_directory(folder);
        std::ofstream(folder + "/inside") << "inside";
        EXPECT_EQ(replace(folder, "new"), "Is a directory");
        EXPECT_EQ(contentOf(folder + "/inside"), "inside");
        std::filesystem::remove_all(folder);
    }
}

TEST_F(FoundationDocumentFilesTest, a_failure_says_why_and_leaves_no_other_file)
{
    EXPECT_NE(replace(path + ".missing/set.ZKCF", "new"), "");
    EXPECT_NE(replace("", "new"), "");
    EXPECT_FALSE(std::filesystem::exists(path + ".missing"));
}

TEST_F(FoundationDocumentFilesTest, a_new_file_has_no_codes)
{
    EXPECT_EQ(files.codes(path), std::nullopt);
}

TEST_F(FoundationDocumentFilesTest, codes_come_back_as_they_were_set)
{
    const FileCodes codes { .type = 0x5A4B4346, .creator = 0x4B737472 };
    ASSERT_TRUE(files.setCodes(path, codes));
    EXPECT_EQ(files.codes(path), codes);
}

TEST_F(FoundationDocumentFilesTest, a_file_that_is_not_there_takes_no_codes)
{
    EXPECT_FALSE(files.setCodes(path + ".missing", { .type = 1, .creator = 2 }));
    EXPECT_EQ(files.codes(path + ".missing"), std::nullopt);
}

} // namespace
} // namespace kestrel::test
