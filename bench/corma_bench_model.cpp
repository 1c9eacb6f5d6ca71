// Times of loading models, beside reading the same files and finding their line ends.

#include "bench_table.h"
#include "benchmark_run.h"
#include "model_family.h"
#include "platform/platform.h"
#include "sample_files.h"
#include "settings/RubriekenArray.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace corma::bench {

namespace {

constexpr std::array<std::size_t, 3> kSizes = {1'000, 10'000, 100'000};
constexpr std::array<std::size_t, 2> kCategories = {10, 1'000};

constexpr const char* kLoad = "load";
constexpr const char* kFloor = "floor: read, find line ends";
constexpr const char* kGrowth = "load, beside that of a tenth";

// The aims, at the largest size.
constexpr std::size_t kAimedSize = 100'000;
constexpr double kMostOfFloor = 8;
constexpr double kMostGrowth = 12;

constexpr double kMicrosecond = 1000; // ns

void load(benchmark::State& state, const ModelFamily& family)
{
    for (auto _ : state) {
        auto model = std::make_unique<RubriekenArray>(family.names);
        require(model->size() == family.categories + 1, "categories");
        state.PauseTiming(); // letting go of it is no part of the load
        model.reset();
        state.ResumeTiming();
    }
}

std::size_t lineEnds(std::string_view text)
{
    std::size_t count = 0;
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at < end; ++at) {
        at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        if (at == nullptr) {
            break;
        }
        ++count;
    }
    return count;
}

void readAndFindLineEnds(benchmark::State& state, const ModelFamily& family)
{
    for (auto _ : state) {
        std::size_t count = 0;
        for (const std::string& path : family.paths) {
            const auto content = platform::readFile(path);
            require(content.has_value(), "read");
            count += lineEnds(content->view());
        }
        require(count > family.settings, "line ends");
    }
}

void addRows(std::vector<Row>& rows, const Medians& medians, const ModelFamily& family)
{
    const auto loaded = medians.of(kLoad, family.form(), family.settings);
    const auto floor = medians.of(kFloor, family.form(), family.settings);
    if (!loaded || !floor) {
        return;
    }
    Row row {kLoad, family.form(), family.settings, *loaded / kMicrosecond, *floor / kMicrosecond,
             {}};
    if (family.settings == kAimedSize) {
        row.aim = kMostOfFloor * *row.floor;
    }
    rows.push_back(row);
    const auto tenth = medians.of(kLoad, family.form(), family.settings / 10);
    if (tenth) {
        Row growth {kGrowth,      family.form(),         family.settings,
                    row.measured, *tenth / kMicrosecond, {}};
        if (family.settings == kAimedSize) {
            growth.aim = kMostGrowth * *growth.floor;
        }
        rows.push_back(growth);
    }
}

int run(int argc, char** argv)
{
    if (!initialize(argc, argv)) {
        return EXIT_FAILURE;
    }
    const SampleFolder folder;
    std::vector<ModelFamily> families;
    for (const std::size_t categories : kCategories) {
        for (const std::size_t settings : kSizes) {
            families.push_back(makeFamily(folder.newFolder(), settings, categories));
        }
    }
    for (const ModelFamily& family : families) {
        benchmark::RegisterBenchmark(nameOf(kLoad, family.form(), family.settings).c_str(), load,
                                     family);
        benchmark::RegisterBenchmark(nameOf(kFloor, family.form(), family.settings).c_str(),
                                     readAndFindLineEnds, family);
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    std::vector<Row> rows;
    for (const ModelFamily& family : families) {
        addRows(rows, medians, family);
    }
    printTable(rows, "us");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

int main(int argc, char** argv)
{
    try {
        return corma::bench::run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "corma_bench_model: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
