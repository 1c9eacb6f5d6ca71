// Memory of an open file with its index, each case measured in a process of its own.

#include "bench_table.h"
#include "sample_files.h"
#include <corma/host.h>
#include <corma/xx_Inifile.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
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

// Bytes that were asked of the allocator and not given back, its own administration counted.
double heapInUse()
{
    const auto info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

// A number of kB in the kernel's status of this process, in bytes.
double statusBytes(const std::string& field)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(field + ":")) {
            return 1024.0 * std::stod(line.substr(field.size() + 1));
        }
    }
    throw std::runtime_error("no " + field + " in /proc/self/status");
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

struct Memory
{
    double heap; // bytes in use while the file is open
    double peak; // bytes that the process grew by at its largest
};

// What libraries set up once was set up for another file.
Memory measure(const Sample& warmUp, const Sample& sample, int scrambleNumber)
{
    openAndUse(warmUp.path, scrambleNumber, warmUp.entries.back().ident);
    std::wstring path = sample.path;
    const std::wstring& ident = sample.entries.back().ident;
    const double residentBefore = statusBytes("VmRSS");
    const double heapBefore = heapInUse();
    xx_Inifile file(path.data(), scrambleNumber, nullptr);
    use(file, ident);
    return {heapInUse() - heapBefore, statusBytes("VmHWM") - residentBefore};
}

// Runs the measurement in a child process, whose peak is its own.
Memory measureApart(const Sample& warmUp, const Sample& sample, int scrambleNumber)
{
    int ends[2];
    require(::pipe(ends) == 0, "pipe");
    const pid_t child = ::fork();
    require(child >= 0, "fork");
    Memory memory {};
    if (child == 0) {
        // The peak of the parent, which made the samples, is not ours.
        std::ofstream("/proc/self/clear_refs") << 5;
        memory = measure(warmUp, sample, scrambleNumber);
        const bool isSent = ::write(ends[1], &memory, sizeof memory) == sizeof memory;
        ::_exit(isSent ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    ::close(ends[1]);
    const bool isThere = ::read(ends[0], &memory, sizeof memory) == sizeof memory;
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    require(isThere, "the measuring process failed");
    return memory;
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
        addRows(rows, sample, "plain", measureApart(warmUp, sample, 0));
        addRows(rows, sample, "scrambled", measureApart(warmUp, sample, kScrambleNumber));
    }
    printTable(rows, "B");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

int main()
{
    try {
        return corma::bench::run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "corma_bench_memory: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
