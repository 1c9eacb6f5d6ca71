#include "editor/VisForm.h"

#include "editor/Desk.h"
#include "editor/visual_value.h"
#include "host/acdb_database.h"
#include "inifile/visual_words.h"

namespace corma {

namespace {

enum Field : std::size_t
{
    layerField,
    colourField,
    linetypeField,
    lineweightField,
    visualFields // the number of them
};

template<class Entry> std::vector<std::wstring> namesOf(const std::vector<Entry>& entries)
{
    std::vector<std::wstring> names;
    names.reserve(entries.size());
    for (const Entry& entry : entries) {
        names.push_back(entry.name);
    }
    return names;
}

std::wstring valueOf(const Desk& desk)
{
    const Instelling* const setting = desk.selectedSetting();
    return setting == nullptr ? std::wstring() : setting->value();
}

} // namespace

VisForm::VisForm(const Desk& desk)
    : SettingForm(desk)
    , m_valueAtStart(valueOf(desk))
{
    // The boxes go by the modes alone: what a setting allows its own levels does not count here
    // (test: TheBoxesGoByTheModesAlone).
    const LevelMode mode = desk.mode();
    setTickBoxes({.isShown = mode.project || mode.local}, {.isShown = mode.project && mode.local});
    take(m_valueAtStart);
}

VisForm::VisForm(const Desk& desk, const std::wstring& value, std::size_t mostCharacters)
    : SettingForm(desk)
    , m_valueAtStart(value)
    , m_mostCharacters(mostCharacters)
{
    setTickBoxes({}, {});
    take(value);
}

void VisForm::take(const std::wstring& value)
{
    m_layers = layersOfDrawing();
    m_linetypes = linetypesOfDrawing();
    m_layer = NameChoice(namesOf(m_layers));
    m_linetype = NameChoice(namesOf(m_linetypes));
    const std::vector<std::wstring> fields = fieldsOf(value, visualFields);
    m_layer.take(fields[layerField]);
    m_colour = colourFromText(fields[colourField]);
    m_linetype.take(fields[linetypeField]);
    m_lineweight = lineweightFromText(fields[lineweightField]);
}

// --- what is shown -------------------------------------------------------------------------------

std::optional<host::Rgb> VisForm::colourOfLayer() const
{
    if (m_layer.isTyped() || !m_layer.chosen()) {
        return std::nullopt;
    }
    return host::colorOfIndex(m_layers[*m_layer.chosen()].colour);
}

std::optional<host::Rgb> VisForm::shownColour() const
{
    return m_colour == host::kColorByLayer ? colourOfLayer() : host::colorOfIndex(m_colour);
}

std::vector<int> VisForm::lineweights()
{
    std::vector<int> weights = {AcDb::kLnWtByLayer, AcDb::kLnWtByBlock, AcDb::kLnWtByLwDefault};
    for (int weight = AcDb::kLnWt000; weight <= AcDb::kLnWt211; ++weight) {
        if (AcDbDatabase::getNearestLineWeight(weight) == weight) {
            weights.push_back(weight);
        }
    }
    return weights;
}

// --- the end -------------------------------------------------------------------------------------

std::vector<std::wstring> VisForm::fields() const
{
    return {m_layer.name(), colourText(m_colour), m_linetype.name(), lineweightText(m_lineweight)};
}

std::wstring VisForm::value() const
{
    return joinedFields(fields());
}

// No callback is asked and no limit holds here. A value that was handed in for a place of some size
// must fit into it: cut, it would be another.
bool VisForm::accept()
{
    std::wstring built = value();
    if (!isValid(built)) {
        return false;
    }
    if (m_mostCharacters && built.size() > *m_mostCharacters) {
        tellWrongType();
        return false;
    }
    m_accepted = built;
    Instelling* const found = setting();
    if (!m_mostCharacters && found != nullptr) {
        store(*found, m_accepted, ValueEditor::visual);
    }
    return true;
}

} // namespace corma
