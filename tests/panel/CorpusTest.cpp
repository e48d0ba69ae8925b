#include "fuzz/panel/PanelFeed.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace kestrel::test {

namespace {
std::vector<std::uint8_t> read(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}
} // namespace

TEST(PanelCorpus, every_message_ever_found_is_taken_as_the_protocol_says)
{
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(KESTREL_PANEL_CORPUS)) {
        EXPECT_EQ(PanelFeed().run(read(entry.path())), "") << entry.path();
        ++files;
    }
    EXPECT_GE(files, 10);
}

} // namespace kestrel::test
