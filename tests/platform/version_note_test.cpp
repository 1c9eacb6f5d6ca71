#include "platform/posix/version_note.h"
#include "support/ModuleFile.h"

#include <gtest/gtest.h>

using corma::testing::Module64;
using corma::testing::moduleFile;
using corma::testing::ModuleForm;
using corma::testing::Note;

namespace corma::platform {
namespace {

using namespace std::string_literals;

const std::string kTexts = "FileDescription=Plans\0FileVersion=4.2.1\0"s;

std::optional<std::string> noteOf(std::string_view bytes)
{
    return versionNote(BytesInMemory(bytes));
}

struct FormRow
{
    const char* name;
    ModuleForm form;
};

void PrintTo(const FormRow& row, std::ostream* out)
{
    *out << row.name;
}

class ModuleForms : public ::testing::TestWithParam<FormRow>
{
};

TEST_P(ModuleForms, TheNoteIsFoundBehindOthers)
{
    const std::string file = moduleFile({{.owner = "GNU\0"s, .type = 3, .descriptor = "abcde"},
                                         {.owner = "", .type = 1, .descriptor = ""},
                                         {.descriptor = kTexts},
                                         {.descriptor = "FileVersion=second\0"s}},
                                        GetParam().form);
    EXPECT_EQ(noteOf(file), kTexts);
}

// Behind the text may stand filling, which nobody needs.
TEST_P(ModuleForms, AFileThatEndsTooEarlyHasNone)
{
    const std::string file
        = moduleFile({{.descriptor = "FileVersion=4.2.100\0"s}}, GetParam().form);
    ASSERT_TRUE(noteOf(file));
    for (std::size_t size = 0; size < file.size() - 8; ++size) {
        EXPECT_FALSE(noteOf(std::string_view(file).substr(0, size))) << size;
    }
}

INSTANTIATE_TEST_SUITE_P(All, ModuleForms,
                         ::testing::Values(FormRow {"Bits64Little", {}},
                                           FormRow {"Bits64Big", {.bigEndian = true}},
                                           FormRow {"Bits32Little", {.bits = 32}},
                                           FormRow {"Bits32Big", {.bits = 32, .bigEndian = true}},
                                           FormRow {"NotesInEights", {.alignment = 8}}),
                         [](const auto& row) { return std::string(row.param.name); });

struct NoteRow
{
    const char* name;
    Note note;
    bool isOurs;
};

void PrintTo(const NoteRow& row, std::ostream* out)
{
    *out << row.name;
}

class Notes : public ::testing::TestWithParam<NoteRow>
{
};

TEST_P(Notes, AreOursByOwnerAndType)
{
    EXPECT_EQ(noteOf(moduleFile({GetParam().note})).has_value(), GetParam().isOurs);
}

INSTANTIATE_TEST_SUITE_P(
    All, Notes,
    ::testing::Values(
        NoteRow {"OursIs", {.descriptor = kTexts}, true},
        NoteRow {"AnEmptyOneIs", {.descriptor = ""}, true},
        NoteRow {"AnotherOwnersIsNot", {.owner = "GNU\0"s, .descriptor = "x"}, false},
        NoteRow {"InOtherCaseIsNot", {.owner = "CORMA\0"s, .descriptor = "x"}, false},
        NoteRow {"ALongerOwnersIsNot", {.owner = "Cormac\0"s, .descriptor = "x"}, false},
        NoteRow {"WithoutATerminatorIsNot", {.owner = "Corma"s, .descriptor = "x"}, false},
        NoteRow {"AnotherTypeIsNot", {.type = 2, .descriptor = "x"}, false}),
    [](const auto& row) { return std::string(row.param.name); });

// Some bytes of a good file are others.
struct DamageRow
{
    const char* name;
    std::size_t at;
    std::string bytes;
    bool isFound;
};

void PrintTo(const DamageRow& row, std::ostream* out)
{
    *out << row.name;
}

class DamagedModules : public ::testing::TestWithParam<DamageRow>
{
};

TEST_P(DamagedModules, HaveTheirNoteOnlyWhereItCanBeReached)
{
    std::string file = moduleFile({{.descriptor = kTexts}});
    ASSERT_EQ(noteOf(file), kTexts);
    file.replace(GetParam().at, GetParam().bytes.size(), GetParam().bytes);
    EXPECT_EQ(noteOf(file), GetParam().isFound ? std::optional(kTexts) : std::nullopt);
}

const std::string kAllOnes(8, '\xFF');

// clang-format off
INSTANTIATE_TEST_SUITE_P(All, DamagedModules, ::testing::Values(
    DamageRow {"AnotherMagic", 3, "f", false},
    DamageRow {"BitsOfNoKind", 4, "\3", false},
    DamageRow {"BitsOfNone", 4, "\0"s, false},
    DamageRow {"OtherBitsThanItHas", 4, "\1", false},
    DamageRow {"AnOrderOfNoKind", 5, "\3", false},
    DamageRow {"TheOtherOrder", 5, "\2", false},
    DamageRow {"SegmentsBehindTheEnd", Module64::kSegmentsAt, "\0\1\0\0"s, false},
    DamageRow {"SegmentsAtTheLastOffset", Module64::kSegmentsAt, kAllOnes, false},
    DamageRow {"SegmentsWhoseSecondRunsOver", Module64::kSegmentsAt, "\xD0" + kAllOnes.substr(1), false},
    DamageRow {"SegmentsOnTheHeader", Module64::kSegmentsAt, "\0"s, false},
    DamageRow {"SegmentsThatAreTooSmall", Module64::kSegmentSizeAt, "\x37\0"s, false},
    DamageRow {"SegmentsThatAreTooLarge", Module64::kSegmentSizeAt, "\xFF\xFF", false},
    DamageRow {"NoSegments", Module64::kSegmentCountAt, "\0\0"s, false},
    DamageRow {"OneSegment", Module64::kSegmentCountAt, "\1\0"s, false},
    DamageRow {"AllSegmentsThatThereCanBe", Module64::kSegmentCountAt, "\xFF\xFF", true},
    DamageRow {"ASegmentOfAnotherType", Module64::kNotes, "\5", false},
    DamageRow {"NotesBehindTheEnd", Module64::kOffsetAt, "\0\1"s, false},
    DamageRow {"NotesAtTheLastOffset", Module64::kOffsetAt, kAllOnes, false},
    DamageRow {"NotesThatEndEarlier", Module64::kSizeAt, "\x10\0"s, false},
    DamageRow {"NotesOfNoSize", Module64::kSizeAt, "\0\0"s, false},
    DamageRow {"NotesLargerThanTheFile", Module64::kSizeAt, kAllOnes, true},
    DamageRow {"AnAlignmentOfNoKind", Module64::kAlignmentAt, "\x20", true},
    DamageRow {"AnOwnerBeyondTheEnd", Module64::kFirstNote, "\xFF\0"s, false},
    DamageRow {"TheLargestOwner", Module64::kFirstNote, kAllOnes.substr(4), false},
    DamageRow {"ATextBeyondTheEnd", Module64::kFirstNote + 4, "\xFF\0"s, false},
    DamageRow {"TheLargestText", Module64::kFirstNote + 4, kAllOnes.substr(4), false},
    DamageRow {"TheLargestOwnerAndText", Module64::kFirstNote, kAllOnes, false}),
    [](const auto& row) { return std::string(row.param.name); });

// clang-format on

TEST(ModuleLimits, ANoteBehindAsManySegmentsAsAreLookedAtIsNotFound)
{
    std::string file = moduleFile({{.descriptor = kTexts}});
    const std::string entry = file.substr(Module64::kNotes, 56);
    const std::string none(56, '\0');
    const auto withSegments = [&](std::size_t before) {
        std::string table;
        for (std::size_t i = 0; i < before; ++i) {
            table += none;
        }
        std::string made = file + table + entry;
        const auto put = [&made](std::size_t at, std::uint64_t value, std::size_t size) {
            for (std::size_t i = 0; i < size; ++i) {
                made[at + i] = static_cast<char>(value >> (8 * i));
            }
        };
        put(Module64::kSegmentsAt, file.size(), 8);
        put(Module64::kSegmentCountAt, before + 1, 2);
        return made;
    };
    EXPECT_EQ(noteOf(withSegments(kMostSegments - 1)), kTexts);
    EXPECT_FALSE(noteOf(withSegments(kMostSegments)));
}

TEST(ModuleLimits, ANoteThatEndsBehindTheBytesThatAreReadIsNotFound)
{
    constexpr std::size_t kHeaders = 12 + 8; // with the owner
    const auto ofSize = [](std::size_t size) {
        return noteOf(moduleFile({{.descriptor = std::string(size, 'x')}}));
    };
    EXPECT_TRUE(ofSize(kMostNoteBytes - kHeaders));
    EXPECT_FALSE(ofSize(kMostNoteBytes - kHeaders + 1));
}

/// Counts what is asked for.
class CountedBytes : public BytesInMemory
{
public:
    using BytesInMemory::BytesInMemory;

    std::size_t read(std::uint64_t offset, std::span<char> bytes) const override
    {
        count += bytes.size();
        return BytesInMemory::read(offset, bytes);
    }

    mutable std::size_t count = 0;
};

TEST(ModuleLimits, OfALargeFileOnlyTheHeadersAndTheNotesAreRead)
{
    const std::string file = moduleFile({{.descriptor = kTexts}});
    const std::string large = file + std::string(1 << 20U, 'x');
    const CountedBytes bytes(large);
    EXPECT_EQ(versionNote(bytes), kTexts);
    EXPECT_LE(bytes.count, file.size());
}

struct TextRow
{
    const char* name;
    std::string texts;
    std::optional<std::string_view> version;
};

void PrintTo(const TextRow& row, std::ostream* out)
{
    *out << row.name;
}

class NoteTexts : public ::testing::TestWithParam<TextRow>
{
};

TEST_P(NoteTexts, AreFoundByTheirKeys)
{
    EXPECT_EQ(textInNote(GetParam().texts, "FileVersion"), GetParam().version);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(All, NoteTexts, ::testing::Values(
    TextRow {"TheOnlyOne", "FileVersion=1\0"s, "1"},
    TextRow {"BehindAnother", "A=2\0FileVersion=1\0"s, "1"},
    TextRow {"OfTwoTheFirst", "FileVersion=1\0FileVersion=2\0"s, "1"},
    TextRow {"WithoutATerminator", "FileVersion=1", "1"},
    TextRow {"WithAnEqualsSign", "FileVersion=a=b\0"s, "a=b"},
    TextRow {"OneThatIsEmpty", "FileVersion=\0"s, ""},
    TextRow {"BehindAnEmptyEntry", "\0\0FileVersion=1\0"s, "1"},
    TextRow {"NotInOtherCase", "fileversion=1\0"s, std::nullopt},
    TextRow {"NotOfALongerKey", "FileVersions=1\0"s, std::nullopt},
    TextRow {"NotOfAKeyWithItBehind", "TheFileVersion=1\0"s, std::nullopt},
    TextRow {"NotWithoutAnEqualsSign", "FileVersion\0"s, std::nullopt},
    TextRow {"NotInNothing", "", std::nullopt}),
    [](const auto& row) { return std::string(row.param.name); });
// clang-format on

} // namespace
} // namespace corma::platform
