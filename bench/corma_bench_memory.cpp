// Memory of an open file with its index, each case measured in a process of its own.

#include "bench_table.h"
#include "platform/text.h"
#include "process_memory.h"
#include "sample_files.h"
#include <corma/host.h>
#include <corma/xx_Inifile.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

namespace corma::bench {

namespace {

constexpr std::array<std::size_t, 4> kSizes = {100, 1'000, 10'000, 100'000};
constexpr int kLongestValue = 500; // characters, the terminator counted

// The aims, at the largest size of the plain form.
constexpr std::size_t kAimedSize = 100'000;
constexpr double kMostBytesAnEntry = 100;
constexpr double kMostOfFile = 3;

void require(bool holds, const char* what)
{
    if (!holds) {
        throw std::runtime_error(what);
    }
}

// Three lookups: a scan, the making of the index, and one through it.
void use(xx_Inifile& file, std::wstring ident)
{
    wchar_t value[kLongestValue];
    for (int i = 0; i < 3; ++i) {
        require(file.getString(ident.data(), value, kLongestValue, 0) == RTNORM, "lookup");
    }
}

void openAndUse(std::wstring path, int scrambleNumber, const std::wstring& ident)
{
    xx_Inifile file(path.data(), scrambleNumber, nullptr);
    use(file, ident);
}

struct Case
{
    std::wstring path;
    std::wstring ident;
    int scrambleNumber;
    std::wstring warmUp;
    std::wstring warmUpIdent;
};

struct Memory
{
    double heap; // bytes in use while the file is open
    double peak; // bytes that the process grew by at its largest
};

// The measuring process: what its libraries set up once was set up for another file.
int measure(const Case& one)
{
    openAndUse(one.warmUp, 0, one.warmUpIdent);
    // The peak so far, which the setting up of the process made, is not ours.
    forgetPeak();
    const double residentBefore = residentBytes();
    const double heapBefore = heapInUse();
    std::wstring path = one.path;
    xx_Inifile file(path.data(), one.scrambleNumber, nullptr);
    use(file, one.ident);
    const double heap = heapInUse() - heapBefore;
    std::printf("%.0f %.0f\n", heap, peakBytes() - residentBefore);
    return EXIT_SUCCESS;
}

Memory measureApart(const Case& one)
{
    const auto numbers = numbersFromNewProcess({toUtf8(one.path), toUtf8(one.ident),
                                                std::to_string(one.scrambleNumber),
                                                toUtf8(one.warmUp), toUtf8(one.warmUpIdent)},
                                               2);
    return {numbers[0], numbers[1]};
}

void addRows(std::vector<Row>& rows, const Sample& sample, const char* form, const Memory& memory)
{
    const std::size_t entries = sample.entries.size();
    const auto count = static_cast<double>(entries);
    const auto size = static_cast<double>(sample.text.size());
    Row heap {"heap in use, an entry", form, entries, memory.heap / count, size / count, {}};
    Row peak {"peak growth, an entry", form, entries, memory.peak / count, size / count, {}};
    if (entries == kAimedSize && std::string(form) == "plain") {
        heap.aim = kMostBytesAnEntry;
        peak.aim = kMostOfFile * size / count;
    }
    rows.push_back(heap);
    rows.push_back(peak);
}

int run()
{
    const SampleFolder folder;
    const Sample warmUp = folder.make(1);
    std::vector<Sample> samples;
    for (const std::size_t entries : kSizes) {
        samples.push_back(folder.make(entries));
    }
    folder.waitUntilSettled();
    std::vector<Row> rows;
    for (const Sample& sample : samples) {
        Case one {sample.path, sample.entries.back().ident, 0, warmUp.path,
                  warmUp.entries.back().ident};
        addRows(rows, sample, "plain", measureApart(one));
        one.scrambleNumber = kScrambleNumber;
        addRows(rows, sample, "scrambled", measureApart(one));
    }
    printTable(rows, "B");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

// Without arguments it measures all cases; with those of one case, that.
int main(int argc, char** argv)
{
    using namespace corma;
    try {
        if (argc == 6) {
            return bench::measure({fromUtf8(argv[1]), fromUtf8(argv[2]), std::atoi(argv[3]),
                                   fromUtf8(argv[4]), fromUtf8(argv[5])});
        }
        return bench::run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "corma_bench_memory: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
