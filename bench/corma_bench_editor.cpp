// Times of the editor on large files, with its widgets and without a screen: from what the user
// does until the window is drawn anew.

#include "bench_table.h"
#include "benchmark_run.h"
#include "editor/CCfgDeskExeDlg.h"
#include "model_family.h"
#include "no_preferences.h"
#include "sample_files.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeView>

#include <array>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace corma::bench {

namespace {

constexpr std::size_t kSettings = 100'000;
constexpr std::array<std::size_t, 3> kCategories = {1, 10, 10'000};

constexpr const char* kOpen = "open the editor";
constexpr const char* kSelect = "select a category";
constexpr const char* kSearch = "search, and stop it";
constexpr const char* kMove = "next setting by a key";

// What people take for at once; opening may take as long as a click on a program's icon.
constexpr double kAtOnce = 100; // ms
constexpr double kWhileOpening = 1000; // ms
constexpr double kMillisecond = 1e6; // ns

void press(QWidget& widget, Qt::Key key)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

// The editor on a family, drawn.
class OpenEditor
{
public:
    explicit OpenEditor(const ModelFamily& family)
        : m_dialog(startOn(family), m_preferences)
        , m_tree(find<QTreeView>("tree"))
        , m_list(find<QTreeView>("list"))
        , m_search(find<QLineEdit>("searchText"))
    {
        m_dialog.setAccessLevel(std::numeric_limits<short>::max());
        m_dialog.show();
        draw();
        require(m_dialog.desk().tree().first() != nullptr, "there are categories");
    }

    // The second category, or the first one again where there is no other.
    void selectOther(bool isOdd)
    {
        const QAbstractItemModel& model = *m_tree.model();
        const QModelIndex root = model.index(0, 0);
        const int last = model.rowCount(root) - 1;
        m_tree.setCurrentIndex(isOdd ? model.index(0, 0, root) : model.index(last, 0, root));
        draw();
    }

    void search(const QString& text)
    {
        m_search.setText(text);
        Q_EMIT m_search.textEdited(text);
        require(QMetaObject::invokeMethod(&find<QAbstractButton>("searchButton"), "click"),
                "the button is pressed");
        draw();
    }

    void moveDown()
    {
        press(m_list, Qt::Key_Down);
        draw();
    }

    [[nodiscard]] std::size_t rows() const { return m_dialog.desk().rows().size(); }

private:
    static DeskStart startOn(const ModelFamily& family)
    {
        DeskStart start;
        start.request.iniFile = family.names.globalFolder + family.names.fileName;
        return start;
    }

    template<class Widget> Widget& find(const char* name)
    {
        auto* const widget = m_dialog.findChild<Widget*>(QLatin1StringView(name));
        require(widget != nullptr, name);
        return *widget;
    }

    void draw()
    {
        m_dialog.repaint();
        QApplication::processEvents();
    }

    NoPreferences m_preferences;
    CCfgDeskExeDlg m_dialog;
    QTreeView& m_tree;
    QTreeView& m_list;
    QLineEdit& m_search;
};

void open(benchmark::State& state, const ModelFamily& family)
{
    for ([[maybe_unused]] const auto& once : state) {
        auto editor = std::make_unique<OpenEditor>(family);
        state.PauseTiming(); // letting go of it is no part of the opening
        editor.reset();
        state.ResumeTiming();
    }
}

void select(benchmark::State& state, const ModelFamily& family)
{
    OpenEditor editor(family);
    bool isOdd = false;
    for ([[maybe_unused]] const auto& once : state) {
        isOdd = !isOdd;
        editor.selectOther(isOdd);
    }
    require(editor.rows() == family.settings / family.categories, "all settings are listed");
}

void search(benchmark::State& state, const ModelFamily& family)
{
    OpenEditor editor(family);
    editor.selectOther(true);
    const std::size_t all = editor.rows();
    for ([[maybe_unused]] const auto& once : state) {
        editor.search(QStringLiteral("7+nowhere to be found"));
        require(editor.rows() < all, "the search leaves some out");
        editor.search(QString());
    }
    require(editor.rows() == all, "all settings are listed again");
}

void move(benchmark::State& state, const ModelFamily& family)
{
    OpenEditor editor(family);
    editor.selectOther(true);
    for ([[maybe_unused]] const auto& once : state) {
        editor.moveDown();
    }
}

using Measure = void (*)(benchmark::State& state, const ModelFamily& family);

struct Work
{
    const char* what;
    Measure measure;
    double aim; // ms
};

constexpr std::array<Work, 4> kWorks = {{
    {kOpen, open, kWhileOpening},
    {kSelect, select, kAtOnce},
    {kSearch, search, 2 * kAtOnce},
    {kMove, move, kAtOnce},
}};

int run(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    if (!initialize(argc, argv)) {
        return EXIT_FAILURE;
    }
    const SampleFolder folder;
    std::vector<ModelFamily> families;
    for (const std::size_t categories : kCategories) {
        families.push_back(makeFamily(folder.newFolder() + "/", kSettings, categories));
    }
    for (const Work& work : kWorks) {
        for (const ModelFamily& family : families) {
            benchmark::RegisterBenchmark(nameOf(work.what, family.form(), family.settings).c_str(),
                                         work.measure, family);
        }
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    std::vector<Row> rows;
    for (const Work& work : kWorks) {
        for (const ModelFamily& family : families) {
            if (const auto time = medians.of(work.what, family.form(), family.settings)) {
                rows.push_back({work.what,
                                family.form(),
                                family.settings,
                                *time / kMillisecond,
                                {},
                                work.aim});
            }
        }
    }
    printTable(rows, "ms");
    return EXIT_SUCCESS;
}

} // namespace

} // namespace corma::bench

int main(int argc, char** argv)
{
    return corma::bench::runProgram("corma_bench_editor", corma::bench::run, argc, argv);
}
