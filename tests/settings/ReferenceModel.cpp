#include "settings/ReferenceModel.h"

#include "inifile/numbers.h"
#include "platform/text.h"
#include "settings/reference_setting.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace corma::testing {

namespace {

constexpr wchar_t kSectionSign = 167;
constexpr std::size_t kNone = std::wstring::npos;

// --- characters and lines ------------------------------------------------------------------------

std::wstring fromUtf16(const std::string& bytes, std::size_t highByte)
{
    std::vector<char32_t> units;
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        const bool isWhole = at + 1 < bytes.size();
        const auto high = static_cast<unsigned char>(isWhole ? bytes[at + highByte] : '\xFF');
        const auto low = static_cast<unsigned char>(isWhole ? bytes[at + 1 - highByte] : '\xFD');
        units.push_back(static_cast<char32_t>(high * 256 + low));
    }
    const auto isLead = [&](std::size_t i) { return units[i] >= 0xD800 && units[i] < 0xDC00; };
    const auto isTrail = [&](std::size_t i) { return units[i] >= 0xDC00 && units[i] < 0xE000; };
    std::wstring text;
    for (std::size_t i = 0; i < units.size(); ++i) {
        if (isLead(i) && i + 1 < units.size() && isTrail(i + 1)) {
            text += static_cast<wchar_t>(0x10000 + (units[i] - 0xD800) * 0x400
                                         + (units[i + 1] - 0xDC00));
            ++i;
        } else {
            text += isLead(i) || isTrail(i) ? L'\xFFFD' : static_cast<wchar_t>(units[i]);
        }
    }
    return text;
}

std::wstring decoded(const std::string& bytes)
{
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        return fromUtf8(std::string_view(bytes).substr(3));
    }
    if (bytes.starts_with("\xFF\xFE")) {
        return fromUtf16(bytes.substr(2), 1);
    }
    if (bytes.starts_with("\xFE\xFF")) {
        return fromUtf16(bytes.substr(2), 0);
    }
    if (isUtf8(bytes)) {
        return fromUtf8(bytes);
    }
    std::wstring text;
    for (const char byte : bytes) {
        text += fromWindows1252(static_cast<unsigned char>(byte));
    }
    return text;
}

std::wstring replacedAll(std::wstring text, std::wstring_view what, std::wstring_view with)
{
    std::size_t at = 0;
    while ((at = text.find(what, at)) != kNone) {
        text.replace(at, what.size(), with);
        at += with.size();
    }
    return text;
}

// As reading in text mode gives it: a line ends in a line feed alone.
std::wstring textOfFile(const std::string& bytes)
{
    return replacedAll(decoded(bytes), L"\r\n", L"\n");
}

// The lines in pieces of at most so many characters, each with its line feed.
std::vector<std::wstring> piecesOf(const std::wstring& text, std::size_t mostCharacters)
{
    std::vector<std::wstring> pieces;
    std::wstring piece;
    for (const wchar_t c : text) {
        piece += c;
        if (c == L'\n' || piece.size() == mostCharacters) {
            pieces.push_back(piece);
            piece.clear();
        }
    }
    if (!piece.empty()) {
        pieces.push_back(piece);
    }
    return pieces;
}

std::vector<std::wstring> wideLinesOf(const std::string& bytes)
{
    std::vector<std::wstring> lines = piecesOf(textOfFile(bytes), kNone);
    for (std::wstring& line : lines) {
        std::erase(line, L'\n');
    }
    return lines;
}

// Without line feeds, and without blanks up to behind the first "=".
std::wstring withoutBlanks(const std::wstring& line)
{
    const bool keepsBlanks = line.starts_with(L' ') || line.starts_with(L'\t');
    const std::size_t equals = line.find(L'=');
    const std::size_t last = equals == kNone ? line.size() : equals + 1;
    std::wstring result;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool drops = line[i] == L'\n' || (line[i] == L' ' && !keepsBlanks && i <= last);
        if (!drops) {
            result += line[i];
        }
    }
    return result;
}

bool isIgnored(const std::wstring& line)
{
    return line.empty() || line[0] == L';' || line[0] == L' ' || line[0] == L'\t';
}

std::optional<std::wstring> chapterOf(const std::wstring& header)
{
    const std::size_t close = header.find(L']');
    if (close == kNone) {
        return std::nullopt;
    }
    return header.substr(1, close - 1);
}

// --- keys of a definition ------------------------------------------------------------------------

std::optional<std::wstring> behind(const std::wstring& line, const std::wstring& key)
{
    const std::size_t at = line.find(key);
    if (at == kNone) {
        return std::nullopt;
    }
    return line.substr(at + key.size());
}

std::wstring upTo(const std::wstring& text, wchar_t c)
{
    return text.substr(0, text.find(c));
}

std::optional<std::wstring> valueOf(const std::wstring& line, const std::wstring& key)
{
    const auto rest = behind(line, key);
    if (!rest) {
        return std::nullopt;
    }
    return upTo(*rest, L' ');
}

std::wstring picturePath(const std::wstring& picture, const std::wstring& folder)
{
    return picture.find_first_of(L"\\/") == kNone ? folder + picture : picture;
}

std::vector<std::wstring> fieldsOf(const std::wstring& text)
{
    std::vector<std::wstring> fields(1);
    for (const wchar_t c : text) {
        if (c == L',') {
            fields.emplace_back();
        } else {
            fields.back() += c;
        }
    }
    return fields;
}

int numberAt(const std::vector<std::wstring>& fields, std::size_t place)
{
    return place < fields.size() ? toInt(fields[place]) : 0;
}

// The pieces between characters "[" and "]", however many of them stand together.
std::vector<std::wstring> bracketPieces(const std::wstring& text)
{
    std::vector<std::wstring> pieces;
    std::wstring piece;
    for (const wchar_t c : text + L"]") {
        if (c != L'[' && c != L']') {
            piece += c;
        } else if (!piece.empty()) {
            pieces.push_back(piece);
            piece.clear();
        }
    }
    pieces.resize(std::max<std::size_t>(pieces.size(), 2));
    return pieces;
}

unsigned typeOf(const std::wstring& line)
{
    const std::wstring letters = L"tidklbvoxhcq";
    const std::size_t equals = line.find(L'=');
    if (equals == kNone || equals + 1 == line.size()) {
        return 0;
    }
    const std::size_t place = letters.find(line[equals + 1]);
    return place == kNone ? 0 : static_cast<unsigned>(place + 1);
}

// A null character ends a text that is told to the user.
std::wstring shown(const std::wstring& text)
{
    return upTo(text, L'\0');
}

CategoryContents newCategory(const std::wstring& name, const std::wstring& description = L"")
{
    CategoryContents category;
    category.name = name;
    category.description = description;
    return category;
}

std::array<std::wstring, 2> descriptionFolders(int language)
{
    switch (language) {
    case 19:
        return {L"LanNL", L"LanN"};
    case 12:
        return {L"LanFR", L"LanF"};
    case 7:
        return {L"LanDE", L"LanG"};
    case 10:
        return {L"LanES", L"LanS"};
    case 25:
        return {L"LanRU", L"LanR"};
    default:
        return {L"LanEN", L"LanE"};
    }
}

} // namespace

// --- families ------------------------------------------------------------------------------------

std::wstring FileFamily::nameWithEnding(std::wstring_view ending) const
{
    return name.substr(0, name.size() - ending.size()) + std::wstring(ending);
}

const std::string* FileFamily::find(const std::wstring& file) const
{
    const auto found = files.find(file);
    return found == files.end() ? nullptr : &found->second;
}

// --- loading -------------------------------------------------------------------------------------

std::wstring plainNormaliseLine(const std::wstring& line)
{
    return withoutBlanks(line).substr(0, 255);
}

/// What the reading of one file remembers.
class ReferenceModel::FileLoad
{
public:
    FileLoad(ReferenceModel& owner, const wchar_t* kind)
        : model(owner)
        , m_kind(kind)
    {
    }

    void skip(wchar_t missing, const std::wstring& line, std::size_t number)
    {
        if (m_defect.empty()) {
            m_defect = std::wstring(L"Line was skipped! Expected: \"") + missing + L"\" (" + m_kind
                + L":" + std::to_wstring(number) + L") (" + shown(line) + L")";
        }
    }

    /// The chapter of a header becomes the current one; false when the header is none.
    bool enter(const std::wstring& header, std::size_t number)
    {
        const auto name = chapterOf(header);
        if (!name) {
            skip(L']', header.substr(1), number);
            return false;
        }
        if (name->size() > 256) {
            cut(number);
        }
        chapter = name->substr(0, 256);
        return true;
    }

    /// What is too long in a line is cut.
    void cut(std::size_t number)
    {
        if (m_cut.empty()) {
            m_cut = L"\nLine was too long and is cut (" + m_kind + L":" + std::to_wstring(number)
                + L")";
        }
    }

    /// At the end of the file, the user is told of what was found first.
    void finish()
    {
        model.printed += m_cut;
        if (!m_defect.empty()) {
            model.boxes.push_back(m_defect);
        }
    }

    CategoryContents* category() { return model.findCategory(chapter); }

    SettingContents* setting(const std::wstring& ident) { return findSetting(category(), ident); }

    ReferenceModel& model;
    std::wstring chapter = L"Algemeen";

private:
    std::wstring m_kind;
    std::wstring m_defect;
    std::wstring m_cut;
};

ReferenceModel ReferenceModel::load(const FileFamily& family)
{
    ReferenceModel model;
    if (const std::string* const global = family.find(family.name)) {
        model.categories.push_back(newCategory(L"Algemeen", L"General settings"));
        model.loadLines(wideLinesOf(*global), Blanks::kept);
    } else {
        model.boxes.push_back(family.folder + family.name + L" was not found.");
    }
    if (const std::string* const definitions = family.find(family.nameWithEnding(L"r"))) {
        model.loadDefinitions(*definitions, family.folder);
    }
    const auto folders = descriptionFolders(family.language);
    const std::wstring name = L"/" + family.nameWithEnding(L"d");
    const bool hasFirst = family.find(folders[0] + name) != nullptr;
    if (const std::string* const found = family.find(folders[hasFirst ? 0 : 1] + name)) {
        model.loadDescriptions(*found, family.folder);
    }
    return model;
}

ReferenceModel ReferenceModel::loadStream(const std::string& bytes)
{
    ReferenceModel model;
    model.categories.push_back(newCategory(L"Algemeen"));
    model.loadLines(wideLinesOf(bytes), Blanks::removed);
    return model;
}

void ReferenceModel::loadLines(const std::vector<std::wstring>& lines, Blanks blanks)
{
    FileLoad load(*this, L"ini");
    for (std::size_t number = 0; number < lines.size(); ++number) {
        std::wstring line
            = blanks == Blanks::removed ? withoutBlanks(lines[number]) : lines[number];
        if (isIgnored(line)) {
            continue;
        }
        if (blanks == Blanks::removed && line.size() > 255) {
            load.cut(number);
            line.resize(255);
        }
        const std::size_t equals = line.find(L'=');
        if (line[0] == L'[') {
            if (load.enter(line, number)) {
                categories.push_back(newCategory(load.chapter));
            }
        } else if (equals == kNone) {
            load.skip(L'=', line, number);
        } else {
            addSetting(load.category(),
                       newSetting(line.substr(0, equals), line.substr(equals + 1)));
        }
    }
    load.finish();
}

void ReferenceModel::addSetting(CategoryContents* category, const SettingContents& setting)
{
    if (category == nullptr) {
        return;
    }
    if (findSetting(category, setting.name) != nullptr) {
        doubles.push_back(setting.name);
        const std::wstring told
            = (L"Setting '" + shown(setting.name) + L"' already exists").substr(0, 256);
        const std::wstring report
            = (L"Error in file InstellingenArray.cpp on line 45\n(" + told + L", ec = 59798)")
                  .substr(0, 255);
        printed += L"\n" + replacedAll(report, L"%", L"$");
    } else {
        category->settings.push_back(setting);
    }
}

namespace {

// All but the type and the choices.
void setAttributes(SettingContents& setting, const std::wstring& line, const std::wstring& folder)
{
    const auto picture = valueOf(line, L"bitmap=");
    setting.bitmap = picture ? picturePath(*picture, folder) : L"";
    setting.maxValue = valueOf(line, L"max=").value_or(setting.maxValue);
    setting.minValue = valueOf(line, L"min=").value_or(setting.minValue);
    setting.readOnly = valueOf(line, L"readonly=").value_or(L"false");
    setting.level = valueOf(line, L"level=").value_or(setting.level);
    setting.fileTypes = valueOf(line, L"filetypes=").value_or(setting.fileTypes);
    if (const auto colour = valueOf(line, L"rgb=")) {
        const auto fields = fieldsOf(*colour);
        setting.rgb = 0;
        for (const std::size_t place : {2U, 1U, 0U}) {
            setting.rgb
                = setting.rgb * 256 + (static_cast<unsigned>(numberAt(fields, place)) % 256);
        }
    }
    if (const auto access = valueOf(line, L"access=")) {
        setting.viewAccess = static_cast<short>(numberAt(fieldsOf(*access), 0));
        setting.editAccess = static_cast<short>(numberAt(fieldsOf(*access), 1));
    }
}

} // namespace

std::optional<std::wstring> ReferenceModel::choicesOf(const std::wstring& line,
                                                      const std::wstring& currentChapter)
{
    if (const auto list = behind(line, L"choices={")) {
        return list->find(L'}') == kNone ? L"" : upTo(*list, L'}');
    }
    const auto reference = behind(line, L"choices=");
    if (!reference) {
        return std::nullopt;
    }
    std::wstring chapter = currentChapter;
    std::wstring ident = *reference;
    const std::size_t open = reference->find(L'[');
    if (open != kNone && reference->find(L']', open) != kNone) {
        const auto pieces = bracketPieces(*reference);
        chapter = pieces[0];
        ident = pieces[1];
    }
    if (!hasCategory(chapter)) {
        return std::nullopt;
    }
    const SettingContents* const referred = findSetting(findCategory(chapter), ident);
    return referred == nullptr ? std::nullopt : std::optional(referred->value);
}

void ReferenceModel::loadDefinitions(const std::string& bytes, const std::wstring& folder)
{
    FileLoad load(*this, L"inr");
    const std::vector<std::wstring> lines = wideLinesOf(bytes);
    for (std::size_t number = 0; number < lines.size(); ++number) {
        const std::wstring& line = lines[number];
        if (isIgnored(line)) {
            continue;
        }
        if (line[0] == L'[') {
            load.enter(line, number);
            continue;
        }
        // A line without "=" is no defect here, as only a later one would be told of.
        SettingContents* const setting = load.setting(upTo(line, L'='));
        if (setting == nullptr) {
            continue;
        }
        if (hasCategory(load.chapter)) {
            setting->type = typeOf(line);
        }
        setAttributes(*setting, line, folder);
        setting->choices = choicesOf(line, load.chapter).value_or(setting->choices);
    }
    load.finish();
}

void ReferenceModel::loadDescriptions(const std::string& bytes, const std::wstring& folder)
{
    FileLoad load(*this, L"ind");
    SettingContents* above = nullptr; // that the previous ident line found
    const std::vector<std::wstring> lines = wideLinesOf(bytes);
    for (std::size_t number = 0; number < lines.size(); ++number) {
        const std::wstring& line = lines[number];
        if (isIgnored(line)) {
            continue;
        }
        if (line[0] == L'[') {
            const std::wstring rest = behind(line, L"]").value_or(L"");
            if (load.enter(line, number) && rest.starts_with(L'=') && load.category() != nullptr) {
                load.category()->description = rest.substr(1);
            }
            continue;
        }
        const auto picture = valueOf(line, L"bitmap=");
        if (picture && above != nullptr) {
            above->bitmap = picturePath(*picture, folder);
        }
        if (!describe(load, line, above)) {
            load.skip(L'=', line, number);
        }
    }
    load.finish();
}

bool ReferenceModel::describe(FileLoad& load, const std::wstring& line, SettingContents*& above)
{
    const std::wstring asItStands = replacedAll(line, L" filetypes=", L"");
    const std::wstring onOneLine
        = replacedAll(replacedAll(line, std::wstring(1, kSectionSign), L" "), L" filetypes=", L"");
    if (asItStands.find(L'=') == kNone) {
        return false;
    }
    if (!hasCategory(load.chapter)) {
        return true; // nothing is looked up, so what was found before stays remembered
    }
    if (SettingContents* const setting = load.setting(upTo(asItStands, L'='))) {
        setting->longDescription = behind(asItStands, L"=").value();
    }
    // The removal may have taken the only "=" from this one: then it names no ident.
    const auto text = behind(onOneLine, L"=");
    above = text ? load.setting(upTo(onOneLine, L'=')) : nullptr;
    if (above != nullptr) {
        above->shortDescription = *text;
    }
    return true;
}

void ReferenceModel::loadProjectFile(const std::string& bytes)
{
    projectMode = true;
    if (categories.empty()) {
        categories.push_back(newCategory(L"Algemeen")); // there is always one to put settings in
    }
    FileLoad load(*this, L"ipr");
    const std::vector<std::wstring> pieces = piecesOf(textOfFile(bytes), 254);
    for (std::size_t number = 0; number < pieces.size(); ++number) {
        const std::wstring line = plainNormaliseLine(pieces[number]);
        const std::size_t equals = line.find(L'=');
        if (line.empty() || line[0] == L';') {
            continue;
        }
        if (line[0] == L'[') {
            if (load.enter(line, number) && !hasCategory(load.chapter)) {
                categories.push_back(newCategory(load.chapter));
            }
            continue;
        }
        if (equals == kNone) {
            load.skip(L'=', line, number);
            continue;
        }
        const std::wstring value = line.substr(equals + 1);
        if (SettingContents* const known = load.setting(line.substr(0, equals))) {
            setProjectValue(*known, value);
        } else {
            SettingContents setting = newSetting(line.substr(0, equals), value);
            setting.isProject = true;
            addSetting(load.category(), setting);
        }
    }
    load.finish();
}

void ReferenceModel::loadDictionary(CategoryContents& category, const DrawingValues::Values& values)
{
    for (const auto& [name, value] : values) {
        if (findSetting(&category, name) == nullptr) {
            category.settings.push_back(newSetting(name, L"***KV_BESTAAT_NIET***"));
        }
        setLocalValue(*findSetting(&category, name), value);
    }
}

void ReferenceModel::loadDrawing(const DrawingValues& drawing)
{
    localMode = true;
    if (CategoryContents* const head = findCategory(L"Algemeen")) {
        loadDictionary(*head, drawing.head);
    }
    for (const auto& [name, values] : drawing.chapters) {
        if (!hasCategory(name)) {
            categories.push_back(newCategory(name));
        }
        loadDictionary(*findCategory(name), values);
    }
}

// --- lookups -------------------------------------------------------------------------------------

CategoryContents* ReferenceModel::findCategory(const std::wstring& name)
{
    if (categories.empty()) {
        return nullptr;
    }
    CategoryContents* found = &categories[0];
    for (CategoryContents& category : categories) {
        if (category.name == name) {
            found = &category;
        }
    }
    return found;
}

bool ReferenceModel::hasCategory(const std::wstring& name) const
{
    return std::any_of(categories.begin(), categories.end(),
                       [&](const CategoryContents& category) { return category.name == name; });
}

SettingContents* ReferenceModel::findSetting(CategoryContents* category, const std::wstring& name)
{
    SettingContents* found = nullptr;
    if (category != nullptr) {
        for (SettingContents& setting : category->settings) {
            if (setting.name == name) {
                found = &setting;
            }
        }
    }
    return found;
}

} // namespace corma::testing
