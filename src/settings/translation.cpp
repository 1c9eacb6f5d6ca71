#include "foundation/at_boundary.h"
#include "foundation/wide_text.h"
#include "foundation/xx_findf.h"
#include <corma/translation.h>
#include <corma/xx_Inifile.h>
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#include <array>

namespace corma {

namespace {

constexpr const wchar_t* kSourceName = L"CfgDeskExeDlg.cpp";
constexpr std::size_t kNameSize = 260; // characters, the terminator counted

struct LanguageColumn
{
    int language;
    const wchar_t* name;
};

constexpr std::array kColumns = {LanguageColumn {12, L"F"}, LanguageColumn {7, L"G"},
                                 LanguageColumn {10, L"S"}, LanguageColumn {19, L"N"}};

const wchar_t* columnNameOf(int language)
{
    for (const LanguageColumn& column : kColumns) {
        if (column.language == language) {
            return column.name;
        }
    }
    return L"E";
}

// Empty when none is named, or the one that is named is not found.
std::wstring databaseOf(const wchar_t* configurationFile)
{
    std::wstring path(view(configurationFile));
    std::wstring ident = L"TranslateDB";
    std::array<wchar_t, kNameSize> name {};
    xx_Inifile file(path.data(), 0, nullptr);
    if (file.getString(ident.data(), name.data(), kNameSize, 0) != RTNORM) {
        name.fill(0);
    }
    std::array<wchar_t, kNameSize + 1> found {};
    return xx_findfile(name.data(), found.data(), kNameSize) == RTNORM ? found.data() : L"";
}

} // namespace

std::wstring translateKey(const wchar_t* configurationFile, const std::wstring& word, int language)
{
    return atBoundary(kSourceName, __LINE__, word, [&] {
        std::wstring translation = word;
        const std::wstring database = databaseOf(configurationFile);
        if (database.empty()) {
            return translation;
        }
        const std::wstring sql = L"SELECT * FROM Keys WHERE Key='" + word + L"'";
        xx_VarArray rows;
        if (xx_ado_select(database.c_str(), sql.c_str(), &rows, -1, false) == RTNORM) {
            const xx_Var* const column = rows.find(columnNameOf(language), false);
            if (column != nullptr && column->currentText() != nullptr) {
                translation = column->currentText();
            }
        }
        xx_ado_close_all();
        return translation;
    });
}

} // namespace corma
