#include "editor/menu.h"
#include "platform/text.h"

#include <gtest/gtest.h>

using corma::isAvailable;
using corma::kMenuCommands;
using corma::LevelMode;
using corma::MenuCommand;
using corma::MenuForm;
using corma::menuFormOf;

namespace {

struct FormRow
{
    const char* sentence;
    int language;
    const char* texts; // of the titles and the entries, "/" between
};

void PrintTo(const FormRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class MenuForms : public ::testing::TestWithParam<FormRow>
{
};

std::string titlesAndTexts(const MenuForm& form)
{
    std::string text = corma::toUtf8(form.firstTitle);
    for (std::size_t i = 0; i < kMenuCommands; ++i) {
        const auto command = static_cast<MenuCommand>(i);
        if (command == MenuCommand::showGlobal) {
            text += "/" + corma::toUtf8(form.secondTitle);
        }
        text += "/" + corma::toUtf8(form.textOf(command));
    }
    return text;
}

TEST_P(MenuForms, HaveTheirFixedTexts)
{
    EXPECT_EQ(titlesAndTexts(menuFormOf(GetParam().language)), GetParam().texts);
}

constexpr const char* kEnglishTexts
    = "&File/New Project.../Open Project.../Global Settings/Project Settings/Make Project Copy/"
      "Make Local Copy/Exit/&View/Show Global/Show Project/Show Local/Sort sections";

INSTANTIATE_TEST_SUITE_P(
    Menu, MenuForms,
    ::testing::Values(
        FormRow {"English", 9, kEnglishTexts}, FormRow {"GermanIsTheEnglishOne", 7, kEnglishTexts},
        FormRow {"SpanishIsTheEnglishOne", 10, kEnglishTexts},
        FormRow {"PolishIsTheEnglishOne", 21, kEnglishTexts},
        FormRow {"AnUnknownLanguageHasTheEnglishOne", 0, kEnglishTexts},
        FormRow {"Dutch", 19,
                 "&Bestand/Nieuw Project.../Open Project.../Globale Instellingen/"
                 "Projectinstellingen/Maak Projectkopie/Maak Lokale Kopie/&Afsluiten/&Beeld/"
                 "Toon Globaal/Toon Project/Toon Lokaal/Sorteer rubrieken"},
        FormRow {"French", 12,
                 "&Fichier/Nouveau Projet.../Ouvrir Projet.../Configurations Globales/"
                 "Configurations du Projet/Copier Projet/Copie Locale/Sortie/L'&image/"
                 "Montrer Global/Montrer Projet/Montrer local/Tri du rubrique"},
        FormRow {"RussianHasTwoTitlesOfItsOwn", 25,
                 "&Файл/New Project.../Open Project.../Global Settings/Project Settings/"
                 "Make Project Copy/Make Local Copy/Exit/&Display/Show Global/Show Project/"
                 "Show Local/Sort sections"}),
    [](const auto& row) { return row.param.sentence; });

struct AvailabilityRow
{
    const char* sentence;
    MenuCommand command;
    const char* modes; // of local project, project, local and global mode: "x" where it is enabled
};

void PrintTo(const AvailabilityRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class MenuAvailability : public ::testing::TestWithParam<AvailabilityRow>
{
};

TEST_P(MenuAvailability, FollowsTheLevels)
{
    constexpr std::array kModes
        = {LevelMode {.project = true, .local = true}, LevelMode {.project = true, .local = false},
           LevelMode {.project = false, .local = true}, LevelMode {}};
    std::string modes;
    for (const LevelMode mode : kModes) {
        modes += isAvailable(GetParam().command, mode) ? 'x' : '-';
    }
    EXPECT_EQ(modes, GetParam().modes);
}

INSTANTIATE_TEST_SUITE_P(
    Menu, MenuAvailability,
    ::testing::Values(AvailabilityRow {"NewProject", MenuCommand::newProject, "xxxx"},
                      AvailabilityRow {"OpenProject", MenuCommand::openProject, "xxxx"},
                      AvailabilityRow {"GlobalSettings", MenuCommand::globalSettings, "xxx-"},
                      AvailabilityRow {"ProjectSettings", MenuCommand::projectSettings, "x---"},
                      AvailabilityRow {"MakeProjectCopy", MenuCommand::makeProjectCopy, "-x--"},
                      AvailabilityRow {"MakeLocalCopy", MenuCommand::makeLocalCopy, "x-x-"},
                      AvailabilityRow {"Exit", MenuCommand::exit, "xxxx"},
                      AvailabilityRow {"ShowGlobal", MenuCommand::showGlobal, "xxx-"},
                      AvailabilityRow {"ShowProject", MenuCommand::showProject, "xx--"},
                      AvailabilityRow {"ShowLocal", MenuCommand::showLocal, "x-x-"},
                      AvailabilityRow {"SortSections", MenuCommand::sortCategories, "xxxx"}),
    [](const auto& row) { return row.param.sentence; });

} // namespace
