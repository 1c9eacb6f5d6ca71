// Times of the settings store beside the times that the machine itself needs, in one run.

#include "bench_table.h"
#include "benchmark_run.h"
#include "sample_files.h"
#include <corma/host.h>
#include <corma/xx_Inifile.h>
#include <corma/xx_Var.h>

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_map>
#include <vector>

namespace corma::bench {

namespace {

using benchmark::State;

constexpr std::array<std::size_t, 4> kSizes = {100, 1'000, 10'000, 100'000};
constexpr std::string_view kPlain = "plain";
constexpr std::string_view kScrambled = "scrambled";
constexpr std::array kForms = {kPlain, kScrambled};
constexpr int kLongestValue = 500; // characters, the terminator counted

// The names of what is measured; with form and size they name a benchmark.
constexpr std::string_view kOpen = "open";
constexpr std::string_view kOneShot = "open, one lookup, close";
constexpr std::string_view kHit = "warm lookup, random hit";
constexpr std::string_view kLateHit = "warm lookup, last entry";
constexpr std::string_view kMiss = "warm lookup, random miss";
constexpr std::string_view kInt = "getInt";
constexpr std::string_view kDouble = "getDouble";
constexpr std::string_view kThree = "getDoubleArray of 3";
constexpr std::string_view kWildcard = "getWcString, one chapter";
constexpr std::string_view kFloorRead = "floor: read, find line ends";
constexpr std::string_view kFloorStat = "floor: file status";
constexpr std::string_view kFloorHit = "floor: unordered_map, hit";
constexpr std::string_view kFloorBoth = "floor: status and map hit in turn";
constexpr std::string_view kFloorMiss = "floor: unordered_map, miss";

// Idents in random order, taken one after the other and over again.
class Idents
{
public:
    explicit Idents(std::vector<std::wstring> idents)
        : m_idents(std::move(idents))
    {
        std::shuffle(m_idents.begin(), m_idents.end(), std::mt19937(7));
    }

    std::wstring& next()
    {
        m_at = m_at + 1 < m_idents.size() ? m_at + 1 : 0;
        return m_idents[m_at];
    }

private:
    std::vector<std::wstring> m_idents;
    std::size_t m_at = 0;
};

std::vector<std::wstring> identsOf(const Sample& sample)
{
    std::vector<std::wstring> idents;
    for (const Entry& entry : sample.entries) {
        idents.push_back(entry.ident);
    }
    return idents;
}

std::vector<std::wstring> identsOf(const Sample& sample, Kind kind)
{
    std::vector<std::wstring> idents;
    for (const Entry& entry : sample.entries) {
        if (entry.kind == kind) {
            idents.push_back(entry.ident);
        }
    }
    return idents;
}

// Names that stand nowhere, in chapters that are there; as long as those that do.
std::vector<std::wstring> missesOf(const Sample& sample)
{
    std::vector<std::wstring> idents = identsOf(sample);
    for (std::wstring& ident : idents) {
        ident.back() = L'~';
    }
    return idents;
}

// --- the store -----------------------------------------------------------------------------------

// A sample in one of its forms.
struct Subject
{
    const Sample* sample;
    int scrambleNumber;

    xx_Inifile open() const
    {
        return {const_cast<wchar_t*>(sample->path.c_str()), scrambleNumber, nullptr};
    }
};

void lookUp(State& state, const Subject& subject, std::vector<std::wstring> wanted, int expected)
{
    Idents idents(std::move(wanted));
    xx_Inifile file = subject.open();
    wchar_t value[kLongestValue];
    for (int i = 0; i < 3; ++i) { // so that the index is there
        require(file.getString(idents.next().data(), value, kLongestValue, 0) == expected,
                "lookup");
    }
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(file.getString(idents.next().data(), value, kLongestValue, 0));
    }
}

void timeOpen(State& state, const Subject& subject)
{
    for ([[maybe_unused]] auto step : state) {
        xx_Inifile file = subject.open();
        benchmark::DoNotOptimize(file.getFilename());
    }
}

void timeOneShot(State& state, const Subject& subject)
{
    std::wstring ident = subject.sample->entries.back().ident;
    wchar_t value[kLongestValue];
    for ([[maybe_unused]] auto step : state) {
        xx_Inifile file = subject.open();
        require(file.getString(ident.data(), value, kLongestValue, 0) == RTNORM, "one shot");
    }
}

void timeHit(State& state, const Subject& subject)
{
    lookUp(state, subject, identsOf(*subject.sample), RTNORM);
}

void timeLateHit(State& state, const Subject& subject)
{
    lookUp(state, subject, {subject.sample->entries.back().ident}, RTNORM);
}

void timeMiss(State& state, const Subject& subject)
{
    lookUp(state, subject, missesOf(*subject.sample), RTERROR);
}

template<class Get> void timeTyped(State& state, const Subject& subject, Kind kind, Get get)
{
    Idents idents(identsOf(*subject.sample, kind));
    xx_Inifile file = subject.open();
    for (int i = 0; i < 3; ++i) {
        require(get(file, idents.next().data()) == RTNORM, "typed getter");
    }
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(get(file, idents.next().data()));
    }
}

void timeInt(State& state, const Subject& subject)
{
    timeTyped(state, subject, Kind::whole, [](xx_Inifile& file, wchar_t* ident) {
        int number = 0;
        return file.getInt(ident, &number, 0);
    });
}

void timeDouble(State& state, const Subject& subject)
{
    timeTyped(state, subject, Kind::real, [](xx_Inifile& file, wchar_t* ident) {
        double number = 0;
        return file.getDouble(ident, &number, 0);
    });
}

void timeThree(State& state, const Subject& subject)
{
    timeTyped(state, subject, Kind::three, [](xx_Inifile& file, wchar_t* ident) {
        double numbers[3] = {};
        return file.getDoubleArray(ident, numbers, 3, 0);
    });
}

void timeWildcard(State& state, const Subject& subject)
{
    std::vector<std::wstring> patterns = subject.sample->chapters;
    for (std::wstring& pattern : patterns) {
        pattern += L"*";
    }
    Idents idents(std::move(patterns));
    xx_Inifile file = subject.open();
    for ([[maybe_unused]] auto step : state) {
        xx_VarArray found;
        require(file.getWcString(idents.next().data(), &found, 0, 0) == RTNORM, "wild card");
    }
}

// --- the floors ----------------------------------------------------------------------------------

// What no reader of a file can do without: its bytes in memory, and where its lines end.
std::size_t readAndFindLineEnds(const char* path)
{
    const int descriptor = ::open(path, O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    require(descriptor >= 0 && ::fstat(descriptor, &status) == 0, "cannot open");
    const auto size = static_cast<std::size_t>(status.st_size);
    const auto bytes = std::make_unique_for_overwrite<char[]>(size);
    require(::read(descriptor, bytes.get(), size) == status.st_size, "cannot read");
    ::close(descriptor);
    std::size_t lines = 0;
    const char* const end = bytes.get() + size;
    for (const char* at = bytes.get();
         (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at))))
         != nullptr;
         ++at) {
        ++lines;
    }
    return lines;
}

void timeRead(State& state, const Sample& sample)
{
    const std::string path = sample.nativePath();
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(readAndFindLineEnds(path.c_str()));
    }
}

void timeStat(State& state, const Sample& sample)
{
    const std::string path = sample.nativePath();
    struct stat status = {};
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(::stat(path.c_str(), &status));
    }
}

using Map = std::unordered_map<std::wstring, std::wstring>;

void timeMap(State& state, const Map& map, std::vector<std::wstring> keys)
{
    Idents idents(std::move(keys));
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(map.find(idents.next()));
    }
}

// What the two cost when they disturb each other, as they do in a lookup.
void timeStatAndMap(State& state, const Sample& sample, const Map& map)
{
    Idents idents(identsOf(sample));
    const std::string path = sample.nativePath();
    struct stat status = {};
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(::stat(path.c_str(), &status));
        benchmark::DoNotOptimize(map.find(idents.next()));
    }
}

Map mapOf(const Sample& sample)
{
    Map map;
    for (const Entry& entry : sample.entries) {
        map.emplace(entry.ident, entry.value);
    }
    return map;
}

// --- the run -------------------------------------------------------------------------------------

struct Case
{
    std::string_view name;
    void (*run)(State&, const Subject&);
};

constexpr std::array kCases = {
    Case {kOpen, timeOpen},       Case {kOneShot, timeOneShot}, Case {kHit, timeHit},
    Case {kLateHit, timeLateHit}, Case {kMiss, timeMiss},       Case {kInt, timeInt},
    Case {kDouble, timeDouble},   Case {kThree, timeThree},     Case {kWildcard, timeWildcard},
};

void registerStore(const Sample& sample, std::size_t entries)
{
    for (const std::string_view form : kForms) {
        const Subject subject {&sample, form == kPlain ? 0 : kScrambleNumber};
        for (const Case& one : kCases) {
            benchmark::RegisterBenchmark(
                nameOf(one.name, form, entries).c_str(),
                [run = one.run, subject](State& state) { run(state, subject); });
        }
    }
}

void registerFloors(const Sample& sample, const Map& map, std::size_t entries)
{
    const auto add = [&](std::string_view name, std::function<void(State&)> run) {
        benchmark::RegisterBenchmark(nameOf(name, kPlain, entries).c_str(), std::move(run));
    };
    add(kFloorRead, [&](State& state) { timeRead(state, sample); });
    add(kFloorStat, [&](State& state) { timeStat(state, sample); });
    add(kFloorHit, [&](State& state) { timeMap(state, map, identsOf(sample)); });
    add(kFloorBoth, [&](State& state) { timeStatAndMap(state, sample, map); });
    add(kFloorMiss, [&](State& state) { timeMap(state, map, missesOf(sample)); });
}

// The floor of each case, and the aims. The scrambled form has the floors of the plain one.
class Evaluation
{
public:
    explicit Evaluation(const Medians& medians)
        : m_medians(medians)
    {
    }

    std::vector<Row> rows()
    {
        for (const std::string_view form : kForms) {
            for (const Case& one : kCases) {
                for (const std::size_t entries : kSizes) {
                    add(one.name, form, entries);
                }
            }
        }
        addComparisons();
        for (const std::string_view floor :
             {kFloorRead, kFloorStat, kFloorHit, kFloorMiss, kFloorBoth}) {
            for (const std::size_t entries : kSizes) {
                add(floor, kPlain, entries);
            }
        }
        return m_rows;
    }

private:
    static constexpr std::size_t kAimedSize = 10'000;
    static constexpr double kMostOfRead = 1.5;
    static constexpr double kMostOfMap = 2.5;
    static constexpr double kMostGrowth = 4; // from 1,000 entries to 100,000

    void add(std::string_view what, std::string_view form, std::size_t entries)
    {
        const auto measured = m_medians.of(what, form, entries);
        if (!measured) {
            return;
        }
        Row row {std::string(what), std::string(form), entries, *measured, {}, {}};
        const auto read = m_medians.of(kFloorRead, kPlain, entries);
        const auto stat = m_medians.of(kFloorStat, kPlain, entries);
        const auto map = m_medians.of(what == kMiss ? kFloorMiss : kFloorHit, kPlain, entries);
        const bool isAimed = form == kPlain && entries == kAimedSize;
        if (what == kOpen || what == kOneShot || what == kWildcard) {
            row.floor = read;
            if (isAimed && what == kOneShot && read) {
                row.aim = kMostOfRead * *read;
            }
        } else if (!what.starts_with("floor")) {
            row.floor = m_medians.of(kFloorBoth, kPlain, entries);
            if (isAimed && stat && map && (what == kHit || what == kLateHit || what == kMiss)) {
                row.aim = *stat + kMostOfMap * *map;
            }
        }
        m_rows.push_back(row);
    }

    // The aims that hold one of our numbers against another.
    void addComparisons()
    {
        const auto hit = m_medians.of(kHit, kPlain, kAimedSize);
        const auto miss = m_medians.of(kMiss, kPlain, kAimedSize);
        if (hit && miss) {
            m_rows.push_back(
                {"a miss beside a hit", std::string(kPlain), kAimedSize, *miss, hit, hit});
        }
        const auto small = m_medians.of(kHit, kPlain, 1'000);
        const auto large = m_medians.of(kHit, kPlain, 100'000);
        if (small && large) {
            m_rows.push_back({"a hit beside one in 1,000 entries", std::string(kPlain), 100'000,
                              *large, small, kMostGrowth * *small});
        }
    }

    const Medians& m_medians;
    std::vector<Row> m_rows;
};

int run(int argc, char** argv)
{
    if (!initialize(argc, argv)) {
        return EXIT_FAILURE;
    }
    const SampleFolder folder;
    std::vector<Sample> samples;
    std::vector<Map> maps;
    for (const std::size_t entries : kSizes) {
        samples.push_back(folder.make(entries));
        maps.push_back(mapOf(samples.back()));
    }
    for (std::size_t i = 0; i < kSizes.size(); ++i) {
        registerStore(samples[i], kSizes[i]);
        registerFloors(samples[i], maps[i], kSizes[i]);
    }
    folder.waitUntilSettled();
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    printTable(Evaluation(medians).rows(), "ns");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

int main(int argc, char** argv)
{
    return corma::bench::runProgram("corma_bench", corma::bench::run, argc, argv);
}
