#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// A target may define its own.
extern "C" [[gnu::weak]] int LLVMFuzzerInitialize(int*, char***)
{
    return 0;
}

namespace {

bool replay(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        return false;
    }
    const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), {});
    std::printf("%s\n", path.c_str());
    std::fflush(stdout); // the last line names the file that ended the program
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return true;
}

} // namespace

// Runs a target over every file of the folders given, without libFuzzer.
int main(int argc, char** argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& file : std::filesystem::directory_iterator(argv[i])) {
            if (!replay(file.path()))
                return 1;
            ++count;
        }
    }
    std::printf("%d files\n", count);
    return count > 0 ? 0 : 1;
}
