// What the modules of this project tell of themselves.

#include "platform/platform.h"

#include <gtest/gtest.h>

namespace {

using corma::platform::fromNative;
using corma::platform::versionText;

struct Row
{
    const char* file;
    const wchar_t* description;
};

constexpr Row kModules[] = {
    {CORMA_LIBRARY, L"Corma, settings of CAD add-ons"},
    {CFGCTL_PROGRAM, L"cfgctl, settings of CAD add-ons from the command line"},
#ifdef CFGDESK_PROGRAM
    {CFGDESK_PROGRAM, L"CfgDesk, the settings editor"},
#endif
};

TEST(VersionNotes, AreInTheLibraryAndInThePrograms)
{
    for (const Row& row : kModules) {
        const std::wstring file = fromNative(row.file);
        EXPECT_EQ(versionText(file, "FileDescription"), row.description) << row.file;
        EXPECT_EQ(versionText(file, "FileVersion"), fromNative(CORMA_VERSION)) << row.file;
        EXPECT_EQ(versionText(file, "LegalCopyright"), L"Copyright (c) 2026 Korvane") << row.file;
    }
}

} // namespace
