#include <corma/about.h>
#include <corma/version_note.h>

CORMA_VERSION_NOTE("Plattegrond, plans of buildings", "4.2.1", "Copyright (c) 2026 Korvane")

int main()
{
    xx_show_about(L"plattegrond.mnu",
                  {L"Software\t4.2\tPlattegrond\tyes", L"Hardware\t0017\tDongle\tno"}, nullptr);
    return 0;
}
