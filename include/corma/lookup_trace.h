#pragma once

#include <corma/export.h>

#include <memory>
#include <string>
#include <vector>

class xx_Inifile;

namespace corma {

/// Where a value can come from.
enum class Source
{
    included,
    cache,
    drawing,
    project,
    file
};

/// The name of a source in reports: "included", "cache", "drawing", "project" or "file".
CORMA_EXPORT const char* nameOf(Source source);

/// One source that a lookup asked.
struct SourceAsked
{
    Source source = Source::file;
    std::wstring file; // the file that was asked, with a full path
    bool found = false;
    int line = 0; // line of the value, 1 for the first; 0 when it is in no text file
};

/// Records, for as long as it lives, which sources the lookups through a file ask and in which
/// order. One at a time for an object; it must not outlive the object.
class CORMA_EXPORT LookupTrace
{
public:
    explicit LookupTrace(xx_Inifile& file);
    LookupTrace(const LookupTrace&) = delete;
    LookupTrace& operator=(const LookupTrace&) = delete;
    ~LookupTrace();

    [[nodiscard]] const std::vector<SourceAsked>& asked() const;

private:
    friend struct InifileInside;

    xx_Inifile& m_file;
    std::vector<SourceAsked> m_asked;
};

/// What one source says of an ident.
struct LevelValue
{
    SourceAsked where;
    std::wstring value; // empty when not found
    bool inForce = false; // this is what getString() gives
};

/// The value of one ident at every level that applies, strongest first, found or not. The drawing
/// and the project file apply while a document is open. Nothing is reported and nothing is cached.
CORMA_EXPORT std::vector<LevelValue> levelsOf(xx_Inifile& file, const wchar_t* ident);

/// One file of the include tree.
struct IncludedFile
{
    std::wstring path; // empty when it was not found
    bool found = false; // it could be opened
    std::vector<std::unique_ptr<IncludedFile>> included; // null for a name that was skipped
};

/// The include tree of a file, in the order of the names in `#INCLUDE`.
CORMA_EXPORT std::unique_ptr<IncludedFile> includeTree(const xx_Inifile& file);

} // namespace corma
