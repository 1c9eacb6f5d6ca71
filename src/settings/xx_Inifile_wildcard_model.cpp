// Wildcard queries through the settings model, which sees the values of the project and of the
// drawing as well.

#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/text_file.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "inifile/Ident.h"
#include "inifile/wildcard_results.h"
#include "inifile/xx_Inifile_private.h"
#include "platform/platform.h"
#include "settings/RubriekenArray.h"
#include "settings/texts.h"
#include <corma/xx_Var.h>

#include <algorithm>
#include <memory>

namespace {

// What a pattern asks for.
struct Query
{
    explicit Query(std::wstring_view pattern)
    {
        const auto parts = corma::Ident::parse(pattern);
        chapters = parts.prefix.empty() ? L"" : parts.chapter();
        idents = parts.name;
        listsChapters = idents.find(corma::kChapterMarker) != std::wstring::npos;
        if (listsChapters) {
            const std::size_t comma = idents.find(L',');
            listsSettings = comma != std::wstring::npos;
            idents.erase(0, listsSettings ? comma + 1 : idents.size());
        }
    }

    std::wstring chapters;
    std::wstring idents;
    bool listsChapters = false;
    bool listsSettings = true;
};

// The text of a file as the model takes it: of a scrambled one what stands in the file.
struct StreamOf
{
    explicit StreamOf(const xx_Inifile& file)
    {
        const xx_IniPrivate* const priv = corma::InifileInside::privateOf(file);
        if (priv == nullptr || !priv->file) {
            return;
        }
        if (file.getScrambled() != 0) {
            raw = xx_openUnicode(file.getFilename(), corma::OpenMode::binary);
            text = raw.get();
        } else {
            text = &priv->file->text();
        }
    }

    std::unique_ptr<corma::TextFile> raw;
    const corma::TextFile* text = nullptr; // null without an open file
};

// The project file counts where a configuration file of that name lies beside the drawing.
void loadProject(RubriekenArray& model, const std::wstring& drawingFolder, const std::wstring& base)
{
    const std::wstring path = drawingFolder + base;
    if (corma::platform::isReadable(path + L".ini")) {
        // A query tells nothing: one that cannot be opened has no values.
        static_cast<void>(model.loadProjectFile(path + L".ipr"));
    }
}

// Puts the levels above the file on top of the model.
void loadLevels(RubriekenArray& model, const xx_Inifile& file)
{
    const AcApDocument* const document = acDocManagerPtr()->curDocument();
    const auto config = corma::platform::splitPath(file.getFilename());
    if (document != nullptr) {
        loadProject(model, corma::platform::splitPath(document->fileName()).folderPath(),
                    config.base);
    }
    const auto names = FileNameSet::of(
        config.folderPath(), corma::InifileInside::nameInDrawing(file), corma::textLanguage());
    model.loadDrawing(acdbHostApplicationServices()->workingDatabase(), names);
}

// True when anything was listed.
bool list(const Rubriek& category, const Query& query, std::size_t skip, xx_VarArray& results)
{
    const std::wstring chapter = category.name();
    const bool isHead = chapter == corma::kHeadChapter;
    bool hasListed = false;
    if (query.listsSettings) {
        for (const Instelling* const setting :
             category.settings().filterByPattern(query.idents.c_str())) {
            const std::wstring ident = setting->name();
            const std::wstring name = isHead
                ? ident.substr(std::min(skip, ident.size()))
                : corma::formatted(L"[%s]%s", chapter.c_str(), ident.c_str());
            corma::appendPair(results, name, setting->value());
            hasListed = true;
        }
    }
    if (query.listsChapters) {
        corma::appendPair(results, chapter, L"");
        hasListed = true;
    }
    return hasListed;
}

} // namespace

int xx_Inifile::getWcStringNew(wchar_t* pattern, xx_VarArray* results, int /*report*/, int skip)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        for (std::size_t i = 0; priv != nullptr && i < priv->included.size(); ++i) {
            if (const auto& child = priv->included[i]) {
                child->getWcStringNew(pattern, results, 0, skip);
            }
        }
        const StreamOf stream(*this);
        RubriekenArray model(stream.text);
        if (model.empty()) {
            return RTCAN;
        }
        loadLevels(model, *this);
        const Query query(corma::view(pattern));
        int status = RTCAN;
        for (const Rubriek* const category : model.filterByPattern(query.chapters.c_str())) {
            if (list(*category, query, static_cast<std::size_t>(std::max(skip, 0)), *results)) {
                status = RTNORM;
            }
        }
        return status;
    });
}
