#include "data/providers.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include "support/row_names.h"

#include <gtest/gtest.h>

namespace corma {

namespace {

using testing::nameOfRow;
using testing::RecordingServices;
using testing::TempFolder;

// --- parts ---------------------------------------------------------------------------------------

struct PartsCase
{
    const char* name;
    const wchar_t* text;
    ConnectionParts parts;
};

class ConnectionPartsOf : public ::testing::TestWithParam<PartsCase>
{
};

TEST_P(ConnectionPartsOf, AreKeysWithTheirValues)
{
    EXPECT_EQ(connectionParts(GetParam().text), GetParam().parts);
}

// clang-format off
const PartsCase kPartsCases[] = {
    {"AnEmptyText",               L"", {}},
    {"SemicolonsOnly",            L";;", {}},
    {"OnePart",                   L"DSN=x", {{L"DSN", L"x"}}},
    {"PartsInOrder",              L"b=1;a=2;b=3", {{L"b", L"1"}, {L"a", L"2"}, {L"b", L"3"}}},
    {"ASemicolonAtTheEnd",        L"a=1;", {{L"a", L"1"}}},
    {"BlanksAround",              L"  Data Source =  C:\\my files\\x.mdb  ; a = 1", {{L"Data Source", L"C:\\my files\\x.mdb"}, {L"a", L"1"}}},
    {"APartWithoutEquals",        L"a=1;what;b=2", {{L"a", L"1"}, {L"b", L"2"}}},
    {"AnEmptyValue",              L"a=;b= ;c=", {{L"a", L""}, {L"b", L""}, {L"c", L""}}},
    {"AnEmptyKey",                L"=1", {{L"", L"1"}}},
    {"EqualsInAValue",            L"a=b=c", {{L"a", L"b=c"}}},
    {"Braces",                    L"Driver={My Driver};a={b;c}", {{L"Driver", L"My Driver"}, {L"a", L"b;c"}}},
    {"DoubleQuotes",              L"a=\"b;c\";d=1", {{L"a", L"b;c"}, {L"d", L"1"}}},
    {"SingleQuotes",              L"a='b;c';d=1", {{L"a", L"b;c"}, {L"d", L"1"}}},
    {"OtherQuotesWithin",         L"a='\"{b}\"';c=\"it's\"", {{L"a", L"\"{b}\""}, {L"c", L"it's"}}},
    {"BlanksWithinQuotesStay",    L"a=' b ' ;c={ d }", {{L"a", L" b "}, {L"c", L" d "}}},
    {"ADoubledQuoteIsOne",        L"a='b'';c';d={e}};f}", {{L"a", L"b';c"}, {L"d", L"e};f"}}},
    {"EmptyQuotes",               L"a='';b={}", {{L"a", L""}, {L"b", L""}}},
    {"AQuoteBeforeMoreText",      L"a='b'c;d';e=1", {{L"a", L"b'c;d"}, {L"e", L"1"}}},
    {"AQuoteBehindTheBeginning",  L"a=b'c;d'=1", {{L"a", L"b'c"}, {L"d'", L"1"}}},
    {"AnOpenQuote",               L"a='b;c=1", {{L"a", L"b;c=1"}}},
    {"AQuoteAtTheEnd",            L"a=1;b={", {{L"a", L"1"}, {L"b", L""}}},
    {"AQuotedKeyIsNone",          L"'a;b'=1", {{L"b'", L"1"}}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Texts, ConnectionPartsOf, ::testing::ValuesIn(kPartsCases), nameOfRow);

// --- rows ----------------------------------------------------------------------------------------

std::wstring rowText(const std::vector<ProviderRow>& rows)
{
    std::wstring text;
    for (const auto& [provider, odbc] : rows) {
        text += provider + L"|" + odbc + L"\n";
    }
    return text;
}

struct RowsCase
{
    const char* name;
    const wchar_t* text;
    const wchar_t* rows;
};

class ProviderRowsOf : public ::testing::TestWithParam<RowsCase>
{
};

TEST_P(ProviderRowsOf, AreOneForALine)
{
    EXPECT_EQ(rowText(providerRows(GetParam().text)), GetParam().rows);
}

// clang-format off
const RowsCase kRowsCases[] = {
    {"AnEmptyText",             L"", L""},
    {"ARow",                    L"MSDAORA = Driver={Oracle};DBQ=<Data Source>", L"MSDAORA|Driver={Oracle};DBQ=<Data Source>\n"},
    {"TwoRows",                 L"A=B\nC=D\n", L"A|B\nC|D\n"},
    {"LineEndsOfWindows",       L"A=B\r\nC=D\r\n", L"A|B\nC|D\n"},
    {"EmptyLines",              L"\n\nA=B\n  \n\r\nC=D", L"A|B\nC|D\n"},
    {"Comments",                L"; X=Y\n  ;Z=1\nA=B;C=D", L"A|B;C=D\n"},
    {"ALineWithoutEquals",      L"A\nB=C", L"B|C\n"},
    {"TabsAround",              L"\tA\t=\tB \t", L"A|B\n"},
    {"ALineWithoutAProvider",   L"=B\nC=D", L"C|D\n"},
    {"ALineWithoutAText",       L"A= \nC=D", L"C|D\n"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Texts, ProviderRowsOf, ::testing::ValuesIn(kRowsCases), nameOfRow);

// --- texts for ODBC ------------------------------------------------------------------------------

constexpr const wchar_t* kNoRow = L"(none)";

struct OdbcTextCase
{
    const char* name;
    const wchar_t* rows;
    const wchar_t* text;
    const wchar_t* odbc;
};

class OdbcText : public ::testing::TestWithParam<OdbcTextCase>
{
};

TEST_P(OdbcText, IsMadeByTheRowThatFits)
{
    EXPECT_EQ(odbcText(GetParam().text, L"Given", providerRows(GetParam().rows)).value_or(kNoRow),
              GetParam().odbc);
}

// clang-format off
const OdbcTextCase kOdbcTextCases[] = {
    {"TheProviderInTheText",       L"Given=a\nOther=b", L"Provider=Other", L"b"},
    {"TheProviderThatIsGiven",     L"Given=a\nOther=b", L"x=1", L"a"},
    {"AnEmptyProviderIsNone",      L"Given=a\nOther=b", L"Provider=", L"a"},
    {"TheLastProvider",            L"Given=a\nOther=b", L"Provider=Given;provider=Other", L"b"},
    {"TheFirstRowThatFits",        L"G*=a\nGiven=b", L"", L"a"},
    {"NoRow",                      L"Gi=a\nGivens=b\nXGiven=c", L"", kNoRow},
    {"NoTable",                    L"", L"Provider=Given", kNoRow},
    {"CaseDoesNotCount",           L"gIVEN=a", L"", L"a"},
    {"AStarForNothing",            L"Given*=a", L"", L"a"},
    {"StarsAnywhere",              L"*i*n=a", L"", L"a"},
    {"AStarThatTakesTwoLooks",     L"*ab=a", L"Provider=aab", L"a"},
    {"StarsOnly",                  L"**=a", L"", L"a"},
    {"AStarThatDoesNotFit",        L"G*x=a", L"", kNoRow},
    {"ExtendedPropertiesCount",    L"Given=a\nGiven/dBase*=b", L"Extended Properties=dBase IV", L"b"},
    {"AStarEndsBeforeThem",        L"Given*=a\nG*=b\n*=c", L"Extended Properties=dBase IV", kNoRow},
    {"AStarOnEachSide",            L"G*/*=a", L"extended properties='Excel 8.0;HDR=Yes'", L"a"},
    {"EmptyOnesDoNotCount",        L"Given=a\nGiven/*=b", L"Extended Properties=\"\"", L"a"},
    {"AStarOfThemMayHoldASlash",   L"Given/a/*=a", L"Extended Properties=a/b", L"a"},
    {"AValue",                     L"Given=D={X};File=<Data Source>", L"Data Source=C:\\a b.mdb", L"D={X};File=C:\\a b.mdb"},
    {"CaseOfAKeyDoesNotCount",     L"Given=File=<Data Source>", L"DATA SOURCE=x", L"File=x"},
    {"TheLastOfEqualKeys",         L"Given=File=<a>", L"a=1;A=2", L"File=2"},
    {"AnAbsentValueTakesItsPart",  L"Given=D={X};File=<a>;x=1", L"b=1", L"D={X};x=1"},
    {"AnEmptyValueTakesItsPart",   L"Given=PWD=<a>;x=1", L"a=1;a=", L"x=1"},
    {"NothingIsLeft",              L"Given=PWD=<a>", L"", L""},
    {"TheFirstKeyWithAValue",      L"Given=S=<a|b | c>", L"c=3;b=2;a=", L"S=2"},
    {"NoneOfTheKeysHasAValue",     L"Given=S=<a|b>;x=1", L"c=3", L"x=1"},
    {"SeveralValuesInAPart",       L"Given=S=<a>\\<b>:1", L"a=x;b=y", L"S=x\\y:1"},
    {"OneOfSeveralIsAbsent",       L"Given=S=<a>\\<b>;x=1", L"a=x", L"x=1"},
    {"AnOpenBracketIsText",        L"Given=S=<a><b;x=a>b", L"a=1", L"S=1<b;x=a>b"},
    {"AValueIsNotFilledAgain",     L"Given=S=<a>", L"a=<b>;b=1", L"S=<b>"},
    {"ASemicolonNeedsBraces",      L"Given=PWD=<a>;x=1", L"a='b;c'", L"PWD={b;c};x=1"},
    {"ABraceWithinIsDoubled",      L"Given=PWD=<a>", L"a='b;}c'", L"PWD={b;}}c}"},
    {"ABraceAtTheBeginning",       L"Given=PWD=<a>", L"a='{b}'", L"PWD={{b}}}"},
    {"ABraceBehindItIsPlain",      L"Given=PWD=<a>", L"a=b}c{d", L"PWD=b}c{d"},
    {"BlanksAtTheEnds",            L"Given=PWD=<a>", L"a='b '", L"PWD={b }"},
    {"ARowMayHaveTheBraces",       L"Given=PWD={<a>};x=1", L"a=b;c=1", L"PWD=b;x=1"},
    {"QuotesArePlain",             L"Given=PWD=<a>", L"a={'b'}", L"PWD='b'"},
    {"ADataSourceName",            L"Given=a", L"DSN=db; PWD='x;y';z", L"DSN=db; PWD='x;y';z"},
    {"ItsProviderGoes",            L"Given=a", L"Provider=MSDASQL;DSN=db;UID=x;", L"DSN=db;UID=x;"},
    {"ItsProviderGoesAnywhere",    L"Given=a", L"fileDSN=db; provider = '1;2' ;UID=x", L"fileDSN=db;UID=x"},
    {"ItsLastProviderGoes",        L"Given=a", L"driver={X};A=1;Provider=Given", L"driver={X};A=1"},
    {"AKeyInAValueIsNone",         L"Given=a", L"x='DSN=1;DSN=2'", L"a"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Rows, OdbcText, ::testing::ValuesIn(kOdbcTextCases), nameOfRow);

// --- the rows in force ---------------------------------------------------------------------------

struct BuiltInCase
{
    const char* name;
    const wchar_t* text;
    const wchar_t* odbc;
};

class BuiltInRows : public ::testing::TestWithParam<BuiltInCase>
{
protected:
    BuiltInRows() { services.module = folder.makeFolder(L"Module") + L"/host.bin"; }

    RecordingServices services;
    TempFolder folder;
    testing::CurrentFolder here {folder.makeFolder(L"here")};
};

TEST_P(BuiltInRows, ReachTheDatabasesOfAProvider)
{
    EXPECT_EQ(odbcText(GetParam().text, L"SQLNCLI", providerTable()).value_or(kNoRow),
              GetParam().odbc);
}

// clang-format off
const BuiltInCase kBuiltInCases[] = {
    {"Access", L"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=/data/words.accdb;Jet OLEDB:Database Password=", L"Driver={MDBTools};DBQ=/data/words.accdb"},
    {"AccessWithAPassword", L"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=w.mdb;jet oledb:database password=p", L"Driver={MDBTools};DBQ=w.mdb;PWD=p"},
    {"ADBaseFileIsNoneOfAccess", L"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=/data/;Extended Properties=dBase IV", kNoRow},
    {"SqlServer", L"Provider=SQLOLEDB.1;Data Source=HOST\\SQLEXPRESS;Initial Catalog=Words;User ID=me;Password=p", L"Driver={FreeTDS};Server=HOST\\SQLEXPRESS;Database=Words;UID=me;PWD=p;TDS_Version=7.4;ClientCharset=UTF-8"},
    {"SqlServerByItsOtherKeys", L"Server=HOST\\SQL2;Database=Words;UID=me;PWD=p;Trusted_Connection=no", L"Driver={FreeTDS};Server=HOST\\SQL2;Database=Words;UID=me;PWD=p;Trusted_Connection=no;TDS_Version=7.4;ClientCharset=UTF-8"},
    {"SqlServerByItsAddress", L"Provider=SQLNCLI11;Addr=host,1433", L"Driver={FreeTDS};Server=host,1433;TDS_Version=7.4;ClientCharset=UTF-8"},
    {"SqlServerByItsNetworkAddress", L"Provider=MSOLEDBSQL19;Network Address=h", L"Driver={FreeTDS};Server=h;TDS_Version=7.4;ClientCharset=UTF-8"},
    {"SqlServerByItsFullAddress", L"Provider=MSOLEDBSQL;Address=h;Network Address=i", L"Driver={FreeTDS};Server=h;TDS_Version=7.4;ClientCharset=UTF-8"},
    {"PostgreSql", L"Provider=PostgreSQL OLE DB Provider;Data Source=h;location=words;User ID=me;password=p", L"Driver={PostgreSQL Unicode};Server=h;Database=words;UID=me;PWD=p;BoolsAsChar=0"},
    {"Pgnp", L"Provider=PGNP.1;Data Source=h;Initial Catalog=words;Port=5433", L"Driver={PostgreSQL Unicode};Server=h;Port=5433;Database=words;BoolsAsChar=0"},
    {"PgnpWithFurtherSettings", L"Provider=PGNP;Data Source=h;Extended Properties='PORT=5433;'", L"Driver={PostgreSQL Unicode};Server=h;BoolsAsChar=0"},
    {"Sqlite", L"Provider=SQLiteOLEDB;Data Source=/data/words.sqlite", L"Driver={SQLite3};Database=/data/words.sqlite"},
    {"AnUnknownProvider", L"Provider=MSDAORA;Data Source=x", kNoRow},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Providers, BuiltInRows, ::testing::ValuesIn(kBuiltInCases), nameOfRow);

class ProviderTable : public BuiltInRows
{
};

TEST_F(ProviderTable, HasTheRowsOfTheFileBeforeTheBuiltInOnes)
{
    const std::size_t builtIn = providerTable().size();
    folder.write(L"Module/odbc_drivers.txt",
                 "; ours\nMicrosoft.ACE.OLEDB.*/dBase* = DSN=dbase;DBQ=<Data Source>\n"
                 "SQLite* = Driver={Mine};Database=<Data Source>\n");
    const auto table = providerTable();
    ASSERT_EQ(table.size(), builtIn + 2);
    EXPECT_EQ(odbcText(L"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=/d/;"
                       L"Extended Properties=dBase IV",
                       L"", table),
              L"DSN=dbase;DBQ=/d/");
    EXPECT_EQ(odbcText(L"Provider=SQLite;Data Source=a", L"", table), L"Driver={Mine};Database=a");
    EXPECT_EQ(odbcText(L"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=a.mdb", L"", table),
              L"Driver={MDBTools};DBQ=a.mdb");
}

TEST_F(ProviderTable, ReadsTheFileInEitherEncoding)
{
    for (const char* const content : {"A=D=\xC3\xB6", "A=D=\xF6"}) {
        folder.write(L"Module/odbc_drivers.txt", content);
        EXPECT_EQ(odbcText(L"", L"A", providerTable()), L"D=\u00f6");
    }
}

TEST_F(ProviderTable, TakesAnEmptyFile)
{
    const std::size_t builtIn = providerTable().size();
    folder.write(L"Module/odbc_drivers.txt", "");
    EXPECT_EQ(providerTable().size(), builtIn);
    EXPECT_TRUE(services.printed.empty());
}

} // namespace

} // namespace corma
