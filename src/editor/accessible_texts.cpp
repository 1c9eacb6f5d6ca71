#include "editor/accessible_texts.h"

#include <corma/texts.h>

#include <algorithm>
#include <array>

namespace corma {

namespace {

constexpr std::size_t kTexts = 15;

struct Column
{
    int language;
    std::array<const wchar_t*, kTexts> texts; // in the order of AccessibleText
};

// clang-format off
constexpr std::array<Column, 7> kColumns = {{
    {kEnglish, {L"Categories", L"Settings", L"New category", L"New setting", L"Text to search for",
                L"Description", L"Picture", L"Level", L"Block", L"Block reference",
                L"New attribute", L"Extra attribute", L"Choose another source drawing",
                L"From the list", L"Other name"}},
    {7, {L"Kategorien", L"Einstellungen", L"Neue Kategorie", L"Neue Einstellung", L"Suchtext",
         L"Beschreibung", L"Bild", L"Ebene", L"Block", L"Blockreferenz", L"Neues Attribut",
         L"Überzähliges Attribut", L"Andere Quellzeichnung wählen",
         L"Aus der Liste", L"Anderer Name"}},
    {10, {L"Categorías", L"Configuraciones", L"Nueva categoría", L"Nueva configuración",
          L"Texto que buscar", L"Descripción", L"Imagen", L"Nivel", L"Bloque",
          L"Referencia de bloque", L"Atributo nuevo", L"Atributo sobrante",
          L"Elegir otro dibujo de origen", L"De la lista", L"Otro nombre"}},
    {12, {L"Catégories", L"Paramètres", L"Nouvelle catégorie", L"Nouveau paramètre",
          L"Texte à chercher", L"Description", L"Image", L"Niveau", L"Bloc",
          L"Référence de bloc", L"Nouvel attribut", L"Attribut en trop",
          L"Choisir un autre dessin source", L"De la liste", L"Autre nom"}},
    {19, {L"Rubrieken", L"Instellingen", L"Nieuwe rubriek", L"Nieuwe instelling", L"Zoektekst",
          L"Beschrijving", L"Afbeelding", L"Niveau", L"Blok", L"Blokverwijzing", L"Nieuw attribuut",
          L"Overtollig attribuut", L"Andere brontekening kiezen",
          L"Uit de lijst", L"Andere naam"}},
    {21, {L"Kategorie", L"Ustawienia", L"Nowa kategoria", L"Nowe ustawienie", L"Szukany tekst",
          L"Opis", L"Obraz", L"Poziom", L"Blok", L"Odniesienie do bloku", L"Nowy atrybut",
          L"Zbędny atrybut", L"Wybierz inny rysunek źródłowy", L"Z listy", L"Inna nazwa"}},
    {25, {L"Категории", L"Параметры", L"Новая категория", L"Новый параметр", L"Искомый текст",
          L"Описание", L"Рисунок", L"Уровень", L"Блок", L"Вхождение блока",
          L"Новый атрибут", L"Лишний атрибут", L"Выбрать другой исходный чертёж",
          L"Из списка", L"Другое имя"}},
}};
// clang-format on

} // namespace

std::wstring accessibleText(AccessibleText what)
{
    const auto* found = std::find_if(kColumns.begin(), kColumns.end(), [](const Column& column) {
        return column.language == textLanguage();
    });
    const Column& column = found == kColumns.end() ? kColumns.front() : *found;
    return column.texts[static_cast<std::size_t>(what)];
}

} // namespace corma
