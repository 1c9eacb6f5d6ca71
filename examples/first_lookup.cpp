#include <corma/host.h>
#include <corma/xx_Inifile.h>

#include <cstdio>

int main()
{
    wchar_t name[] = L"plattegrond.ini";
    wchar_t height[] = L"[Tekst]Hoogte";
    wchar_t layers[] = L"[Lagen]Buitenwand";

    xx_Inifile settings(name, 0, nullptr);

    double millimetres = 0.0;
    wchar_t layer[100];
    if (settings.getDouble(height, &millimetres, 1) != RTNORM
        || settings.getString(layers, layer, 100, 1) != RTNORM) {
        return 1;
    }
    std::printf("texts are %g mm high, outer walls go on %ls\n", millimetres, layer);
    return 0;
}
