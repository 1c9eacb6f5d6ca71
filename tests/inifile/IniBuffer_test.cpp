#include "inifile/InifileTest.h"
#include "inifile/xx_Inifile_private.h"
#include "platform/text.h"
#include <corma/IniBuffer.h>

#include <array>

using corma::testing::Ini;
using corma::testing::InifileTest;

namespace {

// One buffer, and the steps of an owner of lookups: ask, then keep.
class Cache
{
public:
    std::wstring ask(const std::wstring& key, const void* document = nullptr)
    {
        std::array<wchar_t, 300> value {};
        const bool hit = m_buffer.lookup(key.c_str(), value.data(), 300, &slot, document);
        return hit ? value.data() : L"(none)";
    }

    void keep(const std::wstring& key, const std::wstring& value, const void* document = nullptr)
    {
        ask(key, document);
        m_buffer.store(key.c_str(), value.c_str(), slot, document);
    }

    IniBuffer* operator->() { return &m_buffer; }

    int slot = -1;

private:
    IniBuffer m_buffer;
};

std::wstring numbered(const wchar_t* prefix, int number)
{
    return prefix + std::to_wstring(number);
}

TEST(IniBuffer, GivesBackWhatWasKeptInAnyCaseOfTheKey)
{
    Cache cache;
    EXPECT_EQ(cache.ask(L"[A]Hoogte"), L"(none)");
    cache.keep(L"[A]Hoogte", L"2.5");
    EXPECT_EQ(cache.ask(L"[a]HOOGTE"), L"2.5");
}

TEST(IniBuffer, AKeyWithoutAChapterIsInTheHeadChapter)
{
    Cache cache;
    cache.keep(L"Hoogte", L"1");
    EXPECT_EQ(cache.ask(L"[Algemeen]Hoogte"), L"1");
}

TEST(IniBuffer, TheSameKeyInTwoDrawingsTakesTwoEntries)
{
    Cache cache;
    const int drawings[2] = {};
    cache.keep(L"[A]X", L"first", &drawings[0]);
    cache.keep(L"[A]X", L"second", &drawings[1]);
    EXPECT_EQ(cache.ask(L"[A]X", &drawings[0]), L"first");
    EXPECT_EQ(cache.ask(L"[A]X", &drawings[1]), L"second");
    EXPECT_EQ(cache.ask(L"[A]X"), L"(none)");
}

TEST(IniBuffer, AFreeEntryIsTakenBeforeAUsedOneTheLastFirst)
{
    Cache cache;
    cache.ask(L"[A]X");
    EXPECT_EQ(cache.slot, 15);
    for (int i = 0; i < 16; ++i) {
        cache.keep(numbered(L"[A]X", i), L"v");
        EXPECT_EQ(cache.slot, 15 - i);
    }
}

TEST(IniBuffer, WhenAllAreUsedTheOneWithTheLowestAgeGoes)
{
    Cache cache;
    for (int i = 0; i < 16; ++i) {
        cache.keep(numbered(L"[A]X", i), numbered(L"v", i));
    }
    cache.keep(L"[A]New", L"new");
    EXPECT_EQ(cache.ask(L"[A]X0"), L"(none)");
    EXPECT_EQ(cache.ask(L"[A]X1"), L"v1");
    EXPECT_EQ(cache.ask(L"[A]New"), L"new");
}

TEST(IniBuffer, AHitDoesNotGrowYoungerButTheOthersGrowOlder)
{
    Cache cache;
    for (int i = 0; i < 16; ++i) {
        cache.keep(numbered(L"[A]X", i), numbered(L"v", i));
    }
    // X0 is the oldest by one. Two hits on it make X1 the oldest.
    cache.ask(L"[A]X0");
    EXPECT_EQ(cache.ask(L"[A]X0"), L"v0");
    cache.keep(L"[A]New", L"new");
    EXPECT_EQ(cache.ask(L"[A]X0"), L"v0");
    EXPECT_EQ(cache.ask(L"[A]X1"), L"(none)");
}

TEST(IniBuffer, AHitNamesTheOldestEntryForALaterStore)
{
    Cache cache;
    for (int i = 0; i < 16; ++i) {
        cache.keep(numbered(L"[A]X", i), L"v");
    }
    EXPECT_EQ(cache.ask(L"[A]X7"), L"v");
    EXPECT_EQ(cache.slot, 15); // where X0 is
}

TEST(IniBuffer, KeepsValuesOfUpTo255Characters)
{
    Cache cache;
    cache.keep(L"[A]X", std::wstring(255, L'x'));
    EXPECT_EQ(cache.ask(L"[A]X"), std::wstring(255, L'x'));
    cache.keep(L"[A]Y", std::wstring(256, L'y'));
    EXPECT_EQ(cache.ask(L"[A]Y"), L"(none)");
}

TEST(IniBuffer, KeepsKeysOfUpTo255Characters)
{
    Cache cache;
    cache.keep(L"[A]" + std::wstring(252, L'k'), L"v");
    EXPECT_EQ(cache.ask(L"[A]" + std::wstring(252, L'k')), L"v");
    cache.keep(L"[A]" + std::wstring(253, L'k'), L"v");
    EXPECT_EQ(cache.ask(L"[A]" + std::wstring(253, L'k')), L"(none)");
}

TEST(IniBuffer, ALookupHeedsTheSizeOfTheOutput)
{
    Cache cache;
    cache.keep(L"[A]X", L"12345");
    std::array<wchar_t, 5> value = {L'#', L'#', L'#', L'#', L'#'};
    EXPECT_TRUE(cache->lookup(L"[A]X", value.data(), 4, &cache.slot, nullptr));
    EXPECT_STREQ(value.data(), L"123");
    EXPECT_EQ(value[4], L'#');
}

TEST(IniBuffer, AnUpdateChangesOnlyWhatIsKept)
{
    Cache cache;
    EXPECT_FALSE(cache->update(L"[A]X", L"new", &cache.slot, nullptr));
    EXPECT_EQ(cache.ask(L"[A]X"), L"(none)");
    cache.keep(L"[A]X", L"old");
    EXPECT_TRUE(cache->update(L"[a]x", std::wstring(300, L'n').c_str(), &cache.slot, nullptr));
    EXPECT_EQ(cache.ask(L"[A]X"), std::wstring(255, L'n'));
}

TEST(IniBuffer, ARemovedValueIsGoneForItsDocumentOnly)
{
    Cache cache;
    const int drawing = 0;
    cache.keep(L"[A]X", L"none");
    cache.keep(L"[A]X", L"drawing", &drawing);
    cache->remove(L"[a]X", nullptr);
    EXPECT_EQ(cache.ask(L"[A]X"), L"(none)");
    EXPECT_EQ(cache.ask(L"[A]X", &drawing), L"drawing");
}

TEST(IniBuffer, ANewObjectClearsTheTableOfAll)
{
    Cache cache;
    cache.keep(L"[A]X", L"1");
    const IniBuffer other;
    EXPECT_EQ(cache.ask(L"[A]X"), L"(none)");
}

TEST(ChecksummedIdent, EndsInTwoCharactersMadeFromTheFileName)
{
    // 'A' + '.' = 111
    EXPECT_EQ(corma::getChecksummedIdent(L"[B]X", L"A."), L"[B]X\x6F\x6F");
    // 4 times 'Z' = 360: 104 and 110
    EXPECT_EQ(corma::getChecksummedIdent(L"X", L"ZZZZ"), L"X\x68\x6E");
}

using CachedLookup = InifileTest;

TEST_F(CachedLookup, KeepsAValueUntilItIsFlushed)
{
    IniBuffer buffer;
    Ini ini(folder.write(L"a.ini", "[A]\nX=1\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"[A]X"), L"1");
    folder.write(L"a.ini", "[A]\nX=2\n");
    EXPECT_EQ(ini.get(L"[A]x"), L"1");
    ini.file.flushIniBuffer();
    EXPECT_EQ(ini.get(L"[A]X"), L"2");
}

TEST_F(CachedLookup, WithoutABufferAFlushDoesNothing)
{
    IniBuffer buffer;
    Ini cached(folder.write(L"a.ini", "X=1\n"), 0, &buffer);
    EXPECT_EQ(cached.get(L"X"), L"1");
    Ini plain(folder.path(L"a.ini"));
    folder.write(L"a.ini", "X=2\n");
    plain.file.flushIniBuffer();
    EXPECT_EQ(cached.get(L"X"), L"1");
    EXPECT_EQ(plain.get(L"X"), L"2");
}

TEST_F(CachedLookup, TheSameIdentInTwoFilesTakesTwoEntries)
{
    IniBuffer buffer;
    Ini a(folder.write(L"a.ini", "X=a\n"), 0, &buffer);
    Ini b(folder.write(L"b.ini", "X=b\n"), 0, &buffer);
    EXPECT_EQ(a.get(L"X"), L"a");
    EXPECT_EQ(b.get(L"X"), L"b");
    EXPECT_EQ(a.get(L"X"), L"a");
}

TEST_F(CachedLookup, TheSameIdentInTwoDrawingsTakesTwoEntries)
{
    IniBuffer buffer;
    Ini ini(folder.write(L"a.ini", "X=file\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"X"), L"file");
    folder.write(L"project/a.ipr", "X=project\n");
    corma::newDocument(folder.path(L"project/house.dwg").c_str());
    EXPECT_EQ(ini.get(L"X"), L"project");
    corma::closeDocument();
    EXPECT_EQ(ini.get(L"X"), L"file");
}

TEST_F(CachedLookup, AValueOf256CharactersIsReadFromTheFileEachTime)
{
    IniBuffer buffer;
    Ini ini(folder.write(L"a.ini", "X=" + std::string(256, 'x') + "\nY=" + std::string(255, 'y')),
            0, &buffer);
    EXPECT_EQ(ini.get(L"X"), std::wstring(256, L'x'));
    EXPECT_EQ(ini.get(L"Y"), std::wstring(255, L'y'));
    folder.write(L"a.ini", "X=new\nY=new\n");
    EXPECT_EQ(ini.get(L"X"), L"new");
    EXPECT_EQ(ini.get(L"Y"), std::wstring(255, L'y'));
}

TEST_F(CachedLookup, AShortOutputDoesNotShortenWhatIsKept)
{
    IniBuffer buffer;
    Ini ini(folder.write(L"a.ini", "X=1234567890\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"X", 5), L"1234");
    EXPECT_EQ(ini.get(L"X"), L"1234567890");
}

TEST_F(CachedLookup, IncludedFilesHaveNoCache)
{
    IniBuffer buffer;
    folder.write(L"part.ini", "X=1\n");
    Ini ini(folder.write(L"a.ini", "#INCLUDE=part.ini\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"X"), L"1");
    folder.write(L"part.ini", "X=2\n");
    EXPECT_EQ(ini.get(L"X"), L"2");
}

TEST_F(CachedLookup, TheReadyMadeBufferServes)
{
    Ini ini(folder.write(L"a.ini", "X=1\n"), 0, &IniBuffer::shared());
    IniBuffer::clear();
    EXPECT_EQ(ini.get(L"X"), L"1");
    folder.write(L"a.ini", "X=2\n");
    EXPECT_EQ(ini.get(L"X"), L"1");
    IniBuffer::clear();
}

} // namespace
