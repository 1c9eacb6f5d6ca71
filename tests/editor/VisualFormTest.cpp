#include "editor/VisualFormTest.h"

#include "host/host.h"
#include "platform/text.h"
#include "support/table_entries.h"

using corma::host::Opened;

namespace corma::testing {

namespace {

template<class Table> std::string namesIn()
{
    Opened<Table> table;
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase()->getSymbolTable(table.out()),
              Acad::eOk);
    AcDbSymbolTableIterator* made = nullptr;
    EXPECT_EQ(table->newIterator(made), Acad::eOk);
    const std::unique_ptr<AcDbSymbolTableIterator> walk(made);
    std::string all;
    for (; !walk->done(); walk->step()) {
        Opened<AcDbSymbolTableRecord> record;
        EXPECT_EQ(walk->getRecord(record.out(), AcDb::kForRead), Acad::eOk);
        std::wstring name;
        EXPECT_EQ(record->getName(name), Acad::eOk);
        all += (all.empty() ? "" : " ") + toUtf8(name);
    }
    return all;
}

} // namespace

void VisualFormTest::drawHouse() const
{
    newDrawing();
    addLayer(L"Gevel", 3);
    addLayer(L"MUUR", 5);
    addLinetype(L"DASHED");
    addTextStyle(L"Smal");
}

void VisualFormTest::give(const std::string& value, Levels levels, int language)
{
    define(m_type + " " + attributes);
    writeIni("A=" + value + "\n");
    open(levels, language);
}

std::string VisualFormTest::described(const NameChoice& choice)
{
    if (choice.isTyped()) {
        return "typed " + toUtf8(choice.typed());
    }
    return choice.chosen() ? "chosen " + std::to_string(*choice.chosen()) : "none";
}

std::string VisualFormTest::tables()
{
    return namesIn<AcDbLayerTable>() + "|" + namesIn<AcDbLinetypeTable>() + "|"
        + namesIn<AcDbTextStyleTable>();
}

std::string VisualFormTest::places()
{
    const auto contentOf = [&](const char* label, const wchar_t* name) {
        if (!folder.has(name)) {
            return std::string();
        }
        const std::string content = folder.read(name);
        return label + content + (content.empty() || content.ends_with('\n') ? "" : "\n");
    };
    return "ini " + ini() + contentOf("ipr ", L"house/tool.ipr")
        + contentOf("cfg ipr ", L"cfg/tool.ipr") + "drawing " + savedDrawing();
}

std::vector<std::wstring> VisualFormTest::ownFields(const std::wstring& value, std::size_t count)
{
    static_assert(std::wstring::npos + 1 == 0);
    std::size_t at = 0;
    for (int i = 0; i < 4; ++i) {
        at = value.find(L',', at) + 1; // npos + 1 is the beginning
    }
    std::vector<std::wstring> fields(count);
    std::size_t field = 0;
    for (const wchar_t c : value.substr(at)) {
        if (c == L',') {
            ++field;
        } else if (field < count) {
            fields[field] += c;
        }
    }
    return fields;
}

std::wstring VisualFormTest::randomValue(std::mt19937& random,
                                         const std::vector<std::wstring>& pieces, std::size_t most)
{
    std::wstring value = pieces[random() % pieces.size()];
    for (auto more = random() % most; more != 0; --more) {
        value += L"," + pieces[random() % pieces.size()];
    }
    return value;
}

} // namespace corma::testing
