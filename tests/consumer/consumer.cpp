#include <corma/IniBuffer.h>
#include <corma/attributes.h>
#include <corma/blocks.h>
#include <corma/entities.h>
#include <corma/findfile.h>
#include <corma/host.h>
#include <corma/lookup_trace.h>
#include <corma/settings_model.h>
#include <corma/texts.h>
#include <corma/translation.h>
#include <corma/xx_Inifile.h>
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

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

// Wants nothing brought up to date.
class Nothing : public corma::AttributeUpdateChooser
{
public:
    bool choose(corma::AttributeUpdate& /*update*/) override { return false; }
};

// True when the tools for drawings tell that a new drawing has neither block nor reference, and an
// empty view from above.
bool worksInANewDrawing()
{
    corma::newDocument(L"new.dxf");
    int status = RTERROR;
    const bool hasNoDoor = xx_findblk_int(L"DOOR", &status).isNull() && status == RTNORM;
    Nothing nothing;
    status = corma::updateAttributes(corma::AttributeUpdateMode::references, nullptr, nothing);
    AcGeMatrix3d aside;
    aside.setToTranslation(AcGeVector3d(5, 0, 0));
    AcDbObjectIdArray copies;
    const bool copiesNothing = xx_copy_entities(AcDbObjectIdArray(), aside, &copies) == RTERROR;
    const bool isSeenFromAbove = xx_getCurrentViewDir_arx() == AcGeVector3d::kZAxis;
    corma::closeDocument();
    return hasNoDoor && status == RTNORM && copiesNothing && copies.isEmpty() && isSeenFromAbove;
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
        && bearsMissingDatabases(path) && worksInANewDrawing();
    return isRight ? 0 : 1;
}
