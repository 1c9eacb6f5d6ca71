#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "inifile/wildcard_results.h"
#include "inifile/xx_Inifile_private.h"
#include <corma/xx_Var.h>

#include <algorithm>

namespace {

constexpr const wchar_t* kNoneFound = L"%s not found in configurationfile";

constexpr std::size_t kLongestLineHere = 2999;
constexpr std::size_t kLongestListedName = 2999;
constexpr std::size_t kLongestListedValue = 2999; // of one in a drawing

// Collects the pairs of one file from its scan.
class WildcardSink
{
public:
    WildcardSink(xx_Inifile& file, const corma::TextFile& text, const corma::Ident& pattern)
        : m_file(file)
        , m_text(text)
        , m_seesDrawing(corma::InifileInside::seesDrawing(file))
        , m_chapterPattern(pattern.prefix.empty() ? L"" : pattern.chapter())
        , m_identPattern(pattern.name)
        , m_hasChapterPattern(!pattern.prefix.empty())
        , m_listsChapters(acutWcMatch(corma::kChapterMarker, m_identPattern.c_str()) == RTNORM)
        , m_isIn(!m_hasChapterPattern)
    {
    }

    void into(xx_VarArray& results, int skip)
    {
        m_results = &results;
        m_skip = static_cast<std::size_t>(std::max(skip, 0));
    }

    [[nodiscard]] bool foundOne() const { return m_foundOne; }

    [[nodiscard]] bool wantsEntries() const { return m_isIn; }

    bool header(std::string_view header, corma::Line /*line*/)
    {
        if (!m_hasChapterPattern) {
            return false; // only the head of the file counts
        }
        const std::wstring text = m_text.decode(header);
        const std::wstring inside = text.substr(1, text.size() - 2);
        m_isIn = acutWcMatchEx(inside.c_str(), m_chapterPattern.c_str(), true);
        if (m_isIn) {
            m_chapter = text;
            if (m_listsChapters) {
                corma::appendPair(*m_results, m_chapter, L"");
            }
        }
        return true;
    }

    bool entry(corma::Line line)
    {
        const auto parts = m_isIn ? corma::entryOf(line) : std::nullopt;
        if (parts) {
            const std::wstring ident = m_text.decode(parts->name);
            if (ident.size() > m_skip
                && acutWcMatchEx(ident.c_str(), m_identPattern.c_str(), true)) {
                add(ident.substr(m_skip), parts->value);
            }
        }
        return true;
    }

private:
    void add(const std::wstring& ident, std::string_view fileValue)
    {
        const std::wstring name = (m_chapter + ident).substr(0, kLongestListedName);
        corma::appendPair(*m_results, name, valueFor(ident, fileValue));
        m_foundOne = true;
    }

    // A value in the drawing goes before the file's, except in the head of the file.
    std::wstring valueFor(const std::wstring& ident, std::string_view fileValue)
    {
        if (m_seesDrawing && !m_chapter.empty()) {
            const std::wstring chapter = m_chapter.substr(1, m_chapter.size() - 2);
            const auto local
                = corma::InifileInside::localValue(m_file, chapter.c_str(), ident.c_str());
            if (local) {
                return local->substr(0, kLongestListedValue);
            }
        }
        return m_text.decode(fileValue);
    }

    xx_Inifile& m_file;
    const corma::TextFile& m_text;
    bool m_seesDrawing;
    std::wstring m_chapterPattern;
    std::wstring m_identPattern;
    bool m_hasChapterPattern;
    bool m_listsChapters;
    bool m_isIn;
    std::wstring m_chapter; // the current header, brackets and all; empty in the head of the file
    xx_VarArray* m_results = nullptr;
    std::size_t m_skip = 0;
    bool m_foundOne = false;
};

} // namespace

// Results of included files alone are no success: callers ask the array, not the status.
int xx_Inifile::getWcString(wchar_t* pattern, xx_VarArray* results, int report, int skip)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        int status = corma::kNoOpenFile;
        for (size_t i = 0; priv != nullptr && i < priv->included.size(); ++i) {
            if (const auto& child = priv->included[i]) {
                child->getWcString(pattern, results, 0, skip);
            }
        }
        if (priv != nullptr && priv->file) {
            const corma::TextFile& text = priv->file->text();
            WildcardSink sink(*this, text, corma::Ident::parse(corma::view(pattern)));
            sink.into(*results, skip);
            corma::scan(text, kLongestLineHere, sink);
            status = sink.foundOne() ? RTNORM : corma::kNotThere;
        }
        if (status != RTNORM && report != 0 && results->length() == 0) {
            xx_printMessage(kNoneFound, pattern, 0);
        }
        return status;
    });
}
