// Times of the dialogs for values, of attribute updates, and of the grid list, with their widgets
// and without a screen: until what the user asked for is drawn.

#include "bench_table.h"
#include "benchmark_run.h"
#include "drawing/attribute_update.h"
#include "drawing_work.h"
#include "editor/EditDlgVis.h"
#include "editor/xx_attUpdateDlg.h"
#include "host/host.h"
#include "no_preferences.h"
#include "references.h"
#include "sample_files.h"
#include <corma/xx_gridListCtrl.h>

#include <QApplication>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace corma::bench {

namespace {

using benchmark::State;

constexpr const char* kVisual = "open a visualisation";
constexpr const char* kUpdate = "show an attribute update";
constexpr const char* kFill = "fill a grid list, size it";
constexpr const char* kMove = "next cell by a key";

// What people take for at once; finding what an update shows takes its time before.
constexpr double kAtOnce = 100; // ms
constexpr double kWhileOpening = 1000; // ms
constexpr double kMillisecond = 1e6; // ns
constexpr int kColumns = 5;

// The desk shows nothing itself.
class NoView : public DeskView
{
public:
    void showTree() override { }

    void showList() override { }

    void showState() override { }

    void fitNames() override { }

    void focusOn(Pane /*pane*/) override { }

    std::optional<NewName> askName(NameOf /*what*/) override { return {}; }

    std::optional<std::wstring> askProject(const ProjectQuestion& /*question*/) override
    {
        return {};
    }

    bool editSetting() override { return false; }

    void editFile(const std::wstring& /*file*/) override { }

    void endDialog() override { }
};

void draw(QWidget& widget)
{
    widget.show();
    widget.repaint();
    QApplication::processEvents();
}

// --- visualisations ------------------------------------------------------------------------------

void addLayers(std::size_t count)
{
    host::Opened<AcDbLayerTable> layers;
    AcDbDatabase& database = *acdbHostApplicationServices()->workingDatabase();
    require(database.getLayerTable(layers.out(), AcDb::kForWrite) == Acad::eOk, "layers open");
    for (std::size_t i = 0; i < count; ++i) {
        auto layer = std::make_unique<AcDbLayerTableRecord>();
        layer->setName((L"LAYER-" + std::to_wstring(i)).c_str());
        require(layers->add(layer.get()) == Acad::eOk, "a layer is added");
        layer.release()->close();
    }
}

void openVisual(State& state, std::size_t layers)
{
    const SampleFolder folder;
    const std::string path = folder.newFolder();
    std::ofstream(path + "/tool.ini") << "A=LAYER-1,1,Continuous,0.25\n";
    std::ofstream(path + "/tool.inr") << "A=v\n";
    DeskStart start;
    start.request.iniFile = std::filesystem::path(path + "/tool.ini").wstring();
    NoPreferences preferences;
    NoView view;
    Desk desk(start, preferences);
    desk.open(view);
    desk.selectRows({0}, 0);
    const WorkingDrawing drawing;
    addLayers(layers);
    for ([[maybe_unused]] const auto& once : state) {
        auto dialog = std::make_unique<EditDlgVis>(desk);
        draw(*dialog);
        state.PauseTiming(); // letting go of it is no part of the opening
        dialog.reset();
        state.ResumeTiming();
    }
}

// --- attribute updates ---------------------------------------------------------------------------

void showUpdate(State& state, const References& drawing)
{
    const WorkingDrawing loaded(drawing.path());
    AttributeUpdate found;
    found.outOfDateRefs = xx_find_out_of_date_refs(L"*");
    require(static_cast<std::size_t>(found.outOfDateRefs.length()) == drawing.count / 2,
            "references out of date");
    for ([[maybe_unused]] const auto& once : state) {
        auto dialog = std::make_unique<xx_attUpdateDlg>(found);
        draw(*dialog);
        state.PauseTiming();
        dialog.reset();
        state.ResumeTiming();
    }
}

// --- grid lists ----------------------------------------------------------------------------------

void fill(xx_gridListCtrl& grid, int rows)
{
    grid.setGridStyle(0);
    for (int column = 0; column < kColumns; ++column) {
        grid.insertColumn(column, {QString::number(column)});
    }
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            grid.setCellText(row, column, 0, QString::number(row * kColumns + column), QString());
        }
    }
    require(grid.autoSizeColumns() == kColumns, "all columns are sized");
    draw(grid);
}

void fillGrid(State& state, std::size_t rows)
{
    for ([[maybe_unused]] const auto& once : state) {
        auto grid = std::make_unique<xx_gridListCtrl>();
        fill(*grid, static_cast<int>(rows));
        state.PauseTiming();
        grid.reset();
        state.ResumeTiming();
    }
}

void moveInGrid(State& state, std::size_t rows)
{
    xx_gridListCtrl grid;
    fill(grid, static_cast<int>(rows));
    int moves = 0;
    for ([[maybe_unused]] const auto& once : state) {
        grid.onKeyDown(++moves % 2 != 0 ? Qt::Key_Down : Qt::Key_Right);
        draw(grid);
    }
}

// --- the table -----------------------------------------------------------------------------------

struct Case
{
    const char* what;
    std::string form;
    std::size_t entries;
    double aim; // ms
    std::function<void(State& state)> measure;
};

std::vector<Case> allCases()
{
    std::vector<Case> cases;
    for (const std::size_t layers : {10, 1'000, 10'000}) {
        cases.push_back({kVisual, "layers", layers, kAtOnce,
                         [layers](State& state) { openVisual(state, layers); }});
    }
    for (const References drawing :
         {References {1'000, 1}, References {100'000, 1}, References {100'000, 100}}) {
        cases.push_back({kUpdate, drawing.form(), drawing.count, kWhileOpening,
                         [drawing](State& state) { showUpdate(state, drawing); }});
    }
    for (const std::size_t rows : {100, 10'000, 100'000}) {
        cases.push_back(
            {kFill, "rows", rows, kWhileOpening, [rows](State& state) { fillGrid(state, rows); }});
        cases.push_back(
            {kMove, "rows", rows, kAtOnce, [rows](State& state) { moveInGrid(state, rows); }});
    }
    return cases;
}

int run(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    if (argc < 2 || !initialize(argc - 1, argv + 1)) {
        std::fputs("usage: corma_bench_dialogs FOLDER_OF_DRAWINGS [--benchmark_...]\n", stderr);
        return EXIT_FAILURE;
    }
    std::filesystem::current_path(argv[1]); // where a drawing is found by its name alone
    const std::vector<Case> cases = allCases();
    for (const Case& one : cases) {
        benchmark::RegisterBenchmark(nameOf(one.what, one.form, one.entries).c_str(), one.measure);
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    std::vector<Row> rows;
    for (const Case& one : cases) {
        if (const auto time = medians.of(one.what, one.form, one.entries)) {
            rows.push_back({one.what, one.form, one.entries, *time / kMillisecond, {}, one.aim});
        }
    }
    printTable(rows, "ms");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

int main(int argc, char** argv)
{
    return corma::bench::runProgram("corma_bench_dialogs", corma::bench::run, argc, argv);
}
