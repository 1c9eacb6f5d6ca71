#include "host/host.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

using corma::host::Opened;
using corma::testing::CurrentFolder;
using corma::testing::OpenObjects;
using corma::testing::RecordingServices;
using corma::testing::TempFolder;
using ::testing::HasSubstr;

namespace {

class Documents : public OpenObjects
{
protected:
    static AcApDocument* current() { return acDocManagerPtr()->curDocument(); }

    static AcDbDatabase* working() { return acdbHostApplicationServices()->workingDatabase(); }

    static void addLayer(AcDbDatabase& database, const wchar_t* name)
    {
        Opened<AcDbLayerTable> layers;
        ASSERT_EQ(database.getLayerTable(layers.out(), AcDb::kForWrite), Acad::eOk);
        auto layer = std::make_unique<AcDbLayerTableRecord>();
        layer->setName(name);
        ASSERT_EQ(layers->add(layer.get()), Acad::eOk);
        layer.release()->close();
    }

    static bool hasLayer(AcDbDatabase& database, const wchar_t* name)
    {
        Opened<AcDbLayerTable> layers;
        database.getLayerTable(layers.out());
        return layers->has(name);
    }

    RecordingServices services;
    TempFolder folder;
};

TEST_F(Documents, TheNewOneIsCurrent)
{
    EXPECT_EQ(current(), nullptr);
    EXPECT_EQ(working(), nullptr);
    EXPECT_TRUE(corma::newDocument(L"/plans/house.dwg"));
    ASSERT_NE(current(), nullptr);
    EXPECT_STREQ(current()->fileName(), L"/plans/house.dwg");
    EXPECT_EQ(working(), current()->database());
    EXPECT_FALSE(corma::isDocumentModified());
    corma::closeDocument();
    EXPECT_EQ(current(), nullptr);
    EXPECT_EQ(working(), nullptr);
    EXPECT_FALSE(corma::isDocumentModified());
    EXPECT_FALSE(corma::saveDocument());
}

TEST_F(Documents, ARelativeNameIsMadeWhole)
{
    const CurrentFolder there(folder.path());
    EXPECT_TRUE(corma::newDocument(L"house.dwg"));
    EXPECT_EQ(current()->fileName(), folder.path(L"house.dwg"));
}

TEST_F(Documents, NeedAName)
{
    EXPECT_FALSE(corma::openDocument(nullptr));
    EXPECT_FALSE(corma::openDocument(L""));
    EXPECT_FALSE(corma::newDocument(nullptr));
    EXPECT_FALSE(corma::newDocument(L""));
    EXPECT_EQ(current(), nullptr);
}

TEST_F(Documents, AreSavedAndOpenedAgain)
{
    ASSERT_TRUE(corma::newDocument(folder.path(L"house.dxf").c_str()));
    addLayer(*working(), L"Muur");
    EXPECT_TRUE(corma::isDocumentModified());
    ASSERT_TRUE(corma::saveDocument());
    EXPECT_FALSE(corma::isDocumentModified());
    ASSERT_TRUE(corma::openDocument(folder.path(L"house.dxf").c_str()));
    EXPECT_TRUE(hasLayer(*working(), L"Muur"));
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(Documents, SavedUnderAnotherNameLeaveTheirFileAlone)
{
    ASSERT_TRUE(corma::newDocument(folder.path(L"a.dxf").c_str()));
    ASSERT_TRUE(corma::saveDocument());
    const std::string before = folder.read(L"a.dxf");
    ASSERT_TRUE(corma::openDocument(folder.path(L"a.dxf").c_str()));
    addLayer(*working(), L"Muur");
    ASSERT_TRUE(corma::saveDocument(folder.path(L"b.dxf").c_str()));
    EXPECT_EQ(folder.read(L"a.dxf"), before);
    EXPECT_NE(folder.read(L"b.dxf"), before);
}

TEST_F(Documents, ADrawingThatCannotBeReadLeavesTheCurrentOne)
{
    ASSERT_TRUE(corma::newDocument(folder.path(L"a.dxf").c_str()));
    EXPECT_FALSE(corma::openDocument(folder.path(L"missing.dxf").c_str()));
    EXPECT_EQ(current()->fileName(), folder.path(L"a.dxf"));
    EXPECT_EQ(services.allPrinted(), L"\n" + folder.path(L"missing.dxf") + L" does not exist.");
}

TEST_F(Documents, WhatIsNoDrawingIsRefusedWithItsName)
{
    const struct
    {
        const char* content;
        const char* found;
    } rows[] = {{"AC1009rest of a file", "AC1009"},
                {"AC1032rest of a file", "the file ends within its header"},
                {"[Tekst]\nHoogte=2\n", "no drawing"},
                {"", "no drawing"}};

    for (const auto& row : rows) {
        services.printed.clear();
        EXPECT_FALSE(corma::openDocument(folder.write(L"x.dwg", row.content).c_str()));
        const std::wstring told = services.allPrinted();
        EXPECT_NE(told.find(folder.path(L"x.dwg")), std::wstring::npos) << row.content;
        EXPECT_THAT(std::string(told.begin(), told.end()), HasSubstr(row.found));
    }
    EXPECT_FALSE(corma::openDocument(folder.makeFolder(L"sub").c_str()));
}

TEST_F(Documents, WhatCannotBeSavedIsToldAndStaysAsItWas)
{
    ASSERT_TRUE(corma::newDocument(folder.path(L"a.dxf").c_str()));
    addLayer(*working(), L"Muur");
    const std::wstring target = folder.makeFolder(L"sub");
    EXPECT_FALSE(corma::saveDocument(target.c_str()));
    EXPECT_TRUE(corma::isDocumentModified());
    EXPECT_NE(services.allPrinted().find(target), std::wstring::npos);
}

TEST_F(Documents, LocksNest)
{
    AcApDocManager& manager = *acDocManagerPtr();
    EXPECT_EQ(manager.lockDocument(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(manager.unlockDocument(nullptr), Acad::eInvalidInput);
    corma::newDocument(L"a.dxf");
    EXPECT_EQ(current()->lockMode(), AcAp::kNotLocked);
    EXPECT_EQ(manager.unlockDocument(current()), Acad::eNotApplicable);
    EXPECT_EQ(manager.lockDocument(current()), Acad::eOk);
    EXPECT_EQ(manager.lockDocument(current(), AcAp::kXWrite), Acad::eOk);
    EXPECT_EQ(current()->lockMode(), AcAp::kXWrite);
    EXPECT_EQ(manager.unlockDocument(current()), Acad::eOk);
    EXPECT_EQ(current()->lockMode(), AcAp::kWrite);
    EXPECT_EQ(manager.unlockDocument(current()), Acad::eOk);
    EXPECT_EQ(current()->lockMode(), AcAp::kNotLocked);
}

// --- databases -----------------------------------------------------------------------------------

using Database = Documents;

TEST_F(Database, AnotherOneCanBeTheOneToWorkOn)
{
    corma::newDocument(L"a.dxf");
    auto other = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(other.get());
    EXPECT_EQ(working(), other.get());
    other.reset();
    EXPECT_EQ(working(), current()->database());
}

TEST_F(Database, OfADocumentThatIsOpenedIsTheOneToWorkOn)
{
    AcDbDatabase other;
    acdbHostApplicationServices()->setWorkingDatabase(&other);
    corma::newDocument(L"a.dxf");
    EXPECT_EQ(working(), current()->database());
}

TEST_F(Database, WithoutADefaultDrawingIsEmpty)
{
    AcDbDatabase database(false);
    EXPECT_FALSE(hasLayer(database, L"0"));
    EXPECT_TRUE(database.tilemode());
    EXPECT_EQ(database.saveAs(folder.path(L"a.dxf").c_str()), Acad::eNotApplicable);
    AcDbDictionary* dictionary = nullptr;
    ASSERT_EQ(database.getNamedObjectsDictionary(dictionary), Acad::eOk);
    EXPECT_EQ(dictionary->numEntries(), 0U);
    dictionary->close();
}

TEST_F(Database, TheDefaultDrawingHasWhatEveryDrawingHas)
{
    AcDbDatabase database;
    EXPECT_TRUE(hasLayer(database, L"0"));
    EXPECT_FALSE(database.isModified());
    const ACHAR* name = nullptr;
    EXPECT_EQ(database.getFilename(name), Acad::eOk);
    EXPECT_STREQ(name, L"");
    EXPECT_EQ(database.save(), Acad::eInvalidInput);
    for (const AcDbObjectId id :
         {database.blockTableId(), database.layerTableId(), database.linetypeTableId(),
          database.textStyleTableId(), database.viewportTableId(),
          database.namedObjectsDictionaryId()}) {
        const Opened<AcDbObject> object(id);
        ASSERT_TRUE(object);
        AcDbHandle handle;
        object->getAcDbHandle(handle);
        AcDbObjectId found;
        EXPECT_EQ(database.getAcDbObjectId(found, false, handle), Acad::eOk);
        EXPECT_EQ(found, id);
        EXPECT_EQ(object->database(), &database);
    }
    AcDbObjectId none;
    EXPECT_EQ(database.getAcDbObjectId(none, false, AcDbHandle(L"FFFFFF")), Acad::eUnknownHandle);
    EXPECT_TRUE(none.isNull());
}

TEST_F(Database, ReadsOnceAndWithoutAPassword)
{
    AcDbDatabase whole;
    const std::wstring path = folder.path(L"a.dxf");
    ASSERT_EQ(whole.saveAs(path.c_str()), Acad::eOk);
    EXPECT_EQ(whole.readDwgFile(path.c_str()), Acad::eNotApplicable);
    AcDbDatabase database(false);
    EXPECT_EQ(database.readDwgFile(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(database.readDwgFile(L""), Acad::eInvalidInput);
    EXPECT_EQ(database.readDwgFile(folder.path(L"missing").c_str()), Acad::eFileNotFound);
    EXPECT_EQ(database.readDwgFile(folder.makeFolder(L"sub").c_str()), Acad::eFileAccessErr);
    EXPECT_EQ(database.readDwgFile(folder.write(L"x", "no drawing").c_str()),
              Acad::eUnsupportedFileFormat);
    EXPECT_EQ(
        database.readDwgFile(path.c_str(), AcDbDatabase::kForReadAndWriteNoShare, false, L"secret"),
        Acad::eInvalidInput);
    EXPECT_EQ(database.dxfIn(path.c_str()), Acad::eOk);
    EXPECT_TRUE(hasLayer(database, L"0"));
    const ACHAR* name = nullptr;
    database.getFilename(name);
    EXPECT_EQ(name, path);
}

TEST(Handles, AreHexadecimal)
{
    wchar_t buffer[17] = {};
    AcDbHandle(L"1aF").getIntoAsciiBuffer(buffer, 17);
    EXPECT_STREQ(buffer, L"1AF");
    AcDbHandle(L"FFFFFFFFFFFFFFFF").getIntoAsciiBuffer(buffer, 17);
    EXPECT_STREQ(buffer, L"FFFFFFFFFFFFFFFF");
    AcDbHandle(L"FFF").getIntoAsciiBuffer(buffer, 3);
    EXPECT_STREQ(buffer, L"");
    EXPECT_TRUE(AcDbHandle(L"").isNull());
    EXPECT_TRUE(AcDbHandle(L"xyz").isNull());
    EXPECT_TRUE(AcDbHandle(nullptr).isNull());
    EXPECT_FALSE(AcDbHandle(L"10").isNull());
}

} // namespace
