#include "settings/Instelling.h"

#include "foundation/wide_text.h"
#include "settings/description.h"
#include "settings/texts.h"

#include <utility>

Instelling::Instelling(const wchar_t* name, const wchar_t* value, const wchar_t* description,
                       SettingType type)
    : m_name(corma::toPacked(name == nullptr ? corma::kNoName : name))
    , m_longDescription(corma::toPacked(corma::view(description)))
    , m_value(corma::toPacked(corma::view(value)))
    , m_type(type)
{
}

Instelling::Instelling(corma::PackedText name, corma::PackedText value)
    : m_name(std::move(name))
    , m_value(std::move(value))
{
}

Instelling::Instelling(const Instelling& other)
    : m_name(other.m_name)
    , m_longDescription(other.m_longDescription)
    , m_shortDescription(other.m_shortDescription)
    , m_bitmap(other.m_bitmap)
    , m_value(other.m_value)
    , m_choices(other.m_choices)
    , m_maxValue(other.m_maxValue)
    , m_minValue(other.m_minValue)
    , m_readOnly(other.m_readOnly)
    , m_level(other.m_level)
    , m_fileTypes(other.m_fileTypes)
    , m_globalValue(other.m_globalValue)
    , m_projectValue(other.m_projectValue)
    , m_category(other.m_category)
    , m_type(other.m_type)
    , m_rgb(other.m_rgb)
    , m_isProject(other.m_isProject)
    , m_isLocal(other.m_isLocal)
    , m_shortFollowsLong(other.m_shortFollowsLong)
{
}

void Instelling::setDescription(corma::PackedText text)
{
    m_longDescription = std::move(text);
    m_shortDescription = {};
    m_shortFollowsLong = true;
}

void Instelling::setLongDescription(std::wstring_view text)
{
    setLongDescription(corma::PackedText(corma::toPacked(text)));
}

void Instelling::setLongDescription(corma::PackedText text)
{
    if (m_shortFollowsLong) {
        setShortDescription(corma::PackedText(corma::onOneLine(m_longDescription.bytes())));
    }
    m_longDescription = std::move(text);
}

std::wstring Instelling::shortDescription() const
{
    return m_shortFollowsLong ? corma::fromPacked(corma::onOneLine(m_longDescription.bytes()))
                              : m_shortDescription.wide();
}

void Instelling::setShortDescription(std::wstring_view text)
{
    setShortDescription(corma::PackedText(corma::toPacked(text)));
}

void Instelling::setShortDescription(corma::PackedText text)
{
    m_shortDescription = std::move(text);
    m_shortFollowsLong = false;
}

std::wstring Instelling::typeText() const
{
    return corma::text(corma::labelRowOf(m_type));
}

void Instelling::setProjectValue(std::wstring_view text)
{
    setProjectValue(corma::PackedText(corma::toPacked(text)));
}

void Instelling::setProjectValue(corma::PackedText text)
{
    m_globalValue = std::exchange(m_value, std::move(text));
    m_isProject = true;
    m_isLocal = false;
}

void Instelling::setLocalValue(std::wstring_view text)
{
    corma::PackedText& below = m_isProject ? m_projectValue : m_globalValue;
    below = std::exchange(m_value, corma::PackedText(corma::toPacked(text)));
    m_isProject = false;
    m_isLocal = true;
}

void Instelling::makeProjectCopy()
{
    setProjectValue(corma::PackedText(m_value));
}

// A new local copy starts as a double copy whatever was below it: callers show it as such.
void Instelling::makeLocalCopy()
{
    if (!hasProjectValue()) {
        m_projectValue = m_value;
    }
    m_globalValue = m_value;
    m_isProject = false;
    m_isLocal = true;
}

Instelling::LevelMark Instelling::levelMark() const
{
    if (!m_isProject && !m_isLocal) {
        return LevelMark::globalSetting;
    }
    const bool equalsGlobal = m_globalValue.bytes() == m_value.bytes();
    if (m_isProject) {
        return equalsGlobal ? LevelMark::projectCopyOfGlobal : LevelMark::projectSetting;
    }
    if (m_projectValue.bytes() == m_value.bytes()) {
        return equalsGlobal ? LevelMark::doubleCopy : LevelMark::copyOfProject;
    }
    return equalsGlobal ? LevelMark::localCopyOfGlobal : LevelMark::localSetting;
}

std::wstring Instelling::levelText() const
{
    switch (levelMark()) {
    case LevelMark::globalSetting:
        break;
    case LevelMark::projectSetting:
        return corma::text(corma::row::kProjectSetting);
    case LevelMark::localSetting:
        return corma::text(corma::row::kLocalSetting);
    case LevelMark::projectCopyOfGlobal:
    case LevelMark::localCopyOfGlobal:
        return corma::text(corma::row::kCopyOfGlobal);
    case LevelMark::copyOfProject:
        return corma::text(corma::row::kCopyOfProject);
    case LevelMark::doubleCopy:
        return corma::text(corma::row::kDoubleCopy);
    }
    return corma::text(corma::row::kGlobalSetting);
}
