#include "editor/VisDialogTest.h"

#include "host/host.h"
#include "inifile/xx_Inifile_private.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

namespace corma::testing {

namespace {

using host::Opened;

AcDbDatabase& workingDatabase()
{
    return *acdbHostApplicationServices()->workingDatabase();
}

template<class Record, class Table> void add(Table& table, std::unique_ptr<Record> record)
{
    ASSERT_EQ(table.add(record.get()), Acad::eOk);
    record.release()->close();
}

void addLayer(const wchar_t* name, unsigned short colour)
{
    Opened<AcDbLayerTable> layers;
    ASSERT_EQ(workingDatabase().getLayerTable(layers.out(), AcDb::kForWrite), Acad::eOk);
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    AcCmColor index;
    index.setColorIndex(colour);
    layer->setName(name);
    add(*layers, std::move(layer));
    AcDbObjectId id;
    layers->getAt(name, id);
    const Opened<AcDbLayerTableRecord> added(id, AcDb::kForWrite);
    ASSERT_EQ(added->setColor(index), Acad::eOk);
}

void addStyle(const wchar_t* name)
{
    Opened<AcDbTextStyleTable> styles;
    ASSERT_EQ(workingDatabase().getTextStyleTable(styles.out(), AcDb::kForWrite), Acad::eOk);
    auto style = std::make_unique<AcDbTextStyleTableRecord>();
    style->setName(name);
    add(*styles, std::move(style));
}

} // namespace

void VisDialogTest::SetUp()
{
    EditDialogTest::SetUp();
    newDrawing();
    addLayer(L"WALL", 1);
    addStyle(L"NOTES");
    ASSERT_EQ(workingDatabase().loadLineTypeFile(L"DASHED", L"acadiso.lin"), Acad::eOk);
}

void VisDialogTest::chooseEntry(const char* list, int entry) const
{
    auto& box = at<QComboBox>(list);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Home);
    for (int i = 0; i < entry; ++i) {
        QTest::keyClick(&box, Qt::Key_Down);
    }
}

std::string VisDialogTest::fieldText(const char* name) const
{
    return at<QLineEdit>(name).text().toStdString();
}

std::string VisDialogTest::listText(const char* name) const
{
    return at<QComboBox>(name).currentText().toStdString();
}

bool VisDialogTest::isChecked(const char* name) const
{
    return at<QAbstractButton>(name).isChecked();
}

bool VisDialogTest::isEnabled(const char* name) const
{
    return at<QWidget>(name).isEnabled();
}

std::string VisDialogTest::enabledOf(std::initializer_list<const char*> names) const
{
    std::string all;
    for (const char* const name : names) {
        if (isEnabled(name)) {
            all += (all.empty() ? "" : " ") + std::string(name);
        }
    }
    return all;
}

void VisDialogTest::expectAccessibleNames() const
{
    for (const std::string& name : tabOrder()) {
        const auto& widget = at<QWidget>(name.c_str());
        const auto* const button = qobject_cast<const QPushButton*>(&widget);
        EXPECT_FALSE(widget.accessibleName().isEmpty()
                     && (button == nullptr || button->text().isEmpty()))
            << name;
    }
}

} // namespace corma::testing
