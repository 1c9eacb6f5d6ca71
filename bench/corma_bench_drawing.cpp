// Times of drawings and of the settings in them beside the times that the machine itself needs, in
// one run.

#include "bench_table.h"
#include "benchmark_run.h"
#include "drawing_work.h"
#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "platform/platform.h"
#include "tag_scan.h"
#include <corma/xx_Inifile.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <string_view>

namespace corma::bench {

namespace {

using benchmark::State;

constexpr DrawingFile kSmall {10, 10'000};
constexpr DrawingFile kLarge {100, 10'000};
constexpr std::array kLoaded = {kSmall, kLarge};
constexpr std::array kLookedIn = {DrawingFile {1, 10}, DrawingFile {1, 1'000},
                                  DrawingFile {1, 10'000}, DrawingFile {1, 100'000}};
constexpr std::array<std::size_t, 3> kCounts = {1'000, 10'000, 100'000}; // of what is done
constexpr const char* kMade = "new"; // the form of what is done in a new drawing
constexpr int kLongestValue = 500; // characters, the terminator counted

// The names of what is measured; with form and size they name a benchmark.
constexpr std::string_view kLoad = "load";
constexpr std::string_view kLoadAndAsk = "load, one lookup";
constexpr std::string_view kSave = "save with one change";
constexpr std::string_view kScan = "floor: scan and index of handles";
constexpr std::string_view kCopy = "floor: copy with flushing";
constexpr std::string_view kSame = "warm lookup, the same";
constexpr std::string_view kRandom = "warm lookup, random";
constexpr std::string_view kSameDictionary = "xx_dictionaryFor, the same";
constexpr std::string_view kDictionary = "xx_dictionaryFor, random chapter";
constexpr std::string_view kStore = "store a setting";
constexpr std::string_view kStoreAgain = "store it again";
constexpr std::string_view kAdd = "add an entity";
constexpr std::string_view kOpen = "open an entity";
constexpr std::string_view kErase = "erase an entity";
constexpr std::string_view kAddAndErase = "add an entity and erase it";

/// Where the drawings lie, and what else the cases need.
struct Bench
{
    std::string drawings; // folder
    std::string work; // folder
    std::wstring configuration; // path

    [[nodiscard]] std::unique_ptr<xx_Inifile> settings() const
    {
        std::wstring path = configuration;
        return std::make_unique<xx_Inifile>(path.data(), 0, nullptr);
    }

    [[nodiscard]] std::string target() const { return work + "/saved.dxf"; }
};

bool has(xx_Inifile& settings, std::wstring& ident)
{
    wchar_t value[kLongestValue];
    return settings.getString(ident.data(), value, kLongestValue, 0) == RTNORM;
}

// --- loading and saving --------------------------------------------------------------------------

// What goes with the object is not counted: neither that of the drawing nor that of the scan.
template<class Make> void timeMaking(State& state, const Make& make)
{
    for ([[maybe_unused]] auto step : state) {
        auto made = make();
        state.PauseTiming();
        made.reset();
        state.ResumeTiming();
    }
}

void timeScan(State& state, const Bench& bench, const DrawingFile& file)
{
    const std::string path = file.in(bench.drawings);
    timeMaking(state, [&] {
        auto scan = std::make_unique<TagScan>(path);
        require(scan->handleCount() > file.settings, "scan");
        return scan;
    });
}

void timeLoad(State& state, const Bench& bench, const DrawingFile& file)
{
    const std::string path = file.in(bench.drawings);
    timeMaking(state, [&] { return std::make_unique<WorkingDrawing>(path); });
}

void timeLoadAndAsk(State& state, const Bench& bench, const DrawingFile& file)
{
    const std::string path = file.in(bench.drawings);
    const auto settings = bench.settings();
    std::wstring ident = identsOf(file).back();
    timeMaking(state, [&] {
        auto drawing = std::make_unique<WorkingDrawing>(path);
        require(has(*settings, ident), "first lookup");
        return drawing;
    });
}

void timeSave(State& state, const Bench& bench, const DrawingFile& file)
{
    const std::wstring target = platform::fromNative(bench.target());
    const auto settings = bench.settings();
    std::wstring ident = identsOf(file).front();
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        auto drawing = std::make_unique<WorkingDrawing>(file.in(bench.drawings));
        std::wstring value = L"iets anders";
        settings->writeString(ident.data(), value.data());
        state.ResumeTiming();
        require(drawing->database().saveAs(target.c_str()) == Acad::eOk, "save");
        state.PauseTiming();
        drawing.reset();
        state.ResumeTiming();
    }
}

void timeCopy(State& state, const Bench& bench, const DrawingFile& file)
{
    const auto content = platform::readFile(file.in(bench.drawings));
    const std::wstring target = platform::fromNative(bench.target());
    require(content.has_value(), "read");
    for ([[maybe_unused]] auto step : state) {
        require(platform::replaceFile(target, content->view()), "copy");
    }
}

// --- lookups -------------------------------------------------------------------------------------

std::vector<std::wstring> shuffled(std::vector<std::wstring> texts)
{
    std::shuffle(texts.begin(), texts.end(), std::mt19937(7));
    return texts;
}

void lookUp(State& state, const Bench& bench, const DrawingFile& file,
            std::vector<std::wstring> idents)
{
    const WorkingDrawing drawing(file.in(bench.drawings));
    const auto settings = bench.settings();
    for (std::wstring& ident : idents) {
        require(has(*settings, ident), "lookup");
    }
    std::size_t at = 0;
    for ([[maybe_unused]] auto step : state) {
        at = at + 1 < idents.size() ? at + 1 : 0;
        benchmark::DoNotOptimize(has(*settings, idents[at]));
    }
}

void timeSame(State& state, const Bench& bench, const DrawingFile& file)
{
    lookUp(state, bench, file, {identsOf(file).back()});
}

void timeRandom(State& state, const Bench& bench, const DrawingFile& file)
{
    lookUp(state, bench, file, shuffled(identsOf(file)));
}

std::vector<std::wstring> chaptersOf(const DrawingFile& file)
{
    std::vector<std::wstring> chapters;
    for (const std::wstring& ident : identsOf(file)) {
        chapters.push_back(ident.substr(1, ident.find(L']') - 1));
    }
    chapters.erase(std::unique(chapters.begin(), chapters.end()), chapters.end());
    return chapters;
}

void findDictionaries(State& state, const Bench& bench, const DrawingFile& file,
                      const std::vector<std::wstring>& chapters)
{
    const WorkingDrawing drawing(file.in(bench.drawings));
    const auto hasDictionary = [](const std::wstring& chapter) {
        host::Opened<AcDbDictionary> dictionary;
        return xx_dictionaryFor(L"tool.ini", chapter.c_str(), dictionary.out(), false, nullptr)
            == Acad::eOk;
    };
    require(std::all_of(chapters.begin(), chapters.end(), hasDictionary), "dictionary");
    std::size_t at = 0;
    for ([[maybe_unused]] auto step : state) {
        at = at + 1 < chapters.size() ? at + 1 : 0;
        benchmark::DoNotOptimize(hasDictionary(chapters[at]));
    }
}

void timeSameDictionary(State& state, const Bench& bench, const DrawingFile& file)
{
    findDictionaries(state, bench, file, {chaptersOf(file).back()});
}

void timeDictionary(State& state, const Bench& bench, const DrawingFile& file)
{
    findDictionaries(state, bench, file, shuffled(chaptersOf(file)));
}

// --- many ----------------------------------------------------------------------------------------

void storeAll(xx_Inifile& settings, std::vector<std::wstring>& idents)
{
    std::wstring value = L"waarde";
    for (std::wstring& ident : idents) {
        settings.writeString(ident.data(), value.data());
    }
}

std::vector<std::wstring> identsOfOneChapter(std::size_t count)
{
    std::vector<std::wstring> idents;
    for (std::size_t i = 0; i < count; ++i) {
        idents.push_back(L"[Hoofdstuk]Instelling" + std::to_wstring(i));
    }
    return idents;
}

// Times `work` in a new drawing that was prepared for it.
template<class Prepare, class Work>
void timeInNewDrawing(State& state, const Prepare& prepare, const Work& work)
{
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        auto drawing = std::make_unique<WorkingDrawing>();
        auto prepared = prepare(drawing->database());
        state.ResumeTiming();
        work(drawing->database(), prepared);
        state.PauseTiming();
        drawing.reset();
        state.ResumeTiming();
    }
}

void timeStore(State& state, const Bench& bench, std::size_t count)
{
    const auto settings = bench.settings();
    timeInNewDrawing(
        state, [&](AcDbDatabase&) { return identsOfOneChapter(count); },
        [&](AcDbDatabase&, auto& idents) { storeAll(*settings, idents); });
    WorkingDrawing drawing;
    auto idents = identsOfOneChapter(count);
    storeAll(*settings, idents);
    require(has(*settings, idents.back()), "stored");
}

void timeStoreAgain(State& state, const Bench& bench, std::size_t count)
{
    const auto settings = bench.settings();
    timeInNewDrawing(
        state,
        [&](AcDbDatabase&) {
            auto idents = identsOfOneChapter(count);
            storeAll(*settings, idents);
            return idents;
        },
        [&](AcDbDatabase&, auto& idents) { storeAll(*settings, idents); });
}

void timeAdd(State& state, const Bench& /*bench*/, std::size_t count)
{
    timeInNewDrawing(
        state, [](AcDbDatabase&) { return 0; },
        [&](AcDbDatabase& database, int) { addTexts(database, count); });
}

void timeOpen(State& state, const Bench& bench, std::size_t count)
{
    WorkingDrawing drawing(kLarge.in(bench.drawings));
    for ([[maybe_unused]] auto step : state) {
        require(openFirst(drawing.database(), count) == count, "entities");
    }
}

void timeErase(State& state, const Bench& /*bench*/, std::size_t count)
{
    timeInNewDrawing(
        state, [&](AcDbDatabase& database) { return addTexts(database, count); },
        [](AcDbDatabase& database, const std::vector<AcDbObjectId>& ids) {
            eraseEach(ids);
            require(openFirst(database, 1) == 0, "entities left");
        });
}

void timeAddAndErase(State& state, const Bench& /*bench*/, std::size_t count)
{
    timeInNewDrawing(
        state, [](AcDbDatabase&) { return 0; },
        [&](AcDbDatabase& database, int) {
            for (std::size_t i = 0; i < count; ++i) {
                eraseEach(addTexts(database, 1));
            }
        });
}

// --- the run -------------------------------------------------------------------------------------

struct FileCase
{
    std::string_view name;
    void (*run)(State&, const Bench&, const DrawingFile&);
    bool waits = false; // for the disk, so that real time is what counts
};

struct CountCase
{
    std::string_view name;
    void (*run)(State&, const Bench&, std::size_t);
};

constexpr std::array kFileCases = {
    FileCase {kLoad, timeLoad},       FileCase {kLoadAndAsk, timeLoadAndAsk},
    FileCase {kScan, timeScan},       FileCase {kSave, timeSave, true},
    FileCase {kCopy, timeCopy, true},
};
constexpr std::array kLookupCases = {
    FileCase {kSame, timeSame},
    FileCase {kRandom, timeRandom},
    FileCase {kSameDictionary, timeSameDictionary},
    FileCase {kDictionary, timeDictionary},
};
constexpr std::array kCountCases = {
    CountCase {kStore, timeStore}, CountCase {kStoreAgain, timeStoreAgain},
    CountCase {kAdd, timeAdd},     CountCase {kOpen, timeOpen},
    CountCase {kErase, timeErase}, CountCase {kAddAndErase, timeAddAndErase},
};

template<class Files, class Cases>
void registerFiles(const Bench& bench, const Files& files, const Cases& cases)
{
    for (const DrawingFile& file : files) {
        for (const FileCase& one : cases) {
            auto* const registered = benchmark::RegisterBenchmark(
                nameOf(one.name, file.form(), file.settings).c_str(),
                [run = one.run, &bench, file](State& state) { run(state, bench, file); });
            if (one.waits) {
                registered->UseRealTime();
            }
        }
    }
}

void registerCounts(const Bench& bench)
{
    for (const std::size_t count : kCounts) {
        for (const CountCase& one : kCountCases) {
            benchmark::RegisterBenchmark(
                nameOf(one.name, kMade, count).c_str(),
                [run = one.run, &bench, count](State& state) { run(state, bench, count); });
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
        for (const FileCase& one : kFileCases) {
            for (const DrawingFile& file : kLoaded) {
                addFile(one.name, file);
            }
        }
        for (const FileCase& one : kLookupCases) {
            for (const DrawingFile& file : kLookedIn) {
                addGrowing(one.name, file.form(), file.settings, {kLookedIn[0].settings, 1});
            }
        }
        for (const CountCase& one : kCountCases) {
            for (const std::size_t count : kCounts) {
                addGrowing(one.name, kMade, count, {kCounts[0], static_cast<double>(count)});
            }
        }
        return m_rows;
    }

private:
    static constexpr double kNanoseconds = 1000; // in a microsecond
    static constexpr double kMostOfScan = 2;
    static constexpr double kMostOfCopy = 3;
    // From the fewest to the most: of what does the same again, and of lookups all over the
    // drawing, of which the caches of the processor hold ever less.
    static constexpr double kMostGrowth = 2;
    static constexpr double kMostGrowthOfRandom = 4;

    // What a number is held against, and how often the work was done in it.
    struct Scale
    {
        std::size_t fewest;
        double times;
    };

    [[nodiscard]] std::optional<double> time(std::string_view what, const std::string& form,
                                             std::size_t entries, double times = 1) const
    {
        const auto measured = m_medians.of(what, form, entries);
        return measured ? std::optional(*measured / kNanoseconds / times) : std::nullopt;
    }

    void addFile(std::string_view what, const DrawingFile& file)
    {
        const auto measured = time(what, file.form(), file.settings);
        if (!measured) {
            return;
        }
        Row row {std::string(what), file.form(), file.settings, *measured, {}, {}};
        if (what == kLoad || what == kLoadAndAsk) {
            row.floor = time(kScan, file.form(), file.settings);
        } else if (what == kSave) {
            row.floor = time(kCopy, file.form(), file.settings);
        }
        if (row.floor && what != kLoad) {
            row.aim = (what == kSave ? kMostOfCopy : kMostOfScan) * *row.floor;
        }
        m_rows.push_back(row);
    }

    // The fewest stand for the floor: more of them must not make one dearer.
    void addGrowing(std::string_view what, const std::string& form, std::size_t count, Scale scale)
    {
        const auto measured = time(what, form, count, scale.times);
        if (!measured) {
            return;
        }
        Row row {std::string(what), form, count, *measured, {}, {}};
        const double timesOfFewest = scale.times == 1 ? 1 : static_cast<double>(scale.fewest);
        const auto fewest = time(what, form, scale.fewest, timesOfFewest);
        if (fewest && count != scale.fewest) {
            row.floor = fewest;
            const double most = what == kRandom ? kMostGrowthOfRandom : kMostGrowth;
            if (what != kDictionary) {
                row.aim = most * *fewest;
            }
        }
        m_rows.push_back(row);
    }

    const Medians& m_medians;
    std::vector<Row> m_rows;
};

int run(int argc, char** argv)
{
    if (argc < 2 || !initialize(argc - 1, argv + 1)) {
        std::fputs("usage: corma_bench_drawing FOLDER_OF_DRAWINGS [--benchmark_...]\n", stderr);
        return EXIT_FAILURE;
    }
    Bench bench {argv[1], std::string(argv[1]) + "/work", {}};
    std::filesystem::create_directory(bench.work);
    bench.configuration = makeConfigurationFile(bench.work);
    registerFiles(bench, kLoaded, kFileCases);
    registerFiles(bench, kLookedIn, kLookupCases);
    registerCounts(bench);
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    std::filesystem::remove_all(bench.work);
    printTable(Evaluation(medians).rows(), "us");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

int main(int argc, char** argv)
{
    return corma::bench::runProgram("corma_bench_drawing", corma::bench::run, argc, argv);
}
