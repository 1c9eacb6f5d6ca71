#include <corma/IniBuffer.h>
#include <corma/attributes.h>
#include <corma/blocks.h>
#include <corma/entities.h>
#include <corma/findfile.h>
#include <corma/geometry.h>
#include <corma/host.h>
#include <corma/lookup_trace.h>
#include <corma/settings_model.h>
#include <corma/texts.h>
#include <corma/translation.h>
#include <corma/xx_Inifile.h>
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#if __has_include(<corma/attribute_dialog.h>)
#include <corma/attribute_dialog.h>
#endif

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

// The names in a list of settings.
class Names : public corma::SettingList
{
public:
    [[nodiscard]] short accessLevel() const override { return 0; }

    std::wstring translateKey(const std::wstring& word) override { return word; }

    [[nodiscard]] int selectionMark() const override { return -1; }

    void setSelectionMark(int /*row*/) override { }

    [[nodiscard]] int rowCount() const override { return static_cast<int>(names.size()); }

    void deleteAllRows() override { names.clear(); }

    void appendRow(const corma::SettingRow& row) override { names.push_back(row.name); }

    void setFocus() override { }

    std::vector<std::wstring> names;
};

// True when the model of a file has a setting of a category, and its list shows it.
bool hasSetting(const wchar_t* path, const wchar_t* category, const wchar_t* ident)
{
    const corma::SettingsModel model({.file = path});
    Names list;
    model.fillList(category, list, L"", {});
    return model.isComplete() && model.hasCategory(category) && corma::textLanguage() == 9
        && std::find(list.names.begin(), list.names.end(), ident) != list.names.end();
}

// True when a database that is not there is no trouble: a word stays, and a statement fails.
bool bearsMissingDatabases(const wchar_t* path)
{
    xx_VarArray rows;
    const int status = xx_ado_select(L"not there.db3", L"SELECT 1", &rows);
    xx_ado_close_all();
    return status != RTNORM && rows.length() == 0
        && corma::translateKey(path, L"not a word", 9) == L"not a word";
}

// Keeps what the library says.
class Kept : public corma::Services
{
public:
    Kept()
        : m_former(corma::setServices(this))
    {
    }

    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;

    ~Kept() override { corma::setServices(m_former); }

    void print(const wchar_t* text) override { said += text; }

    std::wstring said;

private:
    corma::Services* m_former;
};

// Is asked, and wants nothing.
class Nothing : public corma::AttributeUpdateChooser
{
public:
    bool choose(corma::AttributeUpdate& /*update*/) override
    {
        isAsked = true;
        return false;
    }

    bool isAsked = false;
};

// True when blocks come into the new drawing, out of the drawings in a folder, or are told absent.
bool loadsBlocks(const std::wstring& folder)
{
    int status = 0;
    std::wstring text = folder + L"blokken/deur.dwg!pg-deur-enkel";
    const AcDbObjectId door = xx_findblk(text.data(), 0, &status, nullptr, nullptr, nullptr);
    if (status != RTNORM || door.isNull() || std::wcscmp(text.c_str(), L"pg-deur-enkel") != 0) {
        return false;
    }
    wchar_t name[] = L"PG-DEUR-ENKEL.dwg";
    AcDbObjectId again;
    xx_find_block_recordId_arx(name, &status, nullptr, &again);
    if (status != RTNORM || again != door || xx_findblk_int(name, &status) != door
        || xx_findblk_name(name) != L"PG-DEUR-ENKEL") {
        return false;
    }
    const Kept messages;
    wchar_t absent[] = L"weg.dwg!$weg";
    return xx_findblk(absent, &status).isNull() && status == RTERROR
        && messages.said.find(L"File weg.dwg not found") != std::wstring::npos
        && messages.said.find(L"Block WEG not found") != std::wstring::npos;
}

// Blocks that differ from their drawing files, which here are none: in the dialog where the package
// has dialogs.
void showBlocks(const wchar_t* pattern)
{
#if __has_include(<corma/attribute_dialog.h>)
    xx_show_attribute_update(true, pattern);
#else
    Nothing nothing;
    corma::updateAttributes(corma::AttributeUpdateMode::records, pattern, nothing);
#endif
}

// True when the attributes of blocks can be read and compared.
bool readsAttributes()
{
    int status = 0;
    const Kept messages;
    Nothing nothing;
    xx_VarArray list;
    AcGePoint3d point;
    const bool isRead = xx_get_attdefs(xx_findblk_int(L"PG-DEUR-ENKEL", &status), list) == RTNORM
        && list.length() > 0 && xx_get_bl_attributes(AcDbObjectId(), list, &point) == RTERROR
        && xx_sync_attributes(L"weg") == RTERROR;
    const bool isCompared
        = corma::updateAttributes(corma::AttributeUpdateMode::references, nullptr, nothing)
        == RTNORM;
    showBlocks(L"PG-*");
    return isRead && isCompared && !nothing.isAsked
        && messages.said.find(L"(*) : Attributes up to date.") != std::wstring::npos
        && messages.said.find(L"(PG-*) : Attributes up to date.") != std::wstring::npos;
}

// True when entities can be copied and erased, and the view can be told.
bool knowsEntities()
{
    const Kept messages;
    const AcGeMatrix3d still;
    AcDbObjectId copy;
    AcDbObjectIdArray copies;
    AcDbObjectIdArray nothing;
    nothing.append(AcDbObjectId());
    return xx_copy_entity_arx(nothing.at(0), still, &copy) == RTERROR && copy.isNull()
        && xx_copy_entities(nothing, still, &copies) == RTERROR && copies.isEmpty()
        && xx_copy_ent(nothing, still, nullptr) == RTERROR && xx_erase_ids(copies) == RTNORM
        && xx_getCurrentViewDir_arx().z > 0 && !xx_getCurViewportObjectId_arx().isNull()
        && std::wcscmp(xx_current_space_name(), L"*Model_Space") == 0;
}

// True when a new drawing can be worked on with the drawings of the example.
bool worksOnDrawings(const wchar_t* path)
{
    const std::wstring file(path);
    const bool isDone = corma::newDocument(L"new.dxf")
        && loadsBlocks(file.substr(0, file.find_last_of(L'/') + 1)) && readsAttributes()
        && knowsEntities() && corma::isDocumentModified();
    corma::closeDocument();
    return isDone;
}

// Looks one ident of a file up: consumer FILE.
int main(int argc, char** argv)
{
    if (argc != 2) {
        return 2;
    }
    wchar_t path[260];
    wchar_t ident[] = L"[Tekst]Hoogte";
    wchar_t value[100];
    std::swprintf(path, 260, L"%s", argv[1]);
    xx_Inifile file(path, 0, &IniBuffer::shared());
    if (file.getString(ident, value, 100, 1) != RTNORM) {
        return 1;
    }
    std::printf("%ls\n", value);
    const bool isRight = std::wcscmp(value, L"2.5") == 0 && hasSetting(path, L"Tekst", L"Hoogte")
        && bearsMissingDatabases(path) && worksOnDrawings(path);
    return isRight ? 0 : 1;
}
