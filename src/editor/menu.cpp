#include "editor/menu.h"

namespace corma {

namespace {

constexpr int kFrench = 12;
constexpr int kDutch = 19;
constexpr int kRussian = 25;

constexpr std::array<const wchar_t*, kMenuCommands> kEnglishItems = {L"New Project...",
                                                                     L"Open Project...",
                                                                     L"Global Settings",
                                                                     L"Project Settings",
                                                                     L"Make Project Copy",
                                                                     L"Make Local Copy",
                                                                     L"Exit",
                                                                     L"Show Global",
                                                                     L"Show Project",
                                                                     L"Show Local",
                                                                     L"Sort sections"};

constexpr MenuForm kEnglishForm = {L"&File", L"&View", kEnglishItems};
constexpr MenuForm kRussianForm = {L"&Файл", L"&Display", kEnglishItems};
constexpr MenuForm kDutchForm
    = {L"&Bestand",
       L"&Beeld",
       {L"Nieuw Project...", L"Open Project...", L"Globale Instellingen", L"Projectinstellingen",
        L"Maak Projectkopie", L"Maak Lokale Kopie", L"&Afsluiten", L"Toon Globaal", L"Toon Project",
        L"Toon Lokaal", L"Sorteer rubrieken"}};
constexpr MenuForm kFrenchForm
    = {L"&Fichier",
       L"L'&image",
       {L"Nouveau Projet...", L"Ouvrir Projet...", L"Configurations Globales",
        L"Configurations du Projet", L"Copier Projet", L"Copie Locale", L"Sortie",
        L"Montrer Global", L"Montrer Projet", L"Montrer local", L"Tri du rubrique"}};

} // namespace

const MenuForm& menuFormOf(int language)
{
    switch (language) {
    case kDutch:
        return kDutchForm;
    case kFrench:
        return kFrenchForm;
    case kRussian:
        return kRussianForm;
    default:
        return kEnglishForm;
    }
}

bool isAvailable(MenuCommand command, LevelMode mode)
{
    switch (command) {
    case MenuCommand::globalSettings:
    case MenuCommand::showGlobal:
        return mode.project || mode.local;
    case MenuCommand::projectSettings:
        return mode.project && mode.local;
    case MenuCommand::makeProjectCopy:
        return mode.project && !mode.local;
    case MenuCommand::showProject:
        return mode.project;
    case MenuCommand::makeLocalCopy:
    case MenuCommand::showLocal:
        return mode.local;
    default:
        return true;
    }
}

} // namespace corma
