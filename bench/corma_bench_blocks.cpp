// Times of blocks and attributes: finding references that are out of date, bringing them up to
// date, and taking a block out of another drawing.

#include "bench_table.h"
#include "benchmark_run.h"
#include "drawing/attribute_update.h"
#include "drawing_work.h"
#include "host/host.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "references.h"
#include <corma/blocks.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::bench {

namespace {

using benchmark::State;

constexpr std::array kDrawings
    = {References {1'000, 1}, References {10'000, 1}, References {100'000, 1},
       References {10'000, 100}, References {100'000, 100}};
constexpr References kFewest = kDrawings[0]; // what more of them are held against
constexpr std::size_t kMost = 100'000;
constexpr std::array kSources = {DrawingFile {10, 10'000}, DrawingFile {100, 10'000}};

constexpr std::string_view kLoad = "load";
constexpr std::string_view kDetect = "find what is out of date, each";
constexpr std::string_view kDetectBesideLoad = "find all beside loading";
constexpr std::string_view kSync = "_ATTSYNC, each reference";
constexpr std::string_view kSyncAgain = "_ATTSYNC again, each";
constexpr std::string_view kLoadSource = "floor: load, let go";
constexpr std::string_view kFindInFile = "xx_findblk in a file";
constexpr std::string_view kFindLoaded = "xx_findblk, loaded source";

// --- references ----------------------------------------------------------------------------------

void timeLoad(State& state, const References& drawing)
{
    for ([[maybe_unused]] auto step : state) {
        auto loaded = std::make_unique<WorkingDrawing>(drawing.path());
        state.PauseTiming();
        loaded.reset();
        state.ResumeTiming();
    }
}

void timeDetect(State& state, const References& drawing)
{
    const WorkingDrawing loaded(drawing.path());
    for ([[maybe_unused]] auto step : state) {
        require(static_cast<std::size_t>(xx_find_out_of_date_refs(L"*").length())
                    == drawing.count / 2,
                "references out of date");
    }
}

void syncAll(const References& drawing)
{
    for (const std::wstring& name : drawing.blockNames()) {
        require(acedCommandS(RTSTR, L"_ATTSYNC", RTSTR, L"NAME", RTSTR, name.c_str(), RTNONE)
                    == RTNORM,
                "synchronise");
    }
}

void timeSync(State& state, const References& drawing)
{
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        auto loaded = std::make_unique<WorkingDrawing>(drawing.path());
        state.ResumeTiming();
        syncAll(drawing);
        state.PauseTiming();
        require(xx_find_out_of_date_refs(L"*").length() == 0, "references left out of date");
        loaded.reset();
        state.ResumeTiming();
    }
}

void timeSyncAgain(State& state, const References& drawing)
{
    const WorkingDrawing loaded(drawing.path());
    syncAll(drawing);
    for ([[maybe_unused]] auto step : state) {
        syncAll(drawing);
    }
}

// --- blocks of other drawings --------------------------------------------------------------------

std::unique_ptr<AcDbDatabase> load(const DrawingFile& source)
{
    auto database = std::make_unique<AcDbDatabase>(false, true);
    require(database->readDwgFile(platform::fromNative(source.in(".")).c_str()) == Acad::eOk,
            "cannot read a drawing");
    return database;
}

void timeLoadSource(State& state, const DrawingFile& source)
{
    for ([[maybe_unused]] auto step : state) {
        load(source);
    }
}

void findBlock(State& state, const std::wstring& text, AcDbDatabase* source)
{
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        auto drawing = std::make_unique<WorkingDrawing>();
        std::wstring wanted = text;
        int status = RTERROR;
        state.ResumeTiming();
        const AcDbObjectId block = xx_findblk(wanted.data(), &status, nullptr, source);
        state.PauseTiming();
        require(status == RTNORM && !block.isNull(), "find a block");
        drawing.reset();
        state.ResumeTiming();
    }
}

void timeFindInFile(State& state, const DrawingFile& source)
{
    const std::string name = std::filesystem::path(source.in(".")).filename().string();
    findBlock(state, fromUtf8(name + "!DEUR"), nullptr);
}

void timeFindLoaded(State& state, const DrawingFile& source)
{
    const auto loaded = load(source);
    findBlock(state, L"any.dxf!DEUR", loaded.get());
}

// --- the run -------------------------------------------------------------------------------------

struct ReferencesCase
{
    std::string_view name;
    void (*run)(State&, const References&);
    bool isOfEach = true; // what is told is the time of one reference
};

struct SourceCase
{
    std::string_view name;
    void (*run)(State&, const DrawingFile&);
};

constexpr std::array kReferencesCases = {
    ReferencesCase {kLoad, timeLoad, false},
    ReferencesCase {kDetect, timeDetect},
    ReferencesCase {kSync, timeSync},
    ReferencesCase {kSyncAgain, timeSyncAgain},
};
constexpr std::array kSourceCases = {
    SourceCase {kLoadSource, timeLoadSource},
    SourceCase {kFindInFile, timeFindInFile},
    SourceCase {kFindLoaded, timeFindLoaded},
};

void registerAll()
{
    for (const References& drawing : kDrawings) {
        for (const ReferencesCase& one : kReferencesCases) {
            benchmark::RegisterBenchmark(
                nameOf(one.name, drawing.form(), drawing.count).c_str(),
                [run = one.run, drawing](State& state) { run(state, drawing); });
        }
    }
    for (const DrawingFile& source : kSources) {
        for (const SourceCase& one : kSourceCases) {
            benchmark::RegisterBenchmark(
                nameOf(one.name, source.form(), source.settings).c_str(),
                [run = one.run, source](State& state) { run(state, source); });
        }
    }
}

// The rows of the table, in microseconds, with floors and aims.
class Evaluation
{
public:
    explicit Evaluation(const Medians& medians)
        : m_medians(medians)
    {
    }

    std::vector<Row> rows()
    {
        for (const ReferencesCase& one : kReferencesCases) {
            for (const References& drawing : kDrawings) {
                addReferences(one, drawing);
            }
        }
        for (const References& drawing : kDrawings) {
            addDetection(drawing);
        }
        for (const SourceCase& one : kSourceCases) {
            for (const DrawingFile& source : kSources) {
                addSource(one.name, source);
            }
        }
        return m_rows;
    }

private:
    static constexpr double kNanoseconds = 1'000; // in a microsecond
    static constexpr double kMostGrowth = 2; // of what is done to one of very many
    static constexpr double kMostOfLoad = 3; // for finding all that are out of date
    static constexpr double kMostOfLoadSource = 1.25; // for a block out of it

    [[nodiscard]] std::optional<double> time(std::string_view what, const std::string& form,
                                             std::size_t entries, double times = 1) const
    {
        const auto measured = m_medians.of(what, form, entries);
        return measured ? std::optional(*measured / kNanoseconds / times) : std::nullopt;
    }

    [[nodiscard]] std::optional<double> time(const ReferencesCase& one,
                                             const References& drawing) const
    {
        return time(one.name, drawing.form(), drawing.count,
                    one.isOfEach ? static_cast<double>(drawing.count) : 1);
    }

    void add(std::string_view what, const std::string& form, std::size_t entries,
             std::optional<double> measured, std::optional<double> floor = {}, double most = 0)
    {
        if (measured) {
            const auto aim = floor && most != 0 ? std::optional(most * *floor) : std::nullopt;
            m_rows.push_back({std::string(what), form, entries, *measured, floor, aim});
        }
    }

    // The fewest stand for the floor: more of them, or more blocks, must not make one dearer.
    void addReferences(const ReferencesCase& one, const References& drawing)
    {
        const bool isHeld
            = one.isOfEach && (drawing.count != kFewest.count || drawing.blocks != kFewest.blocks);
        add(one.name, drawing.form(), drawing.count, time(one, drawing),
            isHeld ? time(one, kFewest) : std::nullopt, kMostGrowth);
    }

    void addDetection(const References& drawing)
    {
        add(kDetectBesideLoad, drawing.form(), drawing.count,
            time(kDetect, drawing.form(), drawing.count),
            time(kLoad, drawing.form(), drawing.count), drawing.count == kMost ? kMostOfLoad : 0);
    }

    void addSource(std::string_view what, const DrawingFile& source)
    {
        const auto measured = time(what, source.form(), source.settings);
        if (what == kFindInFile) {
            add(what, source.form(), source.settings, measured,
                time(kLoadSource, source.form(), source.settings), kMostOfLoadSource);
        } else if (what == kFindLoaded && source.megabytes != kSources[0].megabytes) {
            add(what, source.form(), source.settings, measured,
                time(what, kSources[0].form(), kSources[0].settings), kMostGrowth);
        } else {
            add(what, source.form(), source.settings, measured);
        }
    }

    const Medians& m_medians;
    std::vector<Row> m_rows;
};

int run(int argc, char** argv)
{
    if (argc < 2 || !initialize(argc - 1, argv + 1)) {
        std::fputs("usage: corma_bench_blocks FOLDER_OF_DRAWINGS [--benchmark_...]\n", stderr);
        return EXIT_FAILURE;
    }
    std::filesystem::current_path(argv[1]); // where a drawing is found by its name alone
    registerAll();
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    printTable(Evaluation(medians).rows(), "us");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

int main(int argc, char** argv)
{
    return corma::bench::runProgram("corma_bench_blocks", corma::bench::run, argc, argv);
}
