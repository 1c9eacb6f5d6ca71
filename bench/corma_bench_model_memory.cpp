// Memory of a loaded model beside the size of its files, each case measured in a process of its
// own.

#include "bench_table.h"
#include "benchmark_run.h"
#include "model_family.h"
#include "process_memory.h"
#include "sample_files.h"
#include "settings/RubriekenArray.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

namespace corma::bench {

namespace {

constexpr std::array<std::size_t, 3> kSizes = {1'000, 10'000, 100'000};
constexpr std::array<std::size_t, 2> kCategories = {10, 1'000};
constexpr std::size_t kAimedSize = 100'000;
constexpr double kMostOfFiles = 6; // aim
constexpr double kKilobyte = 1000;

// The measuring process: what its libraries set up once was set up for a small model.
int measure(const std::string& folder, const std::string& warmUp, std::size_t categories)
{
    require(RubriekenArray(namesIn(warmUp)).size() == 2, "categories");
    const FileNameSet names = namesIn(folder);
    forgetPeak(); // that of setting up the process is not ours
    const double residentBefore = residentBytes();
    const double heapBefore = heapInUse();
    const RubriekenArray model(names);
    require(model.size() == categories + 1, "categories");
    std::printf("%.0f %.0f\n", heapInUse() - heapBefore, peakBytes() - residentBefore);
    return EXIT_SUCCESS;
}

void addRows(std::vector<Row>& rows, const ModelFamily& family,
             const std::vector<std::string>& folders)
{
    const auto numbers
        = numbersFromNewProcess({folders[0], folders[1], std::to_string(family.categories)}, 2);
    const double size = static_cast<double>(family.bytes) / kKilobyte;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        Row row {i == 0 ? "heap in use, loaded" : "peak growth",
                 family.form(),
                 family.settings,
                 numbers[i] / kKilobyte,
                 size,
                 {}};
        if (family.settings == kAimedSize) {
            row.aim = kMostOfFiles * size;
        }
        rows.push_back(row);
    }
}

int run()
{
    const SampleFolder folder;
    const std::string warmUp = folder.newFolder();
    makeFamily(warmUp, 1, 1);
    std::vector<Row> rows;
    for (const std::size_t categories : kCategories) {
        for (const std::size_t settings : kSizes) {
            const std::string ours = folder.newFolder();
            addRows(rows, makeFamily(ours, settings, categories), {ours, warmUp});
        }
    }
    printTable(rows, "kB");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

// Without arguments it measures all cases; with the folders of one and of a small
// one, and its number of categories, that.
int main(int argc, char** argv)
{
    try {
        if (argc == 4) {
            return corma::bench::measure(argv[1], argv[2], std::stoul(argv[3]));
        }
        return corma::bench::run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "corma_bench_model_memory: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
