// Times of loading models, beside reading the same files and finding their line ends: in processes
// that do nothing else, and again and again in one process.

#include "bench_table.h"
#include "benchmark_run.h"
#include "model_family.h"
#include "platform/platform.h"
#include "process_memory.h"
#include "sample_files.h"
#include "settings/RubriekenArray.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace corma::bench {

namespace {

constexpr std::array<std::size_t, 3> kSizes = {1'000, 10'000, 100'000};
constexpr std::array<std::size_t, 2> kCategories = {10, 1'000};

constexpr const char* kFirst = "first load of a process";
constexpr const char* kGrowth = "first load, beside that of a tenth";
constexpr const char* kAgain = "load again";
constexpr const char* kFloorAgain = "floor: read, find line ends, again";

// The aims, at the largest size.
constexpr std::size_t kAimedSize = 100'000;
constexpr double kMostOfFloor = 8;
constexpr double kMostGrowth = 12;

constexpr int kProcesses = 9; // for each first time
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

std::size_t lineEndsOf(const std::vector<std::string>& paths)
{
    std::size_t count = 0;
    for (const std::string& path : paths) {
        const auto content = platform::readFile(path);
        require(content.has_value(), "read");
        count += lineEnds(content->view());
    }
    return count;
}

void readAndFindLineEnds(benchmark::State& state, const std::vector<std::string>& paths)
{
    for (auto _ : state) {
        require(lineEndsOf(paths) != 0, "line ends");
    }
}

// The processor time that a function takes, in ns.
template<class Work> double timeOf(Work work)
{
    const auto now = [] {
        timespec time {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
    };
    const double start = now();
    work();
    return now() - start;
}

// The measuring process for first times.
int measure(const std::string& what, const std::string& folder)
{
    const FileNameSet names = namesIn(folder);
    const std::vector<std::string> paths = pathsIn(folder);
    std::unique_ptr<RubriekenArray> model;
    const double time = what == kFirst
        ? timeOf([&] { model = std::make_unique<RubriekenArray>(names); })
        : timeOf([&] { require(lineEndsOf(paths) != 0, "line ends"); });
    require(what != kFirst || !model->empty(), "load");
    std::printf("%.0f\n", time);
    return EXIT_SUCCESS;
}

struct FirstTimes
{
    double load;
    double floor;
};

// Medians, of processes in turn.
FirstTimes firstTimesOf(const std::string& folder)
{
    std::vector<double> loads;
    std::vector<double> floors;
    for (int i = 0; i < kProcesses; ++i) {
        loads.push_back(numbersFromNewProcess({kFirst, folder}, 1).front());
        floors.push_back(numbersFromNewProcess({"floor", folder}, 1).front());
    }
    const auto median = [](std::vector<double>& times) {
        const auto middle = times.begin() + kProcesses / 2;
        std::nth_element(times.begin(), middle, times.end());
        return *middle;
    };
    return {median(loads), median(floors)};
}

struct Measured
{
    ModelFamily family;
    std::string folder;
    FirstTimes first;
};

void addFirstRows(std::vector<Row>& rows, const Measured& one, const std::vector<Measured>& all)
{
    const ModelFamily& family = one.family;
    Row first {kFirst,
               family.form(),
               family.settings,
               one.first.load / kMicrosecond,
               one.first.floor / kMicrosecond,
               {}};
    const bool isAimed = family.settings == kAimedSize;
    if (isAimed) {
        first.aim = kMostOfFloor * *first.floor;
    }
    rows.push_back(first);
    for (const Measured& other : all) {
        if (other.family.categories == family.categories
            && other.family.settings * 10 == family.settings) {
            Row growth {kGrowth,
                        family.form(),
                        family.settings,
                        first.measured,
                        other.first.load / kMicrosecond,
                        {}};
            if (isAimed) {
                growth.aim = kMostGrowth * *growth.floor;
            }
            rows.push_back(growth);
        }
    }
}

void addRowAgain(std::vector<Row>& rows, const Medians& medians, const ModelFamily& family)
{
    const auto loaded = medians.of(kAgain, family.form(), family.settings);
    const auto floor = medians.of(kFloorAgain, family.form(), family.settings);
    if (loaded && floor) {
        rows.push_back({kAgain,
                        family.form(),
                        family.settings,
                        *loaded / kMicrosecond,
                        *floor / kMicrosecond,
                        {}});
    }
}

int run(int argc, char** argv)
{
    if (!initialize(argc, argv)) {
        return EXIT_FAILURE;
    }
    const SampleFolder folder;
    std::vector<Measured> all;
    for (const std::size_t categories : kCategories) {
        for (const std::size_t settings : kSizes) {
            const std::string ours = folder.newFolder();
            const ModelFamily family = makeFamily(ours, settings, categories);
            all.push_back({family, ours, firstTimesOf(ours)});
        }
    }
    for (const auto& [family, ours, first] : all) {
        benchmark::RegisterBenchmark(nameOf(kAgain, family.form(), family.settings).c_str(), load,
                                     family);
        benchmark::RegisterBenchmark(nameOf(kFloorAgain, family.form(), family.settings).c_str(),
                                     readAndFindLineEnds, pathsIn(ours));
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    std::vector<Row> rows;
    for (const Measured& one : all) {
        addFirstRows(rows, one, all);
        addRowAgain(rows, medians, one.family);
    }
    printTable(rows, "us");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

// With the name of a case and a folder it measures that once; otherwise it measures all.
int main(int argc, char** argv)
{
    const auto run = [](int count, char** words) {
        return count == 3 && words[1][0] != '-' ? corma::bench::measure(words[1], words[2])
                                                : corma::bench::run(count, words);
    };
    return corma::bench::runProgram("corma_bench_model", run, argc, argv);
}
