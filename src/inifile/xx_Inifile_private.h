#pragma once

#include "inifile/ConfigFile.h"
#include "platform/platform.h"
#include <corma/lookup_trace.h>
#include <corma/xx_Inifile.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace corma {

/// The source name in reports of the class, whichever file they come from.
inline constexpr const wchar_t* kInifileSource = L"xx_Inifile.cpp";

inline constexpr std::size_t kLongestPath = 260;

// What a lookup in one file says besides RTNORM.
inline constexpr int kNotThere = 2;
inline constexpr int kNoOpenFile = 3;

/// The project file that belongs to a configuration file and the current drawing. It is kept open
/// from one lookup to the next, for as long as it is the one to ask.
class ProjectFile
{
public:
    /// The file of that path; null when it cannot be opened now.
    ConfigFile* at(const std::wstring& path);

private:
    [[nodiscard]] bool isStillAbsent() const;
    void open(const std::wstring& path);

    std::wstring m_path;
    std::unique_ptr<ConfigFile> m_file;

    // Most drawings have no project file. While nothing comes or goes in their folder, one look at
    // the folder tells that it is still so.
    platform::NativePath m_folder;
    std::optional<platform::FileStamp> m_folderWithoutIt;
};

} // namespace corma

/// What an object keeps to itself.
struct xx_IniPrivate
{
    std::unique_ptr<corma::ConfigFile> file; // null when there is none
    std::vector<std::unique_ptr<xx_Inifile>> included; // a slot per name, null for a skipped one
    xx_Inifile* parent = nullptr; // the including object; null at the root
    corma::ProjectFile project;

    // Of the whole tree, kept at its root:
    std::unordered_set<std::wstring> treeFiles; // paths of its files
    int treeSize = 0; // included files, at any depth
    bool wasLimited = false; // it was told to be too large
    corma::LookupTrace* trace = nullptr; // who listens to lookups
};

namespace corma {

/// Where a lookup puts its value.
struct ValueBuffer
{
    ValueBuffer(wchar_t* where, int size)
        : text(where)
        , capacity(where == nullptr ? 0 : static_cast<std::size_t>(std::abs(std::int64_t {size})))
    {
    }

    void clear() const
    {
        if (capacity != 0) {
            *text = 0;
        }
    }

    wchar_t* text;
    std::size_t capacity; // characters, the terminator counted
};

/// One walk over the sources of one file, from the strongest to the weakest; what it includes is
/// not among them. The values of a walk are good until the file is used otherwise.
class SourceWalk
{
public:
    /// The strongest first.
    static constexpr std::array kSources
        = {Source::cache, Source::drawing, Source::project, Source::file};

    SourceWalk(xx_Inifile& file, const Ident& ident);

    [[nodiscard]] bool applies(Source source) const;

    /// Asks a source that applies. The other calls tell of the last one that was asked.
    bool ask(Source source);

    [[nodiscard]] SourceAsked asked() const;
    void copyValue(ValueBuffer out) const;
    [[nodiscard]] std::wstring value() const;

    /// Puts the value into the read cache if the object has one.
    void keepInCache() const;

private:
    bool askCache();
    bool askDrawing();
    bool askText(ConfigFile* text);
    [[nodiscard]] std::wstring fileAsked() const;

    xx_Inifile& m_file;
    const Ident& m_ident;
    IdentKey m_key;
    Source m_source = Source::file;
    bool m_found = false;
    ConfigFile* m_text = nullptr; // the text file that holds the value
    FoundEntry m_entry; // in that file
    std::wstring m_wide; // the value from any other source
    std::wstring m_projectPath;
    std::wstring m_cacheKey;
    int m_cacheSlot = -1;
};

/// The inside of an xx_Inifile for the functions of this folder that are none of its methods.
struct InifileInside
{
    static xx_IniPrivate* privateOf(const xx_Inifile& file) { return file.priv; }

    static bool isIni(const xx_Inifile& file) { return file.isIni; }

    static IniBuffer* bufferOf(const xx_Inifile& file)
    {
        return file.hasBuffer ? file.buffer : nullptr;
    }

    /// Only an ".ini" file has values in a drawing, and only while one is open.
    static bool seesDrawing(const xx_Inifile& file);

    /// The value that the drawing holds for an ident.
    static std::optional<std::wstring> localValue(const xx_Inifile& file, const wchar_t* chapter,
                                                  const wchar_t* ident);

    /// The name under which the drawing holds the settings of the file.
    static std::wstring nameInDrawing(const xx_Inifile& file);

    /// Puts a new value in the place of the one that the read cache keeps, if it keeps one.
    static void renewInCache(const xx_Inifile& file, const Ident& ident, std::wstring_view value);

    static int getStringOneIdentOld(xx_Inifile& file, const wchar_t* ident, wchar_t* value,
                                    int size, int report)
    {
        return file.getStringOneIdentOld(ident, value, size, report);
    }

    /// Takes the value out of the read cache.
    static void dropFromCache(const xx_Inifile& file, const Ident& ident);

    /// Stores a value in the working drawing, as the file's. False, as the user was told, when that
    /// fails.
    static bool storeInDrawing(const xx_Inifile& file, const Ident& ident, const wchar_t* value);

    /// Gives an ident of the file, which is a scrambled one, another value.
    static void writeScrambled(const xx_Inifile& file, const Ident& ident, std::wstring_view value);

    /// Opens the file again if the object is without it.
    static void reopen(xx_Inifile& file);

    /// What update() and replaceNew() do with the file itself; a status.
    static int updateOwnFile(xx_Inifile& file, wchar_t* defaultFile, int* newItems);
    static int replaceOwnValues(xx_Inifile& file, const wchar_t* newFile);

    /// The included files beside which there is a file of their name and that extension, and its
    /// path.
    static std::vector<std::pair<xx_Inifile*, std::wstring>> includedWith(const xx_Inifile& file,
                                                                          const wchar_t* extension);

    /// The listener of the tree that the file is part of, if there is one.
    static LookupTrace* traceOf(const xx_Inifile& file);

    static void note(LookupTrace& trace, const xx_Inifile& file, const SourceWalk& walk);
};

/// Path of the project file for a configuration file: its name with the last two characters made
/// "pr", in the folder of the current drawing. Nothing without a drawing.
std::optional<std::wstring> projectPathFor(std::wstring_view configPath);

/// The key of an ident in the read cache. Two characters worked out from the file's name keep the
/// same ident in different files apart.
std::wstring getChecksummedIdent(std::wstring_view ident, std::wstring_view fileName);

/// Zero-filled memory from the general heap, or null. A test can make it fail.
void* allocateZeroed(std::size_t size);
void failNextAllocation();

} // namespace corma
