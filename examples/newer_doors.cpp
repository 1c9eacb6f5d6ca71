#include <corma/attributes.h>
#include <corma/blocks.h>
#include <corma/host.h>

#include <cstdio>

// Wants all that is out of date brought up to date.
class All : public corma::AttributeUpdateChooser
{
public:
    bool choose(corma::AttributeUpdate& update) override
    {
        std::printf("%d references are out of date\n", update.outOfDateRefs.length());
        return true;
    }
};

int main()
{
    if (!corma::openDocument(L"project/woonhuis.dxf")) {
        return 1;
    }
    wchar_t door[] = L"nieuw/deur.dwg!$PG-DEUR-ENKEL"; // "$": though the drawing has it
    int status = RTNORM;
    const AcDbObjectId block = xx_findblk(door, &status);
    if (status != RTNORM) {
        return 1;
    }
    std::printf("the block is record %ls\n", corma::handleOf(block).c_str());

    All all;
    corma::updateAttributes(corma::AttributeUpdateMode::references, L"PG-DEUR*", all);

    xx_VarArray attributes;
    xx_get_bl_attributes(corma::objectWithHandle(L"6D"), attributes);
    for (int i = 0; i < attributes.length(); ++i) {
        std::printf("%ls=%ls\n", attributes[i]->name(), attributes[i]->currentText());
    }
    corma::closeDocument(); // corma::saveDocument() would have kept it
    return 0;
}
