#include <corma/IniBuffer.h>
#include <corma/findfile.h>
#include <corma/host.h>
#include <corma/lookup_trace.h>
#include <corma/xx_Inifile.h>
#include <corma/xx_Var.h>

#include <cstdio>
#include <cwchar>

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
    return std::wcscmp(value, L"2.5") == 0 ? 0 : 1;
}
