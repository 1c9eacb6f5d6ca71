#include "settings/Rubriek.h"

#include "foundation/wide_text.h"
#include "host/host.h"
#include "inifile/Ident.h"
#include "inifile/drawing_settings.h"

#include <memory>

using corma::host::Opened;

namespace {

// Calls use(ident, value) for each setting of a dictionary, until something cannot be opened.
template<class Use> void forEachSetting(const AcDbDictionary& dictionary, const Use& use)
{
    const std::unique_ptr<AcDbDictionaryIterator> entries(dictionary.newIterator());
    for (; !entries->done(); entries->next()) {
        const Opened<AcDbObject> object(entries->objectId());
        if (!object) {
            return;
        }
        if (const auto value = corma::textOfRecord(*object)) {
            use(entries->name(), *value);
        }
    }
}

} // namespace

Rubriek::Rubriek(const wchar_t* name)
    : m_name(corma::toPacked(name == nullptr ? corma::kHeadChapter : name))
{
}

Rubriek::Rubriek(const wchar_t* name, const AcDbDictionary& dictionary)
    : Rubriek(name)
{
    forEachSetting(dictionary, [this](const wchar_t* ident, const std::wstring& value) {
        addLocal(ident, value);
    });
}

Rubriek::Rubriek(std::string_view name)
    : m_name(name)
{
}

void Rubriek::loadDictionary(const AcDbDictionary& dictionary)
{
    forEachSetting(dictionary, [this](const wchar_t* ident, const std::wstring& value) {
        if (Instelling* const known = m_settings.findSetting(ident)) {
            known->setLocalValue(value);
        } else {
            addLocal(ident, value);
        }
    });
}

// No level below the drawing has a value: the marker moves into the global one.
void Rubriek::addLocal(const wchar_t* ident, const std::wstring& value)
{
    auto setting = std::make_unique<Instelling>(ident, NOT_FOUND_MARKER);
    setting->setLocalValue(value);
    setting->setCategory(this);
    m_settings.addSetting(std::move(setting));
}
