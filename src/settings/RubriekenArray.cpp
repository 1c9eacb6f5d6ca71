#include "settings/RubriekenArray.h"

#include "host/host.h"
#include "inifile/Ident.h"
#include "inifile/drawing_settings.h"
#include "platform/text.h"

using corma::host::Opened;

namespace {

Opened<AcDbDictionary> dictionaryIn(const AcDbDictionary& parent, const std::wstring& key)
{
    AcDbObjectId id;
    return parent.getAt(key.c_str(), id) == Acad::eOk ? Opened<AcDbDictionary>(id)
                                                      : Opened<AcDbDictionary>();
}

// What a drawing holds for a configuration file; null for nothing.
Opened<AcDbDictionary> dictionaryOf(AcDbDatabase& database, const std::wstring& fileName)
{
    Opened<AcDbDictionary> namedObjects;
    if (database.getNamedObjectsDictionary(namedObjects.out()) != Acad::eOk) {
        return {};
    }
    const auto root = dictionaryIn(*namedObjects, corma::kSettingsRoot);
    return root ? dictionaryIn(*root, corma::upperCase(fileName)) : Opened<AcDbDictionary>();
}

} // namespace

int RubriekenArray::addCategory(std::unique_ptr<Rubriek> category)
{
    m_index.add(category->packedName(), nameAt());
    m_categories.push_back(std::move(category));
    return static_cast<int>(m_categories.size()) - 1;
}

Rubriek* RubriekenArray::findCategory(std::wstring_view name) const
{
    return findPacked(corma::toPacked(name));
}

Rubriek* RubriekenArray::findPacked(std::string_view name) const
{
    if (m_categories.empty()) {
        return nullptr;
    }
    const std::size_t place = m_index.find(name, nameAt());
    return m_categories[place == corma::NameIndex::kNowhere ? 0 : place].get();
}

bool RubriekenArray::hasCategory(std::wstring_view name) const
{
    return hasPacked(corma::toPacked(name));
}

bool RubriekenArray::hasPacked(std::string_view name) const
{
    return m_index.find(name, nameAt()) != corma::NameIndex::kNowhere;
}

std::vector<Rubriek*> RubriekenArray::filterByPattern(const wchar_t* pattern) const
{
    std::vector<Rubriek*> fitting;
    for (const auto& category : m_categories) {
        const std::wstring name = category->name();
        if (acutWcMatch(name.c_str(), pattern) == RTNORM || name == corma::kHeadChapter) {
            fitting.push_back(category.get());
        }
    }
    return fitting;
}

void RubriekenArray::loadDrawing(AcDbDatabase* database, const FileNameSet& fileNames)
{
    localMode = true;
    if (database == nullptr) {
        return;
    }
    const auto dictionary = dictionaryOf(*database, fileNames.fileName);
    if (!dictionary) {
        return;
    }
    // The settings of the head stand in the dictionary of the file itself.
    if (Rubriek* const head = findCategory(corma::kHeadChapter)) {
        head->loadDictionary(*dictionary);
    }
    const std::unique_ptr<AcDbDictionaryIterator> entries(dictionary->newIterator());
    for (; !entries->done(); entries->next()) {
        const Opened<AcDbObject> object(entries->objectId());
        if (!object) {
            return;
        }
        if (const auto* const chapter = AcDbDictionary::cast(object.get())) {
            loadChapter(xx_decodeKey(entries->name()), *chapter);
        }
    }
}

void RubriekenArray::loadChapter(const std::wstring& name, const AcDbDictionary& dictionary)
{
    if (hasCategory(name)) {
        findCategory(name)->loadDictionary(dictionary);
    } else {
        addCategory(std::make_unique<Rubriek>(name.c_str(), dictionary));
    }
}
