#include "platform/linux/system/XattrDocumentFiles.h"

#include "tools/stage/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <numeric>

namespace kestrel::test {

namespace {
using FinderInfo = std::array<std::uint8_t, 32>;

class DocumentFilesOnLinux : public ::testing::Test {
protected:
    DocumentFilesOnLinux()
        : file(folder.path() / "set.ZKCF")
    {
        std::ofstream { file } << "content";
    }

    std::string text() const
    {
        std::string content;
        std::getline(std::ifstream { file }, content);
        return content;
    }

    FinderInfo stored()
    {
        FinderInfo info {};
        EXPECT_EQ(
            ::getxattr(file.c_str(), "user.com.apple.FinderInfo", info.data(), info.size()), 32);
        return info;
    }
    void store(const void* bytes, std::size_t size)
    {
        ASSERT_EQ(::setxattr(file.c_str(), "user.com.apple.FinderInfo", bytes, size, 0), 0);
    }

    // The folder is in the working folder, because tmpfs may not store user files.
    stage::TemporaryFolder folder { std::filesystem::current_path() };
    std::string file;
    XattrDocumentFiles files;
};
} // namespace

TEST_F(DocumentFilesOnLinux, a_file_is_replaced_as_a_whole_and_a_failure_is_told)
{
    const std::uint8_t content[] = { 'n', 'e', 'w' };
    EXPECT_EQ(files.replace(file, content), "");
    EXPECT_EQ(text(), "new");
    EXPECT_EQ(files.replace((folder.path() / "none" / "set.ZKCF").string(), content),
        "No such file or directory");
}

TEST_F(DocumentFilesOnLinux, a_folder_in_the_place_of_the_file_stays_with_all_that_is_in_it)
{
    const auto target = folder.path() / "folder.ZKCF";
    std::filesystem::create_directory(target);
    std::ofstream(target / "inside") << "inside";
    const std::uint8_t content[] = { 'n', 'e', 'w' };
    EXPECT_EQ(files.replace(target.string(), content), "Filename refers to a directory");
    EXPECT_TRUE(std::filesystem::exists(target / "inside"));
    const auto entries = std::filesystem::directory_iterator(folder.path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 2) << "set.ZKCF and folder.ZKCF";
}

TEST_F(DocumentFilesOnLinux, codes_are_the_first_eight_bytes_big_endian)
{
    EXPECT_TRUE(files.setCodes(file, { 0x5A4B4346, 0x48564C4B })); // "ZKCF", "HVLK"
    FinderInfo expected { 'Z', 'K', 'C', 'F', 'H', 'V', 'L', 'K' };
    EXPECT_EQ(stored(), expected);
    EXPECT_EQ(files.codes(file), (FileCodes { 0x5A4B4346, 0x48564C4B }));
}

TEST_F(DocumentFilesOnLinux, the_other_bytes_are_preserved)
{
    FinderInfo info;
    std::iota(info.begin(), info.end(), std::uint8_t { 100 });
    store(info.data(), info.size());
    EXPECT_EQ(files.codes(file), (FileCodes { 0x64656667, 0x68696A6B }));
    EXPECT_TRUE(files.setCodes(file, { 1, 2 }));
    std::ranges::copy(std::array { 0, 0, 0, 1, 0, 0, 0, 2 }, info.begin());
    EXPECT_EQ(stored(), info);
}

TEST_F(DocumentFilesOnLinux, a_file_without_codes_has_none)
{
    EXPECT_EQ(files.codes(file), std::nullopt);
}

TEST_F(DocumentFilesOnLinux, an_attribute_of_another_size_is_no_codes_and_is_replaced)
{
    store("ZKCFHVLK", 8);
    EXPECT_EQ(files.codes(file), std::nullopt);
    const std::array<std::uint8_t, 40> tooLong {};
    store(tooLong.data(), tooLong.size());
    EXPECT_EQ(files.codes(file), std::nullopt);
    EXPECT_TRUE(files.setCodes(file, { 3, 4 }));
    EXPECT_EQ(files.codes(file), (FileCodes { 3, 4 }));
}

TEST_F(DocumentFilesOnLinux, a_file_that_cannot_carry_them_is_a_failure)
{
    EXPECT_FALSE(files.setCodes((folder.path() / "missing").string(), { 1, 2 }));
    EXPECT_FALSE(files.setCodes("/proc/self/comm", { 1, 2 }));
    EXPECT_EQ(files.codes("/proc/self/comm"), std::nullopt);
}

} // namespace kestrel::test
