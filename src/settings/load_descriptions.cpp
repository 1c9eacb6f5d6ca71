// The texts and pictures of the settings in one language.

#include "foundation/text_file.h"
#include "inifile/Ident.h"
#include "inifile/words.h"
#include "platform/platform.h"
#include "settings/RubriekenArray.h"
#include "settings/description.h"
#include "settings/load.h"
#include "settings/model_lines.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr std::string_view kBitmap = "bitmap=";
constexpr std::string_view kFileTypes = " filetypes=";
constexpr std::string_view kFileTypesBehindBreak = "\xC2\xA7"
                                                   "filetypes=";

// Where the descriptions of a language lie: a folder of today's name, or of the name before that.
struct LanguageFolders
{
    int language;
    const wchar_t* folder;
    const wchar_t* formerFolder;
};

constexpr std::array kFolders = {
    LanguageFolders {19, L"LanNL", L"LanN"}, LanguageFolders {12, L"LanFR", L"LanF"},
    LanguageFolders {7, L"LanDE", L"LanG"},  LanguageFolders {10, L"LanES", L"LanS"},
    LanguageFolders {25, L"LanRU", L"LanR"},
};
constexpr LanguageFolders kOtherFolders {0, L"LanEN", L"LanE"};

std::wstring pathOf(const FileNameSet& names)
{
    const auto* const found = std::find_if(kFolders.begin(), kFolders.end(), [&](const auto& row) {
        return row.language == names.language;
    });
    const LanguageFolders& folders = found == kFolders.end() ? kOtherFolders : *found;
    const auto in = [&](const wchar_t* folder) {
        return names.globalFolder + folder + corma::platform::kSeparator + names.descriptionsName;
    };
    const std::wstring path = in(folders.folder);
    return corma::platform::exists(path) ? path : in(folders.formerFolder);
}

// The keys that a line holds, in whatever part of it.
struct Keys
{
    explicit Keys(std::string_view line)
    {
        for (std::size_t at = corma::findNear(line, '='); at != std::string_view::npos;
             at = line.find('=', at + 1)) {
            const std::string_view upToHere = line.substr(0, at + 1);
            if (!bitmap && upToHere.ends_with(kBitmap)) {
                bitmap = line.substr(at + 1);
            }
            hasFileTypes |= upToHere.ends_with(kFileTypes);
            hasFileTypesBehindBreak |= upToHere.ends_with(kFileTypesBehindBreak);
        }
    }

    std::optional<std::string_view> bitmap; // what stands behind the first one
    bool hasFileTypes = false;
    bool hasFileTypesBehindBreak = false;
};

// Takes the lines of a descriptions file into a model.
class DescriptionLoader
{
public:
    DescriptionLoader(const RubriekenArray& model, corma::TextArena& texts,
                      std::wstring_view globalFolder)
        : m_model(model)
        , m_texts(texts)
        , m_folder(corma::toPacked(globalFolder))
    {
        enter(corma::toPacked(corma::kHeadChapter));
    }

    void enter(std::string_view chapter)
    {
        m_category = m_model.hasPacked(chapter) ? m_model.findPacked(chapter) : nullptr;
    }

    // An unknown chapter gives its text to "Algemeen" (test:
    // TheTextOfAnUnknownChapterGoesToAlgemeen).
    void describe(std::string_view chapter, std::string_view text)
    {
        if (Rubriek* const category = m_model.findPacked(chapter)) {
            category->description = corma::fromPacked(text);
        }
    }

    // False for a line that is none.
    [[nodiscard]] bool take(std::string_view line)
    {
        const Keys keys(line);
        if (keys.bitmap) {
            takePicture(*keys.bitmap);
        }
        std::string kept;
        if (keys.hasFileTypes) {
            kept = corma::replaced(line, kFileTypes, "");
        }
        const auto entry = corma::splitEntry(keys.hasFileTypes ? kept : line);
        if (entry && m_category != nullptr) {
            const bool isBroken = entry->ident.find(corma::kLineBreak) != std::string_view::npos;
            if (keys.hasFileTypesBehindBreak || isBroken) {
                takeTextsApart(*entry, line);
            } else {
                takeTexts(*entry);
            }
        }
        return entry.has_value();
    }

private:
    // A picture is for the setting of the ident line before, whatever this line is.
    void takePicture(std::string_view rest)
    {
        if (m_previous != nullptr) {
            m_previous->setBitmap(
                m_texts.pack(corma::picturePath(m_folder, corma::keyValue(rest), m_buffer)));
        }
    }

    void takeTexts(corma::ModelEntry entry)
    {
        m_previous = m_category->settings().findPacked(entry.ident);
        if (m_previous != nullptr) {
            m_previous->setDescription(m_texts.pack(entry.value));
        }
    }

    // The short text is cut from the line without line breaks. So is its ident, and a blank that
    // was a line break goes with the file types behind it.
    void takeTextsApart(corma::ModelEntry entry, std::string_view line)
    {
        const InstellingenArray& settings = m_category->settings();
        if (Instelling* const setting = settings.findPacked(entry.ident)) {
            setting->setLongDescription(m_texts.pack(entry.value));
        }
        const std::string whole = corma::replaced(corma::onOneLine(line), kFileTypes, "");
        const auto shortEntry = corma::splitEntry(whole);
        m_previous = shortEntry ? settings.findPacked(shortEntry->ident) : nullptr;
        if (m_previous != nullptr) {
            m_previous->setShortDescription(m_texts.pack(shortEntry->value));
        }
    }

    const RubriekenArray& m_model;
    corma::TextArena& m_texts;
    std::string m_folder;
    std::string m_buffer;
    Rubriek* m_category = nullptr; // null for an unknown chapter
    Instelling* m_previous = nullptr; // what the ident line before found
};

} // namespace

// Without descriptions in its language a model has none.
void RubriekenArray::loadDescriptions(const FileNameSet& fileNames)
{
    const auto file = xx_openUnicode(pathOf(fileNames), corma::OpenMode::text);
    if (!file) {
        return;
    }
    corma::Defects defects(L"ind");
    DescriptionLoader loader(*this, m_texts, fileNames.globalFolder);
    std::string converted;
    corma::ModelLines lines(file->utf8(converted));
    for (std::string_view line; lines.next(line);) {
        if (corma::isIgnored(line)) {
            continue;
        }
        if (line.front() != '[') {
            if (!loader.take(line)) {
                defects.addSkipped(L'=', line, lines.number());
            }
        } else if (const auto chapter = corma::chapterOf(line, lines.number(), defects)) {
            loader.enter(*chapter);
            const std::string_view behind = line.substr(line.find(']') + 1);
            if (behind.starts_with('=')) {
                loader.describe(*chapter, behind.substr(1));
            }
        }
    }
    defects.tell();
}
