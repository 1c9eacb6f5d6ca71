// A library that the tests load: one function with the symbol of its name, one with that of C++;
// and a version note.

#include <corma/version_note.h>

#define VERSION_OF_LIBRARY "3.1.4"

CORMA_VERSION_NOTE("Library of the tests, \"caf\u00E9\"", VERSION_OF_LIBRARY,
                   "Copyright (c) 2026 Korvane")

extern "C" int fortyTwo();

int fortyTwo()
{
    return 42;
}

int fortyThree();

int fortyThree()
{
    return 43;
}
