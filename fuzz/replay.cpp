// Runs a fuzz target over the files of the folders that are given, where there is no libFuzzer.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void replay(const std::filesystem::path& path)
{
    std::printf("%s\n", path.filename().c_str());
    std::fflush(stdout); // so that the last name is the one that failed
    std::ifstream in(path, std::ios::binary);
    const std::string bytes {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& file : std::filesystem::directory_iterator(argv[i])) {
            replay(file.path());
            ++count;
        }
    }
    std::printf("%d inputs\n", count);
    return count == 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
