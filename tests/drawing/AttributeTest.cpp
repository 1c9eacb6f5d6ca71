#include "AttributeTest.h"

#include "host/host.h"
#include "platform/text.h"
#include <corma/blocks.h>

#include <memory>
#include <sstream>

namespace corma::testing {

void AttributeTest::open(const BlockDrawing& drawing)
{
    const std::wstring path = folder.write(L"plan.dxf", drawing.bytes());
    ASSERT_TRUE(openDocument(path.c_str()));
    ASSERT_EQ(printed(), "");
}

AcDbObjectId AttributeTest::id(const char* handle)
{
    const AcDbObjectId found = objectWithHandle(fromUtf8(handle).c_str());
    EXPECT_FALSE(found.isNull()) << handle;
    return found;
}

AcDbObjectId AttributeTest::block(const wchar_t* name)
{
    int status = RTNORM;
    const AcDbObjectId found = xx_findblk_int(name, &status);
    EXPECT_FALSE(found.isNull()) << toUtf8(name);
    return found;
}

void AttributeTest::erase(AcDbObjectId id)
{
    const host::Opened<AcDbObject> object(id, AcDb::kForWrite);
    ASSERT_TRUE(object);
    ASSERT_EQ(object->erase(), Acad::eOk);
}

std::string AttributeTest::described(const xx_VarArray& attributes)
{
    std::ostringstream text;
    for (int i = 0; i < attributes.length(); ++i) {
        const xx_Var& attribute = *attributes[i];
        text << (i == 0 ? "" : " ") << toUtf8(attribute.name()) << '=';
        if (attribute.count != 1) {
            text << attribute.count << " values";
        } else if (attribute.type == RTREAL) {
            text << attribute.values[0].rreal;
        } else if (attribute.type == RTSTR) {
            const wchar_t* const value = attribute.currentText();
            text << (value == nullptr ? "(null)" : toUtf8(value));
        } else {
            text << "type " << attribute.type;
        }
    }
    return text.str();
}

std::string AttributeTest::described(const AcDbObjectIdArray& ids)
{
    std::string text;
    for (const AcDbObjectId id : ids) {
        text += (text.empty() ? "" : " ") + toUtf8(handleOf(id));
    }
    return text;
}

std::string AttributeTest::attributesOf(const char* reference)
{
    const host::Opened<AcDbBlockReference> opened(id(reference));
    if (!opened) {
        return "(not to be opened)";
    }
    std::string text;
    const std::unique_ptr<AcDbObjectIterator> attributes(opened->attributeIterator());
    for (attributes->start(); !attributes->done(); attributes->step()) {
        const host::Opened<AcDbAttribute> attribute(attributes->objectId());
        if (!attribute) {
            return "(not to be opened)";
        }
        ACHAR* tag = attribute->tag();
        ACHAR* value = attribute->textString();
        text += (text.empty() ? "" : " ") + toUtf8(tag) + '=' + toUtf8(value);
        acutDelString(tag);
        acutDelString(value);
    }
    return text;
}

std::string AttributeTest::printed()
{
    std::string text = toUtf8(services.allPrinted());
    services.printed.clear();
    return text;
}

std::string failure(const std::string& source, int line, const std::string& text,
                    const std::string& code)
{
    return "\nError in file " + source + ".cpp on line " + std::to_string(line) + "\n(" + text
        + ", ec = " + code + ')';
}

} // namespace corma::testing
