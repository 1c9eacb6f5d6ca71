// Times of changing files: one value written, and new defaults or new values merged, beside writing
// the same bytes without looking at anything.

#include "bench_table.h"
#include "benchmark_run.h"
#include "host/host.h"
#include "platform/platform.h"
#include "sample_files.h"
#include <corma/host.h>
#include <corma/xx_Inifile.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

namespace corma::bench {

namespace {

constexpr std::array<std::size_t, 4> kSizes = {100, 1'000, 10'000, 100'000};
constexpr std::array<std::size_t, 2> kChapterSizes = {1'000, 10'000};

constexpr const char* kWrite = "one value written";
constexpr const char* kFloor = "floor: write, rename";
constexpr const char* kUpdate = "update, a tenth is new";
constexpr const char* kReplace = "replace, all values";
constexpr const char* kFreeze = "makeLocalChapter";
constexpr const char* kMemory = "memory";
constexpr const char* kDisk = "disk";

// The aims.
constexpr double kMostOfFloorInMemory = 3;
constexpr double kMostOfFloorOnDisk = 1.5;

constexpr double kMicrosecond = 1000; // ns
constexpr int kGlobalLevel = 0;

// A program without a terminal: what the library tells is of no interest here.
struct Silence : Services
{
    Silence() { setServices(this); }

    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

    ~Silence() override { setServices(nullptr); }

    void print(const wchar_t* /*text*/) override { }
};

void writeWhole(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

// A value that is as long as the other, so that the file keeps its size.
void writeValues(benchmark::State& state, const Sample& sample)
{
    std::wstring path = sample.path;
    xx_Inifile file(path.data(), 0, nullptr);
    std::mt19937 random(1);
    std::uniform_int_distribution<std::size_t> any(0, sample.entries.size() - 1);
    for (auto _ : state) {
        const Entry& entry = sample.entries[any(random)];
        std::wstring ident = entry.ident;
        std::wstring value = entry.value;
        file.writeString(ident.data(), value.data(), kGlobalLevel);
    }
    const auto size = std::filesystem::file_size(sample.nativePath());
    require(size == sample.text.size(), "a file of the same size");
}

enum class Flush
{
    no,
    yes
};

void writeAndRename(benchmark::State& state, const Sample& sample, Flush flush)
{
    const std::string target = sample.nativePath() + ".floor";
    const std::string temporary = target + ".tmp";
    const auto folder = std::filesystem::path(target).parent_path();
    const std::string& text = sample.text;
    for (auto _ : state) {
        const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        const bool isWritten
            = ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
        const bool isFlushed = flush == Flush::no || ::fsync(file) == 0;
        require(isWritten && isFlushed && ::close(file) == 0, "write");
        require(std::rename(temporary.c_str(), target.c_str()) == 0, "rename");
        if (flush == Flush::yes) {
            const int names = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            require(::fsync(names) == 0 && ::close(names) == 0, "flush");
        }
    }
}

// The sample without each tenth entry: what a user has of an older version.
std::string withoutATenth(const std::string& text)
{
    std::string older;
    int count = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at) + 1;
        const std::string line = text.substr(at, end - at);
        const bool isEntry = line.find('=') != std::string::npos;
        if (!isEntry || ++count % 10 != 0) {
            older += line;
        }
        at = end;
    }
    return older;
}

void update(benchmark::State& state, const Sample& sample)
{
    const std::string own = sample.nativePath() + ".own.ini";
    std::wstring wide = sample.path + L".own.ini";
    std::wstring defaults = sample.path;
    const std::string older = withoutATenth(sample.text);
    for (auto _ : state) {
        state.PauseTiming();
        writeWhole(own, older);
        xx_Inifile file(wide.data(), 0, nullptr);
        state.ResumeTiming();
        int added = 0;
        require(file.update(defaults.data(), &added) == RTNORM && added > 0, "update");
    }
}

void replace(benchmark::State& state, const Sample& sample)
{
    const std::string newer = sample.nativePath() + ".new.ini";
    std::string text = sample.text;
    for (std::size_t at = text.find('\r'); at != std::string::npos; at = text.find('\r', at + 2)) {
        text.insert(at, 1, '!');
    }
    writeWhole(newer, text);
    std::wstring own = sample.path;
    xx_Inifile file(own.data(), 0, nullptr);
    const std::wstring newName = sample.path + L".new.ini";
    for (auto _ : state) {
        require(file.replaceNew(newName.c_str()) == RTNORM, "replace");
    }
    writeWhole(sample.nativePath(), sample.text);
}

void freeze(benchmark::State& state, const std::string& folder, std::size_t entries)
{
    const std::string path = folder + "/freeze" + std::to_string(entries) + ".ini";
    std::string text = "[Laag]\n";
    for (std::size_t i = 0; i < entries; ++i) {
        text += "Naam" + std::to_string(i) + "=21-WAND," + std::to_string(i) + "\n";
    }
    writeWhole(path, text);
    std::wstring wide = platform::fromNative(path);
    xx_Inifile file(wide.data(), 0, nullptr);
    const std::wstring drawing = platform::fromNative(folder + "/freeze.dxf");
    for (auto _ : state) {
        state.PauseTiming();
        require(newDocument(drawing.c_str()), "drawing");
        state.ResumeTiming();
        file.makeLocalChapter(L"Laag", 0);
        state.PauseTiming();
        require(isDocumentModified(), "a changed drawing");
        closeDocument();
        state.ResumeTiming();
    }
}

// Where there is a file system in memory its folder is the temporary one of its samples.
struct MemoryFolder
{
    MemoryFolder()
    {
        ::setenv("TMPDIR", "/dev/shm", 1);
        samples = std::make_unique<SampleFolder>();
        ::unsetenv("TMPDIR");
    }

    std::unique_ptr<SampleFolder> samples;
};

void addRow(std::vector<Row>& rows, const Medians& medians, const char* form, std::size_t entries)
{
    const auto measured = medians.of(kWrite, form, entries);
    const auto floor = medians.of(kFloor, form, entries);
    if (measured && floor) {
        const double most = form == kMemory ? kMostOfFloorInMemory : kMostOfFloorOnDisk;
        rows.push_back({kWrite, form, entries, *measured / kMicrosecond, *floor / kMicrosecond,
                        most * *floor / kMicrosecond});
    }
}

// Beside a tenth of the entries, with the growth that sorting has.
void addGrowth(std::vector<Row>& rows, const Medians& medians, const char* what,
               std::size_t entries)
{
    const auto measured = medians.of(what, kMemory, entries);
    const auto tenth = medians.of(what, kMemory, entries / 10);
    if (!measured) {
        return;
    }
    Row row {what, kMemory, entries, *measured / kMicrosecond, {}, {}};
    if (tenth) {
        const auto n = static_cast<double>(entries);
        row.floor = *tenth / kMicrosecond;
        row.aim = *row.floor * 10 * std::log(n) / std::log(n / 10);
    }
    rows.push_back(row);
}

void registerFor(const Sample& sample, const char* form, std::size_t entries)
{
    const Flush flush = form == kDisk ? Flush::yes : Flush::no;
    auto* written
        = benchmark::RegisterBenchmark(nameOf(kWrite, form, entries).c_str(), writeValues, sample);
    auto* floor = benchmark::RegisterBenchmark(nameOf(kFloor, form, entries).c_str(),
                                               writeAndRename, sample, flush);
    if (form == kDisk) {
        written->UseRealTime();
        floor->UseRealTime();
    }
}

int run(int argc, char** argv)
{
    if (!initialize(argc, argv)) {
        return EXIT_FAILURE;
    }
    const Silence silence;
    const MemoryFolder memory;
    const SampleFolder disk;
    const std::string folder = memory.samples->newFolder();
    for (const std::size_t entries : kSizes) {
        const Sample sample = memory.samples->make(entries);
        registerFor(sample, kMemory, entries);
        registerFor(disk.make(entries), kDisk, entries);
        benchmark::RegisterBenchmark(nameOf(kUpdate, kMemory, entries).c_str(), update, sample);
        benchmark::RegisterBenchmark(nameOf(kReplace, kMemory, entries).c_str(), replace, sample);
    }
    for (const std::size_t entries : kChapterSizes) {
        benchmark::RegisterBenchmark(nameOf(kFreeze, kMemory, entries).c_str(), freeze, folder,
                                     entries);
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    std::vector<Row> rows;
    for (const char* const form : {kMemory, kDisk}) {
        for (const std::size_t entries : kSizes) {
            addRow(rows, medians, form, entries);
        }
    }
    for (const char* const what : {kUpdate, kReplace}) {
        for (const std::size_t entries : kSizes) {
            addGrowth(rows, medians, what, entries);
        }
    }
    for (const std::size_t entries : kChapterSizes) {
        addGrowth(rows, medians, kFreeze, entries);
    }
    printTable(rows, "us");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

int main(int argc, char** argv)
{
    return corma::bench::runProgram("corma_bench_write", corma::bench::run, argc, argv);
}
