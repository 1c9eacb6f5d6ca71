// Times of drawings in DWG files beside reading and checksumming the bytes of the same file, in one
// run.

#include "bench_table.h"
#include "benchmark_run.h"
#include "drawing_work.h"
#include "host/dwg/Container.h"
#include "host/dwg/checksum.h"
#include "platform/platform.h"
#include <corma/xx_Inifile.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace corma::bench {

namespace {

using benchmark::State;

constexpr std::array kFiles = {DrawingFile {10, 10'000}, DrawingFile {100, 10'000}};

/// A release whose container is measured: flat up to R2000, in compressed pages later.
struct Release
{
    const char* name;
    std::string_view version;
};

constexpr std::array kReleases = {Release {"R2000", "AC1015"}, Release {"R2018", "AC1032"}};

constexpr std::string_view kContainer = "take the file apart";
constexpr std::string_view kLoad = "load";
constexpr std::string_view kLoadAndAsk = "load, one lookup";
constexpr std::string_view kSave = "save with one change";
constexpr std::string_view kChecksum = "floor: read and checksum";
constexpr std::string_view kCopy = "floor: copy with flushing";
constexpr double kMostOfChecksum = 4;
constexpr int kLongestValue = 500; // characters, the terminator counted

/// A drawing of bench/make_drawing.py as a DWG file.
struct DwgFile
{
    std::string path;
    std::string form;
    std::size_t settings = 0;
    std::wstring lastIdent;
    std::wstring lastValue;
};

struct Bench
{
    std::vector<DwgFile> files;
    std::wstring configuration; // path
    std::wstring target; // path of what is saved

    [[nodiscard]] std::unique_ptr<xx_Inifile> settings() const
    {
        std::wstring path = configuration;
        return std::make_unique<xx_Inifile>(path.data(), 0, nullptr);
    }
};

// --- files ---------------------------------------------------------------------------------------

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The drawing is one of R2018 that holds nothing that R2000 does not know.
DwgFile makeFile(const DrawingFile& drawing, const Release& release, const std::string& drawings,
                 const std::string& work)
{
    constexpr std::string_view kMadeVersion = "AC1032";
    std::string content = contentOf(drawing.in(drawings));
    const std::size_t version = content.find(kMadeVersion);
    require(version != std::string::npos, "version of a drawing");
    content.replace(version, kMadeVersion.size(), release.version);
    const std::string source = work + "/source.dxf";
    std::ofstream(source, std::ios::binary) << content;
    DwgFile file {work + "/" + release.name + "-" + drawing.form() + ".dwg",
                  std::string(release.name) + ", " + drawing.form(), drawing.settings,
                  identsOf(drawing).back(), L"waarde " + std::to_wstring(drawing.settings - 1)};
    WorkingDrawing made(source);
    require(made.database().saveAs(platform::fromNative(file.path).c_str()) == Acad::eOk,
            "write a DWG file");
    return file;
}

// --- cases ---------------------------------------------------------------------------------------

// What goes with the object that is made is not counted.
template<class Make> void timeMaking(State& state, const Make& make)
{
    for ([[maybe_unused]] auto step : state) {
        auto made = make();
        state.PauseTiming();
        made.reset();
        state.ResumeTiming();
    }
}

// Into memory that it has already, which is the best that can be: at some sizes new memory nearly
// doubles the time. Pages of R2018 have a checksum of another kind, which takes longer than this.
void timeChecksum(State& state, const Bench& /*bench*/, const DwgFile& file)
{
    std::string room(std::filesystem::file_size(file.path), '\0');
    for ([[maybe_unused]] auto step : state) {
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(
            std::fopen(file.path.c_str(), "rb"), std::fclose);
        require(opened != nullptr
                    && std::fread(room.data(), 1, room.size(), opened.get()) == room.size(),
                "read");
        benchmark::DoNotOptimize(host::dwg::checksum(room));
    }
}

// Up to R2000 the parts are found; from R2004 on each page is checked and decompressed.
void timeContainer(State& state, const Bench& /*bench*/, const DwgFile& file)
{
    timeMaking(state, [&] {
        auto content = platform::readFile(file.path);
        require(content.has_value(), "read");
        auto read = host::dwg::readContainer(std::move(*content), {});
        auto* const container = std::get_if<std::unique_ptr<host::dwg::Container>>(&read);
        require(container != nullptr, "take apart");
        return std::move(*container);
    });
}

void timeLoad(State& state, const Bench& /*bench*/, const DwgFile& file)
{
    timeMaking(state, [&] { return std::make_unique<WorkingDrawing>(file.path); });
}

void timeLoadAndAsk(State& state, const Bench& bench, const DwgFile& file)
{
    const auto settings = bench.settings();
    std::wstring ident = file.lastIdent;
    timeMaking(state, [&] {
        auto drawing = std::make_unique<WorkingDrawing>(file.path);
        wchar_t value[kLongestValue];
        require(settings->getString(ident.data(), value, kLongestValue, 0) == RTNORM
                    && file.lastValue == value,
                "first lookup");
        return drawing;
    });
}

void timeSave(State& state, const Bench& bench, const DwgFile& file)
{
    const auto settings = bench.settings();
    std::wstring ident = file.lastIdent;
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        auto drawing = std::make_unique<WorkingDrawing>(file.path);
        std::wstring value = L"iets anders";
        settings->writeString(ident.data(), value.data());
        state.ResumeTiming();
        require(drawing->database().saveAs(bench.target.c_str()) == Acad::eOk, "save");
        state.PauseTiming();
        drawing.reset();
        state.ResumeTiming();
    }
}

void timeCopy(State& state, const Bench& bench, const DwgFile& file)
{
    const auto content = platform::readFile(file.path);
    require(content.has_value(), "read");
    for ([[maybe_unused]] auto step : state) {
        require(platform::replaceFile(bench.target, content->view()), "copy");
    }
}

struct Case
{
    std::string_view name;
    void (*run)(State&, const Bench&, const DwgFile&);
    std::string_view floor {}; // the case that it is held against
    double most = 0; // times the floor; 0 for no aim
    bool waits = false; // for the disk
};

constexpr std::array kCases = {
    Case {kChecksum, timeChecksum},
    Case {kContainer, timeContainer, kChecksum},
    Case {kLoad, timeLoad, kChecksum},
    Case {kLoadAndAsk, timeLoadAndAsk, kChecksum, kMostOfChecksum},
    Case {kSave, timeSave, kCopy, 0, true},
    Case {kCopy, timeCopy, {}, 0, true},
};

std::vector<Row> rowsOf(const Medians& medians, const Bench& bench)
{
    constexpr double kNanoseconds = 1000; // in a microsecond
    std::vector<Row> rows;
    for (const Case& one : kCases) {
        for (const DwgFile& file : bench.files) {
            const auto measured = medians.of(one.name, file.form, file.settings);
            if (!measured) {
                continue;
            }
            Row row {std::string(one.name),    file.form, file.settings,
                     *measured / kNanoseconds, {},        {}};
            const auto floor = medians.of(one.floor, file.form, file.settings);
            if (floor) {
                row.floor = *floor / kNanoseconds;
            }
            if (floor && one.most != 0) {
                row.aim = one.most * *row.floor;
            }
            rows.push_back(row);
        }
    }
    return rows;
}

int run(int argc, char** argv)
{
    if (argc < 2 || !initialize(argc - 1, argv + 1)) {
        std::fputs("usage: corma_bench_dwg FOLDER_OF_DRAWINGS [--benchmark_...]\n", stderr);
        return EXIT_FAILURE;
    }
    const std::string work = std::string(argv[1]) + "/work";
    std::filesystem::create_directory(work);
    Bench bench;
    bench.configuration = makeConfigurationFile(work);
    bench.target = platform::fromNative(work + "/saved.dwg");
    for (const DrawingFile& drawing : kFiles) {
        for (const Release& release : kReleases) {
            bench.files.push_back(makeFile(drawing, release, argv[1], work));
        }
    }
    for (const DwgFile& file : bench.files) {
        for (const Case& one : kCases) {
            auto* const registered = benchmark::RegisterBenchmark(
                nameOf(one.name, file.form, file.settings).c_str(),
                [run = one.run, &bench, &file](State& state) { run(state, bench, file); });
            if (one.waits) {
                registered->UseRealTime();
            }
        }
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    printTable(rowsOf(medians, bench), "us");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

int main(int argc, char** argv)
{
    return corma::bench::runProgram("corma_bench_dwg", corma::bench::run, argc, argv);
}
