#include <corma/host.h>
#include <corma/translation.h>
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#include <cstdio>
#include <string>

int main()
{
    const std::wstring french = corma::translateKey(L"plattegrond.ini", L"WOOD", 12);
    std::printf("WOOD is %ls in French\n", french.c_str());

    xx_VarArray columns;
    const wchar_t* const sql = L"SELECT Key,N FROM Keys WHERE Key IN ('STEEL','OILED')";
    if (xx_ado_select(L"woorden.db3", sql, &columns) != RTNORM) {
        return 1;
    }
    const xx_Var* const keys = columns.find(L"Key", false);
    const xx_Var* const dutch = columns.find(L"N", false);
    for (int row = 0; keys != nullptr && dutch != nullptr && row < keys->count; ++row) {
        std::printf("%ls is %ls\n", keys->values[row].rstring, dutch->values[row].rstring);
    }
    xx_ado_close_all();
    return 0;
}
