#include "AttributeUpdateTest.h"

#include "host/host.h"
#include "platform/text.h"

namespace corma::testing {

namespace {

/// Keeps what there is to choose from, and wants nothing.
class Looker : public AttributeUpdateChooser
{
public:
    bool choose(AttributeUpdate& update) override
    {
        found = update;
        return false;
    }

    AttributeUpdate found;
};

} // namespace

BlockDrawing AttributeUpdateTest::doors()
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD", "pine"}, {"MAKER", "Jansen", true}})
        .block("GATE", {{"COLOR", "red"}})
        .inModel({"A1", "DOOR"})
        .inModel({"A2", "GATE", {{"COLOR", "blue"}}})
        .inModel({"A3", "DOOR", {{"WOOD", "oak"}, {"OLD", "x"}}});
    return drawing;
}

std::wstring AttributeUpdateTest::writeLibrary(std::wstring_view name, const std::string& block,
                                               const DrawnAttributes& definitions) const
{
    return folder.write(name, BlockDrawing().block(block, definitions).bytes());
}

std::wstring AttributeUpdateTest::writeFile(std::wstring_view name,
                                            const DrawnAttributes& definitions) const
{
    BlockDrawing drawing;
    for (const DrawnAttribute& definition : definitions) {
        drawing.definitionInModel(definition);
    }
    return folder.write(name, drawing.bytes());
}

AttributeUpdate AttributeUpdateTest::detected(AttributeUpdateMode mode)
{
    Looker looker;
    EXPECT_EQ(updateAttributes(mode, nullptr, looker), RTNORM);
    return looker.found;
}

AttributeUpdate AttributeUpdateTest::updateOf(const AcDbObjectIdArray& outOfDateRefs,
                                              const AcDbObjectIdArray& upToDateRefs)
{
    AttributeUpdate update;
    update.outOfDateRefs = outOfDateRefs;
    update.upToDateRefs = upToDateRefs;
    return update;
}

AcDbObjectIdArray AttributeUpdateTest::references(const std::vector<const char*>& handles)
{
    AcDbObjectIdArray ids;
    for (const char* const handle : handles) {
        ids.append(id(handle));
    }
    return ids;
}

std::string AttributeUpdateTest::rowsOf(const AttributeUpdateForm& form) const
{
    std::string text;
    for (const AttributeUpdateForm::Row& row : form.rows()) {
        text += row.isChecked ? "x " : "- ";
        text += toUtf8(row.name) + " | " + folder.homely(row.source) + " |";
        for (const std::wstring& tag : row.newAttributes) {
            text += " +" + toUtf8(tag);
        }
        for (const std::wstring& tag : row.extraAttributes) {
            text += " -" + toUtf8(tag);
        }
        text += '\n';
    }
    return text;
}

std::string AttributeUpdateTest::definitionsOf(const wchar_t* name)
{
    xx_VarArray definitions;
    EXPECT_EQ(xx_get_attdefs(block(name), definitions), RTNORM);
    return described(definitions);
}

} // namespace corma::testing
