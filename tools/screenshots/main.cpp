// Pictures of every dialog of the editor in one language and palette, from a copy of the example
// family. Nothing is shown on a screen: tools/screenshots.sh runs it with Qt's offscreen platform.
//
// corma_screenshots OUT_FOLDER EXAMPLE_FOLDER LANGUAGE SUFFIX [--dark] [--only NAME]

#include "camera.h"
#include "controls/AboutBox.h"
#include "controls/CColorListCtrl.h"
#include "controls/CategoryTreeView.h"
#include "controls/xx_aboutDlg.h"
#include "editor/CCfgDeskExeDlg.h"
#include "editor/DialogServices.h"
#include "editor/xx_attUpdateDlg.h"
#include <corma/attributes.h>
#include <corma/blocks.h>
#include <corma/cfgdesk.h>
#include <corma/host.h>
#include <corma/texts.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTreeView>

#include <array>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace {

using screenshots::Camera;

// A user who remembers nothing.
class NoPreferences : public corma::Preferences
{
public:
    [[nodiscard]] bool sortCategories() const override { return false; }

    void setSortCategories(bool /*sort*/) override { }
};

struct Shot
{
    const char* name;
    const wchar_t* category;
    const wchar_t* ident;
};

// A setting for each kind of input, with and without picture and limits.
constexpr std::array kSettings = {
    Shot {"edit-text", L"General", L"StatusTekst"},
    Shot {"edit-yes-no", L"General", L"AutoOpslaan"},
    Shot {"edit-number", L"General", L"AutoOpslaanMinuten"},
    Shot {"edit-file", L"General", L"Sjabloon"},
    Shot {"edit-option", L"Trappen", L"Materiaal"},
    Shot {"edit-picture", L"Tekst", L"Hoogte"},
    Shot {"edit-levels", L"Plot", L"Schaal"},
    Shot {"edit-visual", L"Lagen", L"Buitenwand"},
    Shot {"edit-text-style", L"Tekst", L"Titel"},
    Shot {"colour", L"Tekst", L"Kleur"},
    Shot {"edit-hatch", L"Arcering", L"Metselwerk"},
};

template<class Widget> Widget& find(QWidget& dialog, const char* name)
{
    auto* const found = dialog.findChild<Widget*>(QLatin1StringView(name));
    if (found == nullptr) {
        throw std::runtime_error(std::string("no widget is called ") + name);
    }
    return *found;
}

void press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent down(QEvent::KeyPress, key, modifiers);
    QKeyEvent up(QEvent::KeyRelease, key, modifiers);
    QApplication::sendEvent(&widget, &down);
    QApplication::sendEvent(&widget, &up);
}

QModelIndex rowCalled(const QAbstractItemModel& model, const QModelIndex& parent,
                      const QString& text)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        if (index.data().toString() == text) {
            return index;
        }
        if (const QModelIndex below = rowCalled(model, index, text); below.isValid()) {
            return below;
        }
    }
    return {};
}

// The root of the tree bears a word of the language.
QString categoryText(const wchar_t* category)
{
    constexpr int kGeneral = 2972;
    return std::wstring_view(category) == L"General"
        ? QString::fromWCharArray(corma::textOf(kGeneral, corma::textLanguage()))
        : QString::fromWCharArray(category);
}

void select(QWidget& dialog, const wchar_t* category, const wchar_t* ident)
{
    auto& tree = find<QTreeView>(dialog, "tree");
    tree.setCurrentIndex(rowCalled(*tree.model(), {}, categoryText(category)));
    auto& list = find<QTreeView>(dialog, "list");
    const QModelIndex row = rowCalled(*list.model(), {}, QString::fromWCharArray(ident));
    if (!row.isValid()) {
        throw std::runtime_error("a setting of the pictures is not in the example");
    }
    list.setCurrentIndex(row);
    list.setFocus();
}

void takeEditors(Camera& camera, QWidget& dialog)
{
    for (const Shot& shot : kSettings) {
        camera.takeModal(shot.name, [&] {
            select(dialog, shot.category, shot.ident);
            press(find<QTreeView>(dialog, "list"), Qt::Key_F2);
        });
    }
}

// The lists of a visualisation, open.
void takeLists(Camera& camera, QWidget& dialog)
{
    for (const auto& [picture, list] :
         {std::pair("list-layers", "layerList"), std::pair("list-linetypes", "linetypeList"),
          std::pair("list-lineweights", "lineweight")}) {
        const auto edit = [&] {
            select(dialog, L"Lagen", L"Buitenwand");
            press(find<QTreeView>(dialog, "list"), Qt::Key_F2);
        };
        camera.takeModal(picture, edit, [name = list](QWidget& shown) -> QWidget& {
            auto& box = find<QComboBox>(shown, name);
            box.showPopup();
            return *box.view()->window();
        });
    }
}

void takeQuestions(Camera& camera, QWidget& dialog)
{
    camera.takeModal("new-category", [&] { find<QPushButton>(dialog, "newCategory").click(); });
    camera.takeModal("new-setting", [&] { find<QPushButton>(dialog, "newSetting").click(); });
    camera.takeModal("question", [&] {
        select(dialog, L"Tekst", L"Hoogte");
        press(find<QTreeView>(dialog, "list"), Qt::Key_Delete);
    });
    camera.takeModal("about", [&] { find<QAction>(dialog, "about").trigger(); });
    camera.takeModal("help", [&] { find<QPushButton>(dialog, "help").click(); });
    camera.takeModal("hatch-palette", [] {
        std::array<wchar_t, 64> chosen {};
        xx_showHatchPalleteDialog(L"ANSI31", false, chosen.data(), chosen.size());
    });
}

// As an add-on with a version note shows it, but with a date that stays.
void takeAboutBox(Camera& camera, const std::wstring& example)
{
    corma::AboutBox box;
    box.appName = L"Plattegrond, plans of buildings";
    box.appVersion = L"4.2.1";
    box.menuVersion = corma::versionOfMenu((example + L"/plattegrond.mnu").c_str());
    box.appDate = L"07/07/2026 09:05:09";
    box.copyright = L"Copyright (c) 2026 Korvane";
    box.setRows({L"Software\t4.2\tPlattegrond\tyes", L"Software\t2018\tWoonhuis\tyes",
                 L"Hardware\t0017\tDongle\tno", L"Hardware\t2\tPlotter A1\tyes"});
    const QImage picture(QString::fromStdWString(example + L"/optrede.png"));
    camera.takeModal("about-box", [&] { xx_aboutDlg(box, &picture, corma::windowInUse()).exec(); });
}

void takeMenus(Camera& camera, QWidget& dialog)
{
    auto& menuBar = find<QMenuBar>(dialog, "menu");
    const QList<QAction*> titles = menuBar.actions();
    for (qsizetype i = 0; i < titles.size(); ++i) {
        QMenu* const menu = titles[i]->menu();
        menu->ensurePolished();
        menu->adjustSize();
        camera.take(i == 0 ? "menu-file" : "menu-view", *menu);
    }
}

void takeSearch(Camera& camera, QWidget& dialog)
{
    select(dialog, L"Trappen", L"Materiaal");
    auto& field = find<QLineEdit>(dialog, "searchText");
    field.setFocus();
    field.setText(QStringLiteral("optrede+materiaal"));
    Q_EMIT field.textEdited(field.text());
    find<QPushButton>(dialog, "searchButton").click();
    camera.take("main-search", dialog);
}

// Takes the picture of the dialog in place of showing it.
class PhotographedUpdate : public corma::AttributeUpdateChooser
{
public:
    explicit PhotographedUpdate(Camera& camera)
        : m_camera(camera)
    {
    }

    bool choose(corma::AttributeUpdate& update) override
    {
        xx_attUpdateDlg dialog(update);
        dialog.show();
        auto& rows = find<QTreeView>(dialog, "rows");
        rows.setCurrentIndex(rows.model()->index(0, 0));
        m_camera.take("attributes", dialog);
        return false;
    }

private:
    Camera& m_camera;
};

// The doors of the example after the newer one was loaded.
void takeAttributes(Camera& camera, const std::wstring& example)
{
    std::wstring door = example + L"/nieuw/deur.dwg!$PG-DEUR-ENKEL";
    int status = 0;
    xx_findblk(door.data(), &status);
    PhotographedUpdate chooser(camera);
    corma::updateAttributes(corma::AttributeUpdateMode::references, nullptr, chooser);
}

void takeAll(Camera& camera, const std::wstring& example, int language)
{
    const corma::DialogServices services;
    NoPreferences preferences;
    if (!corma::openDocument((example + L"/project/woonhuis.dxf").c_str())) {
        throw std::runtime_error("the drawing of the example cannot be opened");
    }
    corma::DeskStart start;
    start.request.iniFile = example + L"/plattegrond.ini";
    start.request.language = language;
    start.request.document = corma::currentDocument();
    {
        CCfgDeskExeDlg dialog(start, preferences);
        dialog.show();
        select(dialog, L"Tekst", L"Hoogte");
        camera.take("main", dialog);
        if (!camera.isDone()) {
            takeEditors(camera, dialog);
            takeQuestions(camera, dialog);
            takeLists(camera, dialog);
            takeAboutBox(camera, example);
            takeMenus(camera, dialog);
            takeSearch(camera, dialog);
        }
    }
    if (!camera.isDone()) {
        start.request.document = nullptr;
        start.clean = start.startLocal = start.startProject = true;
        CCfgDeskExeDlg dialog(start, preferences);
        dialog.show();
        camera.take("main-clean", dialog);
    }
    if (!camera.isDone()) {
        takeAttributes(camera, example);
    }
    corma::closeDocument();
}

int run(const QStringList& arguments)
{
    constexpr qsizetype kLeast = 5;
    if (arguments.size() < kLeast) {
        throw std::runtime_error("usage: corma_screenshots OUT EXAMPLE LANGUAGE SUFFIX [--dark]"
                                 " [--only NAME]");
    }
    const qsizetype only = arguments.indexOf(QStringLiteral("--only"));
    if (arguments.contains(QStringLiteral("--dark"))) {
        QApplication::setPalette(screenshots::darkPalette());
    }
    Camera camera(arguments[1], arguments[4], only > 0 ? arguments.value(only + 1) : QString());
    takeAll(camera, arguments[2].toStdWString(), arguments[3].toInt());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    try {
        return run(QApplication::arguments());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "corma_screenshots: %s\n", error.what());
        return 1;
    }
}
