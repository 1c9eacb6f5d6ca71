#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "foundation/xx_findf.h"
#include "host/host.h"
#include "inifile/scrambling.h"
#include "inifile/xx_Inifile_private.h"
#include "platform/text.h"
#include <corma/xx_Inifile.h>

#include <cstdlib>
#include <new>
#include <utility>

namespace {

constexpr short kVersion = 6;
constexpr int kNoMemoryStatus = 8458;

constexpr const wchar_t* kNoMemory = L"unable to allocate private inif data";
constexpr const wchar_t* kIniNotFound = L"Inifile \"%s\" not found %s";
constexpr const wchar_t* kFileNotFound = L"%s file \"%s\" not found %s";
constexpr const wchar_t* kIniNotOpened = L"Inifile \"%s\" could not be opened";
constexpr const wchar_t* kFileNotOpened = L"%s file \"%s\" could not be opened";
constexpr const wchar_t* kOtherVersion
    = L"Version of application (%d) too %s for ini-dll (%d) : please upgrade %s.";
constexpr const wchar_t* kAborting
    = L"Contact Korvane : version of application and ini dll don't match. Aborting...";

bool& allocationFails()
{
    static bool fails = false;
    return fails;
}

} // namespace

namespace corma {

void* allocateZeroed(std::size_t size)
{
    return std::exchange(allocationFails(), false) ? nullptr : std::calloc(1, size);
}

void failNextAllocation()
{
    allocationFails() = true;
}

} // namespace corma

xx_Inifile::xx_Inifile(wchar_t* name, int scrambleNumber, IniBuffer* cache)
    : hasBuffer(cache != nullptr)
    , buffer(cache)
    , scrambled(scrambleNumber)
{
    corma::atBoundary(corma::kInifileSource, __LINE__, 0, [&] {
        allocPrivateData();
        open(name == nullptr ? L"" : name);
        initIncludedInifiles();
        return 0;
    });
}

xx_Inifile::~xx_Inifile()
{
    freePrivateData();
    filename[0] = 0;
}

void xx_Inifile::allocPrivateData()
{
    void* memory = corma::allocateZeroed(sizeof(xx_IniPrivate));
    if (memory == nullptr) {
        xx_reportError(corma::kInifileSource, __LINE__, kNoMemory, kNoMemoryStatus);
        return;
    }
    priv = new (memory) xx_IniPrivate;
}

void xx_Inifile::freePrivateData()
{
    if (priv != nullptr) {
        priv->~xx_IniPrivate();
        std::free(priv);
        priv = nullptr;
    }
}

// A plain file serves where no scrambled one is found; it is then read as if it were scrambled.
void xx_Inifile::open(const wchar_t* name)
{
    const auto parts = corma::platform::splitPath(name);
    const wchar_t* const extension = parts.extension.c_str();
    isIni = corma::equalIgnoringCase(parts.extension, L".ini");
    int status = RTCAN;
    if (scrambled != 0) {
        const std::wstring other = corma::scrambledName(name, scrambled);
        status = xx_findfile(other.c_str(), filename, corma::kLongestPath);
    }
    if (status != RTNORM) {
        status = xx_findfile(name, filename, corma::kLongestPath);
    }
    if (status != RTNORM) {
        const wchar_t* form = scrambled != 0 ? L"(scrambled)" : L"";
        const std::wstring text = isIni ? corma::formatted(kIniNotFound, name, form)
                                        : corma::formatted(kFileNotFound, extension, name, form);
        xx_reportError(corma::kInifileSource, __LINE__, text.c_str(), 0);
        return;
    }
    auto file = corma::ConfigFile::open(filename, scrambled);
    if (!file) {
        const std::wstring text = isIni ? corma::formatted(kIniNotOpened, name)
                                        : corma::formatted(kFileNotOpened, extension, name);
        xx_reportError(corma::kInifileSource, __LINE__, text.c_str(), 0);
    }
    if (priv != nullptr) {
        priv->file = std::move(file);
    }
}

xx_Inifile& xx_Inifile::operator=(xx_Inifile& other)
{
    if (&other == this) {
        return *this;
    }
    corma::atBoundary(corma::kInifileSource, __LINE__, 0, [&] {
        freePrivateData();
        allocPrivateData();
        if (priv != nullptr && other.priv != nullptr) {
            priv->file = std::move(other.priv->file);
        }
        corma::copyBounded(filename, kFilenameSize, other.filename);
        other.filename[0] = 0;
        scrambled = std::exchange(other.scrambled, 0);
        initIncludedInifiles();
        return 0;
    });
    return *this;
}

const wchar_t* xx_Inifile::getFilename() const
{
    return filename;
}

int xx_Inifile::getScrambled() const
{
    return scrambled;
}

short xx_Inifile::getIniVersion()
{
    return kVersion;
}

bool xx_Inifile::checkIniVersion(bool abortOnMismatch, short applicationVersion)
{
    if (applicationVersion == kVersion) {
        return true;
    }
    return corma::atBoundary(corma::kInifileSource, __LINE__, false, [&] {
        const bool isOld = applicationVersion < kVersion;
        corma::showUserMessage(corma::formatted(kOtherVersion, int {applicationVersion},
                                                isOld ? L"old" : L"new", int {kVersion},
                                                isOld ? L"application" : L"ini dll"));
        if (abortOnMismatch) {
            acdbFail(kAborting);
        }
        return false;
    });
}

void xx_Inifile::flushIniBuffer()
{
    if (hasBuffer) {
        IniBuffer::clear();
    }
}

wchar_t* xx_Inifile::Id(wchar_t* first, wchar_t* second)
{
    static std::wstring joined;
    return corma::atBoundary(corma::kInifileSource, __LINE__, joined.data(), [&] {
        joined = std::wstring(corma::view(first)).append(corma::view(second));
        return joined.data();
    });
}
