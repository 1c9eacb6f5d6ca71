#include "host/host.h"
#include "inifile/Ident.h"
#include "inifile/drawing_settings.h"
#include <corma/drawing_contents.h>

#include <memory>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace corma {

using host::Opened;

namespace {

template<class Record> std::wstring nameOfRecord(const Record& record)
{
    std::wstring name;
    record.getName(name);
    return name;
}

// Calls a function with the id and the record of each entry of a table. None is open longer than
// its call.
template<class Table, class Function> void forEachRecord(AcDbDatabase& database, Function function)
{
    Opened<Table> table;
    AcDbSymbolTableIterator* made = nullptr;
    if (database.getSymbolTable(table.out()) != Acad::eOk
        || table->newIterator(made) != Acad::eOk) {
        return;
    }
    const std::unique_ptr<AcDbSymbolTableIterator> entries(made);
    for (; !entries->done(); entries->step()) {
        AcDbObjectId id;
        entries->getRecordId(id);
        const Opened<AcDbSymbolTableRecord> record(id);
        if (record) {
            function(*record);
        }
    }
}

template<class Table> std::vector<std::wstring> namesIn(AcDbDatabase& database)
{
    std::vector<std::wstring> names;
    forEachRecord<Table>(database,
                         [&](const auto& record) { names.push_back(nameOfRecord(record)); });
    return names;
}

void addReferencesIn(const AcDbBlockTableRecord& space, std::vector<DrawingReference>& references)
{
    AcDbBlockTableRecordIterator* made = nullptr;
    if (space.newIterator(made) != Acad::eOk) {
        return;
    }
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    for (; !entities->done(); entities->step()) {
        AcDbObjectId id;
        entities->getEntityId(id);
        const Opened<AcDbBlockReference> reference(id);
        if (reference) {
            references.push_back({handleOf(reference->objectId()),
                                  recordName(reference->blockTableRecord()).value_or(L""),
                                  nameOfRecord(space)});
        }
    }
}

std::vector<DrawingReference> referencesIn(AcDbDatabase& database)
{
    std::vector<DrawingReference> references;
    forEachRecord<AcDbBlockTable>(database, [&](const AcDbSymbolTableRecord& record) {
        if (const auto* block = AcDbBlockTableRecord::cast(&record)) {
            addReferencesIn(*block, references);
        }
    });
    return references;
}

// Puts the settings of one configuration file together. Chapters whose names are the same once
// they are decoded become one; the first value of an ident counts.
class FileBuilder
{
public:
    explicit FileBuilder(std::wstring name) { m_file.name = std::move(name); }

    DrawingChapter& chapter(const std::wstring& name)
    {
        const auto [entry, isNew] = m_chapters.emplace(name, m_file.chapters.size());
        if (isNew) {
            m_file.chapters.push_back({name, {}});
        }
        return m_file.chapters[entry->second];
    }

    void add(const std::wstring& chapterName, const std::wstring& ident, const AcDbObject& record)
    {
        auto value = textOfRecord(record);
        if (value && m_idents.emplace(chapterName, ident).second) {
            chapter(chapterName).settings.push_back({ident, std::move(*value)});
        }
    }

    DrawingFile file() && { return std::move(m_file); }

private:
    DrawingFile m_file;
    std::unordered_map<std::wstring, std::size_t> m_chapters;
    std::set<std::pair<std::wstring, std::wstring>> m_idents;
};

// Reads the tree of settings. Its depth is fixed, and no dictionary is read twice, so that one that
// hangs in itself or in many others costs no more than any other.
class SettingsReader
{
public:
    std::vector<DrawingFile> read(AcDbDatabase& database)
    {
        Opened<AcDbDictionary> namedObjects;
        AcDbObjectId root;
        if (database.getNamedObjectsDictionary(namedObjects.out()) == Acad::eOk) {
            namedObjects->getAt(kSettingsRoot, root);
            namedObjects.close();
        }
        std::vector<DrawingFile> files;
        std::unordered_set<std::wstring> names;
        for (const Entry& entry : entriesOf(root)) {
            const bool isNew = isDictionary(entry.id) && m_seen.count(entry.id.stub()) == 0;
            if (isNew && names.insert(entry.name).second) {
                FileBuilder file(entry.name);
                readFile(entry.id, file);
                files.push_back(std::move(file).file());
            }
        }
        return files;
    }

private:
    struct Entry
    {
        std::wstring name;
        AcDbObjectId id;
    };

    static bool isDictionary(AcDbObjectId id)
    {
        return Opened<AcDbDictionary>(id).get() != nullptr;
    }

    // Those of a dictionary that was not met before; none of another object.
    std::vector<Entry> entriesOf(AcDbObjectId id)
    {
        std::vector<Entry> entries;
        const Opened<AcDbDictionary> dictionary(id);
        if (!dictionary || !m_seen.insert(id.stub()).second) {
            return entries;
        }
        const std::unique_ptr<AcDbDictionaryIterator> each(
            dictionary->newIterator(AcRx::kDictCollated));
        for (; !each->done(); each->next()) {
            entries.push_back({each->name(), each->objectId()});
        }
        return entries;
    }

    // The head goes first: what hangs in the dictionary of the file itself is what lookups see.
    void readFile(AcDbObjectId id, FileBuilder& file)
    {
        std::vector<Entry> chapters;
        for (const Entry& entry : entriesOf(id)) {
            const Opened<AcDbObject> object(entry.id);
            if (object && AcDbDictionary::cast(object.get()) != nullptr) {
                chapters.push_back(entry);
            } else if (object) {
                file.add(std::wstring(kHeadChapter), entry.name, *object);
            }
        }
        for (const Entry& chapter : chapters) {
            readChapter(chapter, file);
        }
    }

    void readChapter(const Entry& chapter, FileBuilder& file)
    {
        if (m_seen.count(chapter.id.stub()) != 0) {
            return;
        }
        const std::wstring name = xx_decodeKey(chapter.name);
        file.chapter(name);
        for (const Entry& entry : entriesOf(chapter.id)) {
            const Opened<AcDbObject> object(entry.id);
            if (object) {
                file.add(name, entry.name, *object);
            }
        }
    }

    std::unordered_set<const AcDbStub*> m_seen; // dictionaries
};

} // namespace

std::optional<DrawingContents> contentsOf(AcDbDatabase* database)
{
    if (database == nullptr) {
        database = acdbHostApplicationServices()->workingDatabase();
    }
    if (database == nullptr) {
        return std::nullopt;
    }
    return DrawingContents {
        .version = database->versionText(),
        .blocks = namesIn<AcDbBlockTable>(*database),
        .layers = namesIn<AcDbLayerTable>(*database),
        .linetypes = namesIn<AcDbLinetypeTable>(*database),
        .textStyles = namesIn<AcDbTextStyleTable>(*database),
        .references = referencesIn(*database),
        .settings = SettingsReader().read(*database),
    };
}

std::optional<std::wstring> recordName(AcDbObjectId id)
{
    const Opened<AcDbSymbolTableRecord> record(id);
    return record ? std::optional(nameOfRecord(*record)) : std::nullopt;
}

} // namespace corma
