// Settings and categories taken out of files and drawings.

#include "foundation/text_rewrite.h"
#include "host/host.h"
#include "inifile/Ident.h"
#include "inifile/drawing_settings.h"
#include "platform/text.h"
#include "settings/RubriekenArray.h"
#include "settings/line_edits.h"
#include "settings/messages.h"
#include "settings/saving.h"
#include "settings/texts.h"

#include <algorithm>
#include <functional>

using corma::host::Opened;

namespace {

// These two are the same in every language.
constexpr const wchar_t* kNotAllRemoved
    = L"Een van de onderliggende instellingen kon niet verwijderd worden. "
      L"Daarom kan de rubriek niet verwijderd worden.";
constexpr const wchar_t* kCategoryRemoved = L"Rubriek succesvol verwijderd.";

using corma::MessageIcon;
using corma::RewriteFailure;
using corma::TextEdit;

// Where a file stands, and the edit of its text that is wanted; nothing for a text to which it does
// not apply.
struct Removal
{
    std::wstring path;
    std::wstring temporary;
    std::function<std::optional<TextEdit>(std::string_view text, std::string_view lineEnd)> edit;
};

struct Removed
{
    bool isFileWritten = false;
    bool hasEdit = false;
};

// A file that is not there counts as empty, and is made so; one that may not be changed stays whole
// (test: AFileThatMayNotBeWrittenStaysWhole).
Removed removeLine(const Removal& removal)
{
    Removed removed;
    bool wasThere = false;
    RewriteFailure failure;
    {
        corma::TextRewrite file(removal.path, removal.temporary,
                                corma::TextRewrite::Missing::isEmpty);
        const auto edit = removal.edit(file.text(), file.lineEnd());
        const TextEdit applied = edit.value_or(corma::editOfNothing(file.text(), file.lineEnd()));
        removed = {file.replace(applied.appliedTo(file.text())), edit.has_value()};
        wasThere = file.isThere();
        failure = file.failure();
    }
    if (!wasThere) {
        corma::showMessage(corma::text(corma::row::kFileNotFound) + removal.path,
                           MessageIcon::stop);
    } else if (failure.step == RewriteFailure::Step::write
               && failure.error.cause == corma::platform::FileError::Cause::denied) {
        corma::showMessage(removal.path + L" : " + corma::text(corma::row::kCannotOpenForWrite),
                           MessageIcon::stop);
    }
    corma::tellCause(removal.path, failure);
    return removed;
}

void removeRecord(const FileNameSet& fileNames, const Rubriek& owner, const std::wstring& ident,
                  AcDbDatabase* database)
{
    Opened<AcDbDictionary> dictionary;
    const Acad::ErrorStatus status = xx_dictionaryFor(
        fileNames.fileName.c_str(), owner.name().c_str(), dictionary.out(), false, database);
    AcDbObjectId id;
    if (status != Acad::eOk || dictionary->getAt(ident.c_str(), id) != Acad::eOk
        || (!dictionary->isWriteEnabled() && dictionary->upgradeOpen() != Acad::eOk)) {
        return;
    }
    dictionary->remove(ident.c_str());
    const Opened<AcDbObject> record(id, AcDb::kForWrite);
    if (record) {
        record->erase();
    }
}

// The dictionary of the configuration file in a drawing, open for write; null for none.
Opened<AcDbDictionary> dictionaryOfFile(AcDbDatabase& database, const std::wstring& fileName)
{
    Opened<AcDbDictionary> namedObjects;
    AcDbObjectId id;
    if (database.getNamedObjectsDictionary(namedObjects.out()) != Acad::eOk
        || namedObjects->getAt(corma::kSettingsRoot, id) != Acad::eOk) {
        return {};
    }
    const Opened<AcDbDictionary> root(id);
    if (!root || root->getAt(corma::upperCase(fileName).c_str(), id) != Acad::eOk) {
        return {};
    }
    return Opened<AcDbDictionary>(id, AcDb::kForWrite);
}

} // namespace

void InstellingenArray::erase(const Instelling& setting)
{
    const auto isIt = [&](const auto& kept) { return kept.get() == &setting; };
    m_settings.erase(std::find_if(m_settings.begin(), m_settings.end(), isIt));
    m_expected = 0;
    m_index.clear();
    for (const auto& kept : m_settings) {
        m_index.add(kept->packedName(), nameAt());
    }
}

bool InstellingenArray::removeFromFile(std::wstring_view name, const FileNameSet& fileNames)
{
    Instelling* const setting = findSetting(name);
    const auto ident = corma::toStrictUtf8(name);
    if (setting == nullptr || !ident) {
        return false;
    }
    const std::wstring project = corma::pathOf(fileNames, false);
    const bool isFromProject = setting->isProject() && corma::platform::isReadable(project);
    const std::string category = corma::toUtf8(
        setting->category() == nullptr ? corma::kHeadChapter : setting->category()->name());
    const auto edit = [&](std::string_view text, std::string_view lineEnd) {
        return corma::editToRemove(text, lineEnd, category, *ident);
    };
    const Removed removed = removeLine({isFromProject ? project : corma::pathOf(fileNames, true),
                                        corma::temporaryPath(fileNames), edit});
    if (!removed.isFileWritten || !removed.hasEdit) {
        return false;
    }
    if (setting->hasGlobalValue()) {
        setting->setValue(setting->globalValue());
        setting->setIsProject(false);
    } else {
        erase(*setting);
    }
    return true;
}

bool InstellingenArray::removeFromDrawing(std::wstring_view name, AcDbDatabase* database,
                                          const FileNameSet& fileNames)
{
    if (m_owner != nullptr) {
        removeRecord(fileNames, *m_owner, std::wstring(name), database);
    }
    Instelling* const setting = findSetting(name);
    if (setting == nullptr) {
        return true;
    }
    if (!setting->isLocal()) {
        corma::showMessage(corma::text(corma::row::kCannotRemove)
                               + corma::text(corma::row::kLocalMode),
                           MessageIcon::information);
        return false;
    }
    if (setting->hasProjectValue()) {
        setting->setValue(setting->projectValue());
        setting->setIsProject(true);
        setting->setIsLocal(false);
    } else if (setting->hasGlobalValue()) {
        setting->setValue(setting->globalValue());
        setting->setIsProject(false);
        setting->setIsLocal(false);
    } else {
        erase(*setting);
    }
    return true;
}

void RubriekenArray::erase(std::string_view name)
{
    std::erase_if(m_categories, [&](const auto& kept) { return kept->packedName() == name; });
    m_index.clear();
    for (const auto& kept : m_categories) {
        m_index.add(kept->packedName(), nameAt());
    }
}

// The first setting is asked again and again: one that fell back to the level below is taken out
// of that, too, as long as the count lasts
// (test: AProjectSettingThatFellBackIsTakenOutOfTheGlobalFileNext).
bool RubriekenArray::removeCategory(std::wstring_view name, const FileNameSet& fileNames,
                                    bool /*project*/, bool local, AcDbDatabase* database)
{
    const auto category = corma::toStrictUtf8(name);
    if (!category || !hasCategory(name)) {
        return false;
    }
    InstellingenArray& settings = findCategory(name)->settings();
    bool isEmptied = true;
    for (std::size_t left = settings.size(); left > 0 && settings.size() > 0; --left) {
        const std::wstring first = settings[0].name();
        isEmptied = (local ? settings.removeFromDrawing(first, database, fileNames)
                           : settings.removeFromFile(first, fileNames))
            && isEmptied;
    }
    if (!isEmptied) {
        corma::showMessage(kNotAllRemoved, MessageIcon::exclamation);
        return false;
    }
    const auto edit = [&](std::string_view text, std::string_view lineEnd) {
        return corma::editToRemoveHeader(text, lineEnd, *category);
    };
    if (!removeLine({corma::pathOf(fileNames, true), corma::temporaryPath(fileNames), edit})
             .isFileWritten) {
        return false;
    }
    erase(corma::toPacked(name));
    if (database != nullptr) {
        if (const auto dictionary = dictionaryOfFile(*database, fileNames.fileName)) {
            dictionary->remove(std::wstring(name).c_str());
        }
    }
    corma::showMessage(kCategoryRemoved, MessageIcon::information);
    return true;
}
