#include <corma/cfgdesk.h>

int main()
{
    wchar_t file[] = L"plattegrond.ini";
    xx_setAccessLevel(10); // what this user may see and change
    xx_startCfgDesk(file, 9);
    return 0;
}
