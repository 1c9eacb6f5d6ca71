// Holds the model against the plain reading of its rules, over random families of files.

#include "foundation/text_file.h"
#include "host/acdb_object.h"
#include "inifile/drawing_settings.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "settings/ReferenceModel.h"
#include "settings/RubriekenArray.h"
#include "settings/model_lines.h"
#include "settings/reference_setting.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include "support/random_choice.h"

#include <gtest/gtest.h>
#include <random>

namespace corma::testing {

namespace {

using Words = std::vector<std::wstring>;

// --- texts ---------------------------------------------------------------------------------------

// Few of them, so that doubles, misses and look-alikes all occur.
const Words kIdents = {L"a",
                       L"A",
                       L"ab",
                       L"",
                       L"a b",
                       L"a ",
                       L"bitmap",
                       L"min",
                       L"\xE9",
                       L"\xE9 t",
                       L"a\xA7"
                       L"b",
                       L"choices",
                       L"[x",
                       L"#INCLUDE",
                       L"longer than seven",
                       L"\x20AC",
                       L"a filety",
                       L"level",
                       L"max",
                       L"%s"};
const Words kChapters
    = {L"Algemeen", L"T", L"t", L"", L"a b", L"ab", L"\xE9", L"T=", L"[T", L"longer than seven"};
const Words kValues = {L"",
                       L"1",
                       L" 1 ",
                       L"a",
                       L"x y",
                       L"a=b",
                       L"***KV_BESTAAT_NIET***",
                       L"\xE9\xA7\x20AC",
                       L"min=1",
                       L"{x}",
                       L"[T]a",
                       L"more than seven characters",
                       L"\t",
                       L";"};
const Words kLetters = {L"t", L"i", L"d", L"k", L"l", L"b", L"v", L"o", L"x",
                        L"h", L"c", L"q", L"s", L"T", L" ", L"",  L"=", L"\xE9"};
const Words kKeys = {L"min=0",
                     L"max=100",
                     L"admin=5",
                     L"min=",
                     L"min=1\tmax=2",
                     L"bitmap=p.bmp",
                     L"bitmap=",
                     L"bitmap=s/p.bmp",
                     L"bitmap=s\\p.bmp",
                     L"bitmap=\xA7.bmp",
                     L"choices={x y,z}",
                     L"choices={}",
                     L"choices={x",
                     L"choices=x}",
                     L"choices={min=3 level=x}",
                     L"readonly=true",
                     L"readonly=",
                     L"readonly=false",
                     L"level=d",
                     L"level=p",
                     L"level=max=3",
                     L"filetypes=T|*.t||",
                     L"filetypes=",
                     L"rgb=255,0,0",
                     L"rgb=1",
                     L"rgb=,,3",
                     L"rgb=300,-1,2x",
                     L"rgb=1,2,3,4",
                     L"rgb=",
                     L"rgb=99999999999,+7,\t9",
                     L"access=10,20",
                     L"access=70000",
                     L"access=,5",
                     L"access=-1,x",
                     L"access=1,2,3"};
const Words kReferences
    = {L"a",     L"T]a",         L"]T[a",    L"[T]a",     L"[T]", L"[]a",    L"[[T]]a",
       L"x[T]a", L"[Algemeen]a", L"[none]a", L"[a b]a b", L"a ",  L"[T]a]b", L"[",
       L"",      L"[\xE9]\xE9",  L"{T}a",    L"[]"};
const Words kHeaderEnds = {L"]",
                           L"]",
                           L"]",
                           L"]",
                           L"",
                           L"]=Alles over",
                           L"] =no",
                           L"]x=no",
                           L"]=",
                           L"]]=no",
                           L"]=a\xA7"
                           L"b filetypes=",
                           L"]=]"};
const Words kDescriptions = {L"Een tekst",
                             L"twee\xA7regels",
                             L"",
                             L"x bitmap=q.bmp y",
                             L"x filetypes=*.t",
                             L"x\xA7"
                             L"filetypes=*.t",
                             L" filetypes=",
                             L" filetyp filetypes=es=z",
                             L" filetypes= filetypes=",
                             L"\xA7",
                             L"\xA7\xA7 filetypes=",
                             L"=",
                             L"\xE9\x20AC",
                             L"bitmap=a/b\xA7"
                             L"c"};

std::wstring filler(Random& random, std::size_t size)
{
    const wchar_t c = oneOf(random, Words {L"v", L" ", L"\xE9", L"=", L"\r", L";"})[0];
    return std::wstring(size, c);
}

// Of a size around those at which texts are cut.
std::wstring longText(Random& random)
{
    const std::size_t around = 254 * (1 + below(random, 2));
    return filler(random, around - 12 + below(random, 20));
}

std::wstring entry(Random& random, const Words& values)
{
    return oneOf(random, kIdents) + L"=" + oneOf(random, values);
}

std::wstring oddLine(Random& random)
{
    switch (below(random, 9)) {
    case 0:
        return L";" + entry(random, kValues);
    case 1:
        return L" " + entry(random, kValues);
    case 2:
        return L"\t" + entry(random, kValues);
    case 3:
        return oneOf(random, kIdents);
    case 4:
        return entry(random, kValues) + L"\r";
    case 5:
        return oneOf(random, kIdents) + L" = " + oneOf(random, kValues);
    case 6:
        return longText(random) + entry(random, kValues);
    case 7:
        return L"[" + longText(random) + oneOf(random, kHeaderEnds);
    default:
        return L"";
    }
}

std::wstring header(Random& random)
{
    return L"[" + oneOf(random, kChapters) + oneOf(random, kHeaderEnds);
}

std::wstring valueLine(Random& random)
{
    const std::size_t kind = below(random, 10);
    return kind == 0 ? oddLine(random)
        : kind < 3   ? header(random)
        : kind == 3  ? oneOf(random, kIdents) + L"=" + longText(random)
                     : entry(random, kValues);
}

std::wstring definitionLine(Random& random)
{
    const std::size_t kind = below(random, 10);
    if (kind < 3) {
        return kind == 0 ? oddLine(random) : header(random);
    }
    static const Words kGaps = {L" ", L" ", L" ", L"", L"\t", L"  ", L"x"};
    std::wstring line = oneOf(random, kIdents) + L"=" + oneOf(random, kLetters);
    for (std::size_t keys = below(random, 5); keys > 0; --keys) {
        line += oneOf(random, kGaps) + oneOf(random, kKeys);
    }
    if (below(random, 3) == 0) {
        line += L" choices=" + oneOf(random, below(random, 2) == 0 ? kIdents : kReferences);
    }
    return line;
}

std::wstring descriptionLine(Random& random)
{
    static const Words kPictures
        = {L"bitmap=p.bmp", L"bitmap=s/p.bmp", L"bitmap=", L"xbitmap=p q", L"bitmap=\xA7p.bmp x"};
    const std::size_t kind = below(random, 12);
    return kind == 0 ? oddLine(random)
        : kind < 4   ? header(random)
        : kind < 6   ? oneOf(random, kPictures)
                     : entry(random, kDescriptions) + (kind == 6 ? L" bitmap=r.bmp" : L"");
}

using LineMaker = std::wstring (*)(Random&);

std::wstring randomText(Random& random, LineMaker makeLine)
{
    static const Words kLineEnds = {L"\n", L"\r\n"};
    std::wstring text;
    const std::wstring lineEnd = oneOf(random, kLineEnds);
    for (std::size_t lines = below(random, 16); lines > 0; --lines) {
        text += makeLine(random) + (below(random, 20) == 0 ? oneOf(random, kLineEnds) : lineEnd);
    }
    return below(random, 3) == 0 ? text + makeLine(random) : text;
}

// --- files ---------------------------------------------------------------------------------------

std::string utf16(const std::wstring& text, bool isBig)
{
    std::string bytes = isBig ? "\xFE\xFF" : "\xFF\xFE";
    for (const char16_t unit : toUtf16(text)) {
        const auto high = static_cast<char>(unit / 256);
        const auto low = static_cast<char>(unit % 256);
        bytes += isBig ? high : low;
        bytes += isBig ? low : high;
    }
    return bytes;
}

std::string windows1252(const std::wstring& text)
{
    std::string bytes;
    for (const wchar_t c : text) {
        bytes += static_cast<char>(toWindows1252(c).value_or('?'));
    }
    return bytes;
}

std::string encoded(Random& random, const std::wstring& text)
{
    switch (below(random, 8)) {
    case 0:
        return utf16(text, below(random, 2) == 0);
    case 1:
        return "\xEF\xBB\xBF" + toUtf8(text);
    case 2:
    case 3:
        return windows1252(text);
    case 4: {
        std::string bytes = toUtf8(text);
        if (!bytes.empty()) {
            bytes[below(random, bytes.size())] = static_cast<char>(below(random, 255) + 1);
        }
        return bytes;
    }
    default:
        return toUtf8(text);
    }
}

FileFamily randomFamily(Random& random, const std::wstring& folder)
{
    static const Words kNames = {L"a.ini", L"a.cfg", L"tool.x.ini", L"ini"};
    static const Words kFolders
        = {L"LanNL", L"LanN", L"LanDE", L"LanG", L"LanEN", L"LanE", L"LanFR", L"LanS", L"LanR"};
    const std::vector<int> languages = {7, 9, 10, 12, 19, 21, 25, 0, 19, 7};
    FileFamily family {.folder = folder,
                       .name = oneOf(random, kNames),
                       .language = languages[below(random, languages.size())],
                       .files = {}};
    const auto add = [&](const std::wstring& name, LineMaker makeLine) {
        family.files[name] = encoded(random, randomText(random, makeLine));
    };
    if (below(random, 40) != 0) {
        add(family.name, valueLine);
    }
    if (below(random, 8) != 0) {
        add(family.nameWithEnding(L"r"), definitionLine);
    }
    for (const std::wstring& folderName : kFolders) {
        if (below(random, 2) == 0) {
            add(folderName + L"/" + family.nameWithEnding(L"d"), descriptionLine);
        }
    }
    return family;
}

void write(const TempFolder& folder, const FileFamily& family)
{
    for (const auto& [name, bytes] : family.files) {
        folder.write(name, bytes);
    }
}

void remove(const TempFolder& folder, const FileFamily& family)
{
    for (const auto& [name, bytes] : family.files) {
        folder.remove(name);
    }
}

// --- comparing -----------------------------------------------------------------------------------

std::string utf8(const Words& texts)
{
    std::string all;
    for (const std::wstring& text : texts) {
        all += toUtf8(text) + "\n";
    }
    return all;
}

// The lines with the one that differs first, as the texts are long.
std::string firstDifference(const std::wstring& found, const std::wstring& expected)
{
    const auto pair = std::mismatch(found.begin(), found.end(), expected.begin(), expected.end());
    const auto upTo = static_cast<std::size_t>(pair.first - found.begin());
    const std::size_t from = found.rfind(L"\n    \"", upTo == 0 ? 0 : upTo - 1) + 1;
    const auto part = [&](const std::wstring& text) {
        return toUtf8(text.substr(from, text.find(L'\n', upTo) - from));
    };
    return "the model has\n" + part(found) + "\nthe rules tell\n" + part(expected);
}

// All lookups that could tell the two models apart.
void expectSameLookups(const RubriekenArray& model, ReferenceModel& reference)
{
    for (const std::wstring& chapter : kChapters) {
        EXPECT_EQ(model.hasCategory(chapter), reference.hasCategory(chapter));
        Rubriek* const category = model.findCategory(chapter);
        CategoryContents* const expected = reference.findCategory(chapter);
        ASSERT_EQ(category == nullptr, expected == nullptr);
        if (category == nullptr) {
            continue;
        }
        EXPECT_EQ(category->name(), expected->name);
        for (const std::wstring& ident : kIdents) {
            const Instelling* const setting = category->settings().findSetting(ident);
            const SettingContents* const same = ReferenceModel::findSetting(expected, ident);
            ASSERT_EQ(setting == nullptr, same == nullptr) << toUtf8(ident);
            EXPECT_EQ(setting == nullptr ? L"" : setting->value(),
                      same == nullptr ? L"" : same->value);
        }
    }
}

void expectSame(const RubriekenArray& model, ReferenceModel& reference,
                const RecordingServices& services)
{
    const std::wstring found = asText(model);
    const std::wstring expected = reference.asText();
    EXPECT_TRUE(found == expected) << firstDifference(found, expected);
    EXPECT_EQ(utf8(services.boxes), utf8(reference.boxes));
    EXPECT_EQ(toUtf8(services.allPrinted()), toUtf8(reference.printed));
    EXPECT_TRUE(services.alerts.empty() && services.failures.empty());
    expectSameLookups(model, reference);
}

std::string described(const FileFamily& family)
{
    std::string text = "language " + std::to_string(family.language);
    for (const auto& [name, bytes] : family.files) {
        text += "\n--- " + toUtf8(name) + "\n" + bytes;
    }
    return text;
}

// Changes of levels as editors make them.
void changeLevels(Random& random, const RubriekenArray& model, ReferenceModel& reference)
{
    for (std::size_t i = 0; i < reference.categories.size(); ++i) {
        for (std::size_t j = 0; j < reference.categories[i].settings.size(); ++j) {
            Instelling& setting = model[i].settings()[j];
            SettingContents& same = reference.categories[i].settings[j];
            const std::wstring value = oneOf(random, kValues);
            const std::size_t kind = below(random, 8);
            if (kind == 0) {
                setting.setProjectValue(value);
                setProjectValue(same, value);
            } else if (kind == 1) {
                setting.setLocalValue(value);
                setLocalValue(same, value);
            } else if (kind == 2 && !setting.isProject()) {
                setting.makeProjectCopy();
                makeProjectCopy(same);
            } else if (kind == 3 && !setting.isLocal()) {
                setting.makeLocalCopy();
                makeLocalCopy(same);
            } else if (kind == 4) {
                setting.setValue(value);
                same.value = value;
            }
        }
    }
}

FileNameSet namesOf(const FileFamily& family)
{
    return FileNameSet::of(family.folder, family.name, family.language);
}

// --- tests ---------------------------------------------------------------------------------------

TEST(ModelDifferential, AFamilyOfFilesLoadsAsTheRulesTell)
{
    const TempFolder folder;
    Random random(31);
    std::size_t settings = 0;
    std::size_t boxes = 0;
    std::size_t doubles = 0;
    for (int round = 0; round < 3000; ++round) {
        const FileFamily family = randomFamily(random, folder.path() + L"/");
        write(folder, family);
        RecordingServices services;
        const RubriekenArray model(namesOf(family));
        ReferenceModel reference = ReferenceModel::load(family);
        expectSame(model, reference, services);
        ASSERT_FALSE(HasFailure()) << "round " << round << "\n" << described(family);
        remove(folder, family);
        for (const CategoryContents& category : reference.categories) {
            settings += category.settings.size();
        }
        boxes += reference.boxes.size();
        doubles += reference.doubles.size();
    }
    EXPECT_GT(settings, 10000U);
    EXPECT_GT(boxes, 1000U);
    EXPECT_GT(doubles, 1000U);
}

TEST(ModelDifferential, AProjectFileLoadsOnTopAsTheRulesTell)
{
    const TempFolder folder;
    Random random(32);
    for (int round = 0; round < 1000; ++round) {
        const FileFamily family = randomFamily(random, folder.path() + L"/");
        write(folder, family);
        RecordingServices services;
        RubriekenArray model(namesOf(family));
        ReferenceModel reference = ReferenceModel::load(family);
        std::string project;
        for (std::size_t files = 1 + below(random, 2); files > 0; --files) {
            const std::string bytes = encoded(random, randomText(random, valueLine));
            ASSERT_TRUE(model.loadProjectFile(folder.write(L"p.ipr", bytes)));
            reference.loadProjectFile(bytes);
            folder.remove(L"p.ipr"); // writing over a file takes some systems long
            project += "\n--- project\n" + bytes;
        }
        expectSame(model, reference, services);
        ASSERT_FALSE(HasFailure()) << "round " << round << "\n" << described(family) << project;
        changeLevels(random, model, reference);
        expectSame(model, reference, services);
        ASSERT_FALSE(HasFailure()) << "round " << round << ", levels changed";
        remove(folder, family);
    }
}

TEST(ModelDifferential, AStreamLoadsAsTheRulesTell)
{
    const TempFolder folder;
    Random random(33);
    for (int round = 0; round < 1000; ++round) {
        const std::string bytes = encoded(random, randomText(random, valueLine));
        const auto stream = xx_openUnicode(folder.write(L"a.ini", bytes), OpenMode::text);
        ASSERT_TRUE(stream);
        folder.remove(L"a.ini"); // writing over a file takes some systems long
        RecordingServices services;
        const RubriekenArray model(stream.get());
        ReferenceModel reference = ReferenceModel::loadStream(bytes);
        expectSame(model, reference, services);
        ASSERT_FALSE(HasFailure()) << "round " << round << "\n" << bytes;
    }
}

// What the working drawing holds below a dictionary.
DrawingValues::Values recordsOf(AcDbObjectId id)
{
    DrawingValues::Values values;
    const host::Opened<AcDbDictionary> dictionary(id);
    const std::unique_ptr<AcDbDictionaryIterator> entry(dictionary->newIterator());
    for (; !entry->done(); entry->next()) {
        const host::Opened<AcDbObject> object(entry->objectId());
        if (const auto value = textOfRecord(*object)) {
            values.emplace_back(entry->name(), *value);
        }
    }
    return values;
}

DrawingValues valuesOf(AcDbDatabase& database, const std::wstring& fileName)
{
    host::Opened<AcDbDictionary> named;
    database.getNamedObjectsDictionary(named.out());
    AcDbObjectId id;
    for (const std::wstring& key : {std::wstring(kSettingsRoot), upperCase(fileName)}) {
        const host::Opened<AcDbDictionary> parent(id.isNull() ? named->objectId() : id);
        if (parent->getAt(key.c_str(), id) != Acad::eOk) {
            return {};
        }
    }
    DrawingValues values {.head = recordsOf(id), .chapters = {}};
    const host::Opened<AcDbDictionary> dictionary(id);
    const std::unique_ptr<AcDbDictionaryIterator> entry(dictionary->newIterator());
    for (; !entry->done(); entry->next()) {
        const host::Opened<AcDbObject> object(entry->objectId());
        if (AcDbDictionary::cast(object.get()) != nullptr) {
            values.chapters.emplace_back(xx_decodeKey(entry->name()), recordsOf(entry->objectId()));
        }
    }
    return values;
}

TEST(ModelDifferential, ADrawingLoadsOnTopAsTheRulesTell)
{
    const TempFolder folder;
    Random random(35);
    std::size_t values = 0;
    for (int round = 0; round < 150; ++round) {
        const FileFamily family = randomFamily(random, folder.path() + L"/");
        write(folder, family);
        RecordingServices services;
        ASSERT_TRUE(newDocument(folder.path(L"house.dxf").c_str()));
        AcDbDatabase& database = *acdbHostApplicationServices()->workingDatabase();
        for (std::size_t i = below(random, 30); i > 0; --i) {
            const auto status = writeToDrawing(
                family.name.c_str(), oneOf(random, kChapters).c_str(),
                oneOf(random, kIdents).c_str(), oneOf(random, kValues).c_str(), &database);
            values += status == Acad::eOk ? 1 : 0; // not each text can be a key
        }
        RubriekenArray model(namesOf(family));
        ReferenceModel reference = ReferenceModel::load(family);
        if (below(random, 2) == 0) {
            const std::string bytes = encoded(random, randomText(random, valueLine));
            ASSERT_TRUE(model.loadProjectFile(folder.write(L"p.ipr", bytes)));
            reference.loadProjectFile(bytes);
        }
        services.printed.clear();
        reference.printed.clear();
        model.loadDrawing(&database, namesOf(family));
        reference.loadDrawing(valuesOf(database, family.name));
        expectSame(model, reference, services);
        ASSERT_FALSE(HasFailure()) << "round " << round << "\n" << described(family);
        remove(folder, family);
    }
    EXPECT_GT(values, 1000U);
}

/// A list that keeps its rows.
class KeptList : public SettingList
{
public:
    [[nodiscard]] short accessLevel() const override { return access; }

    std::wstring translateKey(const std::wstring& word) override { return L"<" + word + L">"; }

    [[nodiscard]] int selectionMark() const override { return -1; }

    void setSelectionMark(int /*row*/) override { }

    [[nodiscard]] int rowCount() const override { return static_cast<int>(rows.size()); }

    void deleteAllRows() override { rows.clear(); }

    void appendRow(const SettingRow& row) override { rows.push_back(row); }

    void setFocus() override { }

    short access = 0;
    std::vector<SettingRow> rows;
};

std::string described(const std::vector<SettingRow>& rows)
{
    std::wstring text;
    for (const SettingRow& row : rows) {
        text += std::to_wstring(row.image) + L"|" + row.name + L"|" + row.type + L"|" + row.value
            + L"|" + row.description + L"|" + std::to_wstring(row.rgb) + L"\n";
    }
    return toUtf8(text);
}

TEST(ModelDifferential, AListIsFilledAsTheRulesTell)
{
    static const Words kSearches
        = {L"", L"a", L"A+", L"+", L"+x", L"een+REGEL", L"x+y", L"\xC9", L"a+b+c", L"z", L"a b"};
    const TempFolder folder;
    Random random(36);
    std::size_t rows = 0;
    for (int round = 0; round < 400; ++round) {
        const FileFamily family = randomFamily(random, folder.path() + L"/");
        write(folder, family);
        RecordingServices services;
        const RubriekenArray model(namesOf(family));
        ReferenceModel reference = ReferenceModel::load(family);
        expectSame(model, reference, services);
        ASSERT_FALSE(HasFailure()) << "round " << round << "\n" << described(family);
        changeLevels(random, model, reference);
        KeptList list;
        for (std::size_t i = 0; i < 2 * reference.categories.size(); ++i) {
            list.access = static_cast<short>(below(random, 30));
            const ShownLevels shown {.global = below(random, 4) != 0,
                                     .project = below(random, 4) != 0,
                                     .local = below(random, 4) != 0};
            const std::wstring& search = oneOf(random, kSearches);
            model[i / 2].settings().fillList(list, search, shown);
            const auto expected = fillRows(reference.categories[i / 2], search, list.access, shown);
            EXPECT_EQ(described(list.rows), described(expected)) << toUtf8(search);
            rows += expected.size();
        }
        expectSame(model, reference, services); // some have become read-only
        ASSERT_FALSE(HasFailure()) << "round " << round << "\n" << described(family);
        remove(folder, family);
    }
    EXPECT_GT(rows, 1000U);
}

TEST(ModelDifferential, ValuesAreCheckedAsTheRulesTell)
{
    static const Words kLabels = {L"Integer", L"Decimal", L"Yes/No", L"Hatch", L"String", L"hatch"};
    static const Words kPieces = {L"0", L"1", L"-1", L"360", L"361", L",", L",",
                                  L",", L".", L" ",  L"x",   L"+5",  L"-", L"99999999999"};
    Random random(37);
    std::size_t valid = 0;
    for (int round = 0; round < 20000; ++round) {
        std::wstring value;
        for (std::size_t pieces = below(random, 16); pieces > 0; --pieces) {
            value += oneOf(random, kPieces);
        }
        const std::wstring& label = oneOf(random, kLabels);
        const std::string shown = toUtf8(label + L": " + value);
        std::wstring expected = value;
        Words boxes;
        const RecordingServices services;
        const bool isValid = Instelling::validateValue(value, label);
        ASSERT_EQ(isValid, validateValue(expected, label, boxes)) << shown;
        ASSERT_EQ(toUtf8(value), toUtf8(expected)) << shown;
        ASSERT_EQ(utf8(services.boxes), utf8(boxes)) << shown;
        valid += isValid ? 1 : 0;
    }
    EXPECT_GT(valid, 1000U);
}

TEST(ModelDifferential, LinesAreNormalisedAsTheRulesTell)
{
    Random random(34);
    for (int round = 0; round < 3000; ++round) {
        std::wstring line = valueLine(random);
        if (!line.empty() && below(random, 4) == 0) {
            line.insert(below(random, line.size()), L"\n");
        }
        EXPECT_EQ(fromUtf8(normaliseLine(toUtf8(line))), plainNormaliseLine(line)) << toUtf8(line);
    }
}

} // namespace

} // namespace corma::testing
