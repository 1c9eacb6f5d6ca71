#include "settings/Instelling.h"
#include "settings/PackedText.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace corma {
namespace {

TEST(PackedText, KeepsTextsOfAllLengths)
{
    for (std::size_t size = 0; size <= 40; ++size) {
        const std::string bytes(size, 'x');
        const PackedText text(bytes);
        EXPECT_EQ(text.bytes(), bytes);
        EXPECT_EQ(PackedText(text).bytes(), bytes);
    }
}

TEST(PackedText, KeepsBytesOfAnyValue)
{
    const std::string bytes {'\0', '\xFF', '\x01', '\x80'};
    EXPECT_EQ(PackedText(bytes).bytes(), bytes);
    EXPECT_EQ(PackedText(bytes + bytes + bytes).bytes(), bytes + bytes + bytes);
}

TEST(PackedText, TakesAPartOfItself)
{
    PackedText text("een lange tekst met een eind");
    text.assign(text.bytes().substr(4, 15));
    EXPECT_EQ(text.bytes(), "lange tekst met");
    text.assign(text.bytes().substr(0, 5));
    EXPECT_EQ(text.bytes(), "lange");
}

TEST(PackedText, KnowsTheMarkerHoweverItCame)
{
    EXPECT_TRUE(PackedText::marker().isMarker());
    EXPECT_TRUE(PackedText(toPacked(NOT_FOUND_MARKER)).isMarker());
    EXPECT_EQ(PackedText::marker().wide(), NOT_FOUND_MARKER);
    EXPECT_FALSE(PackedText("***KV_BESTAAT_NIEt***").isMarker());
    EXPECT_FALSE(PackedText().isMarker());
}

TEST(PackedText, CanBeMovedAndAssigned)
{
    PackedText a("een lange tekst");
    PackedText b("kort");
    b = a;
    EXPECT_EQ(a.bytes(), b.bytes());
    const PackedText c = std::move(a);
    EXPECT_EQ(c.bytes(), "een lange tekst");
    b = PackedText("ander");
    EXPECT_EQ(b.bytes(), "ander");
    b = PackedText();
    EXPECT_EQ(b.bytes(), "");
}

TEST(PackedText, GivesBackWhatWasPacked)
{
    // A surrogate alone stands for a byte of a path that is no text.
    const std::vector<std::wstring> texts = {L"",
                                             L"abc",
                                             L"m\u00B2",
                                             L"\u20AC 5",
                                             L"\U0001F3E0",
                                             L"a\xDC80z",
                                             L"\xDCFF\xDC80",
                                             L"\uD7FF\uE000\uFFFD",
                                             std::wstring(100, L'\u0416')};
    for (const std::wstring& text : texts) {
        EXPECT_EQ(fromPacked(toPacked(text)), text);
        EXPECT_EQ(PackedText(toPacked(text)).wide(), text);
    }
}

TEST(TextArena, KeepsManyTextsOfAllLengths)
{
    TextArena arena;
    std::vector<PackedText> texts;
    for (std::size_t size = 0; size < 700; ++size) {
        texts.push_back(arena.pack(std::string(size, static_cast<char>('a' + size % 26))));
    }
    for (std::size_t size = 0; size < texts.size(); ++size) {
        EXPECT_EQ(texts[size].bytes(), std::string(size, static_cast<char>('a' + size % 26)));
    }
}

TEST(TextArena, KeepsATextThatIsLargerThanItsChunks)
{
    TextArena arena;
    const PackedText small = arena.pack("een lange tekst");
    const std::string bytes(1'000'000, 'x');
    EXPECT_EQ(arena.pack(bytes).bytes(), bytes);
    EXPECT_EQ(arena.pack("nog een lange tekst").bytes(), "nog een lange tekst");
    EXPECT_EQ(small.bytes(), "een lange tekst");
}

TEST(TextArena, ATextOfItCanBeReplaced)
{
    TextArena arena;
    PackedText text = arena.pack("een lange tekst");
    text.assign("een andere lange tekst");
    EXPECT_EQ(text.bytes(), "een andere lange tekst");
    text = arena.pack("weer een lange tekst");
    EXPECT_EQ(text.bytes(), "weer een lange tekst");
}

TEST(TextArena, ACopyHasItsOwnMemory)
{
    auto arena = std::make_unique<TextArena>();
    const PackedText copy = [&] {
        const PackedText text = arena->pack("een lange tekst");
        return PackedText(text);
    }();
    arena.reset();
    EXPECT_EQ(copy.bytes(), "een lange tekst");
}

} // namespace
} // namespace corma
