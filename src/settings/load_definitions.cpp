// What the definitions file tells of each setting: its type, and attributes as "key=value".

#include "foundation/text_file.h"
#include "inifile/Ident.h"
#include "inifile/numbers.h"
#include "inifile/words.h"
#include "settings/RubriekenArray.h"
#include "settings/load.h"
#include "settings/model_lines.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

namespace {

// The keys, in the order in which they are told to a setting.
enum class Key : std::size_t
{
    bitmap,
    choices,
    choiceList, // choices with a brace behind the "="
    max,
    min,
    readOnly,
    level,
    fileTypes,
    rgb,
    access
};

constexpr std::size_t kKeyCount = 10;

struct KeyName
{
    Key key;
    std::string_view name;
};

constexpr std::array kKeyNames = {
    KeyName {Key::access, "access"},
    KeyName {Key::choices, "choices"},
    KeyName {Key::fileTypes, "filetypes"},
    KeyName {Key::bitmap, "bitmap"},
    KeyName {Key::max, "max"},
    KeyName {Key::min, "min"},
    KeyName {Key::readOnly, "readonly"},
    KeyName {Key::level, "level"},
    KeyName {Key::rgb, "rgb"},
};

// The key that a text ends with. The last letter tells most words from most keys.
std::optional<Key> keyBehind(std::string_view text)
{
    for (const KeyName& key : kKeyNames) {
        if (!text.empty() && text.back() == key.name.back() && text.ends_with(key.name)) {
            return key.key;
        }
    }
    return std::nullopt;
}

// A line of the file. A key counts where it stands first, in whatever part of the line: it needs no
// blank before it.
class Definition
{
public:
    explicit Definition(std::string_view line)
        : m_line(line)
    {
        const std::size_t first = corma::findNear(line, '=');
        m_ident = line.substr(0, first);
        for (std::size_t at = first; at != std::string_view::npos;
             at = corma::findNear(line, '=', at + 1)) {
            note(at);
        }
    }

    [[nodiscard]] std::string_view ident() const { return m_ident; }

    // A line without "=" has none, and so an unknown one.
    [[nodiscard]] char letter() const
    {
        return m_ident.size() + 1 < m_line.size() ? m_line[m_ident.size() + 1] : '\0';
    }

    [[nodiscard]] bool has(Key key) const { return place(key) != 0; }

    // What stands behind a key: all of the line.
    [[nodiscard]] std::string_view rest(Key key) const { return m_line.substr(place(key)); }

    // The value of a key that is there: up to a blank.
    [[nodiscard]] std::string_view value(Key key) const { return corma::keyValue(rest(key)); }

private:
    [[nodiscard]] std::size_t place(Key key) const
    {
        return m_places[static_cast<std::size_t>(key)];
    }

    void note(std::size_t equals)
    {
        const auto key = keyBehind(m_line.substr(0, equals));
        if (!key) {
            return;
        }
        keepFirst(*key, equals + 1);
        if (key == Key::choices && m_line.substr(equals + 1).starts_with('{')) {
            keepFirst(Key::choiceList, equals + 2);
        }
    }

    void keepFirst(Key key, std::size_t at)
    {
        std::size_t& place = m_places[static_cast<std::size_t>(key)];
        if (place == 0) {
            place = at;
        }
    }

    std::string_view m_line;
    std::string_view m_ident;
    std::array<std::size_t, kKeyCount> m_places {}; // behind the "=" of a key; 0: it is not there
};

// The next of the fields between commas, as a number; 0 behind the last one.
int nextNumber(std::string_view& fields)
{
    const std::size_t comma = std::min(fields.find(','), fields.size());
    const int number = corma::toInt(fields.substr(0, comma));
    fields.remove_prefix(std::min(comma + 1, fields.size()));
    return number;
}

std::uint32_t nextColourByte(std::string_view& fields)
{
    return static_cast<std::uint32_t>(nextNumber(fields)) & 0xFFU;
}

std::uint32_t colourOf(std::string_view fields)
{
    const std::uint32_t red = nextColourByte(fields);
    const std::uint32_t green = nextColourByte(fields);
    return red | (green << 8U) | (nextColourByte(fields) << 16U);
}

// Takes the lines of a definitions file into a model.
class DefinitionLoader
{
public:
    DefinitionLoader(const RubriekenArray& model, corma::TextArena& texts,
                     std::wstring_view globalFolder)
        : m_model(model)
        , m_texts(texts)
        , m_folder(corma::toPacked(globalFolder))
    {
        enter(corma::toPacked(corma::kHeadChapter));
    }

    void enter(std::string_view chapter)
    {
        m_chapter = chapter;
        m_category = m_model.findPacked(chapter);
        m_isKnown = m_model.hasPacked(chapter);
    }

    // Definitions of an unknown chapter, but for the type, are for the setting of that name in
    // "Algemeen" (test: DefinitionsOfAnUnknownChapterGoToAlgemeen).
    void take(const Definition& line)
    {
        Instelling* const setting
            = m_category == nullptr ? nullptr : m_category->settings().findPacked(line.ident());
        if (setting == nullptr) {
            return;
        }
        if (m_isKnown) {
            setting->setType(corma::typeOfLetter(line.letter()));
        }
        takeBitmap(line, *setting);
        takeChoices(line, *setting);
        takeTexts(line, *setting);
        takeNumbers(line, *setting);
    }

private:
    void takeBitmap(const Definition& line, Instelling& setting)
    {
        setting.setBitmap(line.has(Key::bitmap) ? m_texts.pack(
                              corma::picturePath(m_folder, line.value(Key::bitmap), m_buffer))
                                                : corma::PackedText());
    }

    void takeChoices(const Definition& line, Instelling& setting) const
    {
        if (line.has(Key::choiceList)) {
            const std::string_view rest = line.rest(Key::choiceList);
            const std::size_t end = rest.find('}');
            setting.setChoices(m_texts.pack(end == std::string_view::npos ? std::string_view()
                                                                          : rest.substr(0, end)));
        } else if (line.has(Key::choices)) {
            if (const Instelling* const other = referred(line.rest(Key::choices))) {
                setting.setChoices(m_texts.pack(other->packedValue()));
            }
        }
    }

    // The setting whose value is a list of choices: "ident" of the same chapter, "[chapter]ident".
    [[nodiscard]] const Instelling* referred(std::string_view reference) const
    {
        std::string_view chapter = m_chapter;
        const std::size_t open = reference.find('[');
        if (open != std::string_view::npos && reference.find(']', open) != std::string_view::npos) {
            chapter = nextPiece(reference);
            reference = nextPiece(reference);
        }
        return m_model.hasPacked(chapter)
            ? m_model.findPacked(chapter)->settings().findPacked(reference)
            : nullptr;
    }

    // The next of the pieces between brackets.
    static std::string_view nextPiece(std::string_view& text)
    {
        constexpr std::string_view kBrackets = "[]";
        text.remove_prefix(std::min(text.find_first_not_of(kBrackets), text.size()));
        const std::string_view piece = text.substr(0, text.find_first_of(kBrackets));
        text.remove_prefix(piece.size());
        return piece;
    }

    void takeTexts(const Definition& line, Instelling& setting) const
    {
        if (line.has(Key::max)) {
            setting.setMaxValue(m_texts.pack(line.value(Key::max)));
        }
        if (line.has(Key::min)) {
            setting.setMinValue(m_texts.pack(line.value(Key::min)));
        }
        setting.setReadOnly(
            m_texts.pack(line.has(Key::readOnly) ? line.value(Key::readOnly) : "false"));
        if (line.has(Key::level)) {
            setting.setLevel(m_texts.pack(line.value(Key::level)));
        }
        if (line.has(Key::fileTypes)) {
            setting.setFileTypes(m_texts.pack(line.value(Key::fileTypes)));
        }
    }

    static void takeNumbers(const Definition& line, Instelling& setting)
    {
        if (line.has(Key::rgb)) {
            setting.setRgb(colourOf(line.value(Key::rgb)));
        }
        if (line.has(Key::access)) {
            std::string_view fields = line.value(Key::access);
            setting.setViewAccess(static_cast<short>(nextNumber(fields)));
            setting.setEditAccess(static_cast<short>(nextNumber(fields)));
        }
    }

    const RubriekenArray& m_model;
    corma::TextArena& m_texts;
    std::string m_folder;
    std::string m_buffer;
    std::string m_chapter;
    Rubriek* m_category = nullptr; // "Algemeen" for an unknown chapter; null in an empty model
    bool m_isKnown = false;
};

} // namespace

// A line without "=" is no defect here, unlike in the other files: a bare ident may stand in it.
void RubriekenArray::loadDefinitions(const FileNameSet& fileNames)
{
    const auto file
        = xx_openUnicode(fileNames.globalFolder + fileNames.definitionsName, corma::OpenMode::text);
    if (!file) {
        return;
    }
    corma::Defects defects(L"inr");
    DefinitionLoader loader(*this, m_texts, fileNames.globalFolder);
    std::string converted;
    corma::ModelLines lines(file->utf8(converted));
    for (std::string_view line; lines.next(line);) {
        if (corma::isIgnored(line)) {
            continue;
        }
        if (line.front() != '[') {
            loader.take(Definition(line));
        } else if (const auto chapter = corma::chapterOf(line, lines.number(), defects)) {
            loader.enter(*chapter);
        }
    }
    defects.tell();
}
