// What the shared library tells of itself. Programs that hold the same objects have notes of their
// own, so this one is not among them.

#include <corma/version_note.h>

CORMA_VERSION_NOTE("Corma, settings of CAD add-ons", CORMA_VERSION, CORMA_COPYRIGHT)
