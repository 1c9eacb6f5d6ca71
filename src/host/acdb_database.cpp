#include "host/acdb_database.h"

#include "host/drawing_files.h"
#include "host/host.h"
#include "host/model/Store.h"
#include "host/templates/default_drawing.h"
#include "platform/platform.h"

#include <cwchar>

using corma::host::Store;
using corma::host::TableKind;

namespace {

template<class Object>
Acad::ErrorStatus openStub(Object*& object, AcDbStub& stub, AcDb::OpenMode mode)
{
    return acdbOpenObject(object, AcDbObjectId(&stub), mode);
}

} // namespace

// --- handles -------------------------------------------------------------------------------------

AcDbHandle::AcDbHandle(const ACHAR* hexadecimal)
    : m_handle(
        corma::host::handleFrom(std::wstring_view(hexadecimal == nullptr ? L"" : hexadecimal))
            .value_or(corma::host::Handle::none))
{
}

void AcDbHandle::getIntoAsciiBuffer(ACHAR* buffer, std::size_t size) const
{
    const std::wstring text = corma::host::toText(m_handle);
    if (size > text.size()) {
        std::wmemcpy(buffer, text.c_str(), text.size() + 1);
    } else if (size != 0) {
        *buffer = 0;
    }
}

// --- life and files ------------------------------------------------------------------------------

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool /*noDocument*/)
    : m_store(std::make_unique<Store>(this))
{
    m_store->finishLoading({}, nullptr);
    if (buildDefaultDrawing) {
        read(corma::host::textContent(corma::host::defaultDrawing()), L"");
    }
}

AcDbDatabase::~AcDbDatabase()
{
    AcDbHostApplicationServices* const services = acdbHostApplicationServices();
    if (services->workingDatabase() == this) {
        services->setWorkingDatabase(nullptr);
    }
}

Acad::ErrorStatus AcDbDatabase::read(corma::platform::FileContent content, const std::wstring& path)
{
    auto store = std::make_unique<Store>(this);
    const auto result = corma::host::readDrawing(std::move(content), path, *store);
    if (result.status == Acad::eOk) {
        m_store = std::move(store);
        m_fileName = path;
    } else {
        acutPrintf(L"\n%s", result.message.c_str());
    }
    return result.status;
}

Acad::ErrorStatus AcDbDatabase::readDwgFile(const ACHAR* fileName, OpenMode /*mode*/,
                                            bool /*allowCPConversion*/, const ACHAR* password)
{
    if (fileName == nullptr || *fileName == 0) {
        return Acad::eInvalidInput;
    }
    if (m_store->first() != nullptr) {
        return Acad::eNotApplicable;
    }
    const std::wstring path = corma::platform::fullPath(fileName);
    if (password != nullptr && *password != 0) {
        acutPrintf(L"\n%s: a drawing of this format has no password; open it without one.",
                   path.c_str());
        return Acad::eInvalidInput;
    }
    const auto native = corma::platform::locate(path);
    auto content = corma::platform::readFile(native);
    if (!content) {
        const bool isThere = corma::platform::exists(path);
        acutPrintf(isThere ? L"\n%s cannot be read: it is no file, or reading it is not allowed."
                           : L"\n%s does not exist.",
                   path.c_str());
        return isThere ? Acad::eFileAccessErr : Acad::eFileNotFound;
    }
    return read(std::move(*content), corma::platform::fromNative(native));
}

// The content tells the format, so both names of the operation do the same.
Acad::ErrorStatus AcDbDatabase::dxfIn(const ACHAR* fileName, const ACHAR* /*logFileName*/)
{
    return readDwgFile(fileName);
}

Acad::ErrorStatus AcDbDatabase::saveAs(const ACHAR* fileName)
{
    if (fileName == nullptr || *fileName == 0) {
        return Acad::eInvalidInput;
    }
    if (m_store->format() == nullptr) {
        return Acad::eNotApplicable;
    }
    const std::wstring path
        = corma::platform::fromNative(corma::platform::locate(corma::platform::fullPath(fileName)));
    const auto [status, message] = corma::host::writeDrawing(*m_store, path, m_fileName);
    if (status != Acad::eOk) {
        const std::wstring why = message.empty() ? acadErrorStatusText(status) : message;
        acutPrintf(L"\n%s could not be written (%s); its former content is untouched.",
                   path.c_str(), why.c_str());
        return status;
    }
    m_fileName = path;
    m_store->markSaved();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::save()
{
    return saveAs(m_fileName.c_str());
}

Acad::ErrorStatus AcDbDatabase::getFilename(const ACHAR*& fileName) const
{
    fileName = m_fileName.c_str();
    return Acad::eOk;
}

bool AcDbDatabase::isModified() const
{
    return m_store->isChanged();
}

// --- tables and dictionaries ---------------------------------------------------------------------

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary,
                                                          AcDb::OpenMode mode)
{
    return openStub(dictionary, m_store->namedObjects(), mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode)
{
    return openStub(table, m_store->table(TableKind::blockRecord), mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode)
{
    return openStub(table, m_store->table(TableKind::layer), mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode)
{
    return openStub(table, m_store->table(TableKind::linetype), mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode)
{
    return openStub(table, m_store->table(TableKind::textStyle), mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbViewportTable*& table, AcDb::OpenMode mode)
{
    return openStub(table, m_store->table(TableKind::viewport), mode);
}

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode)
{
    return getSymbolTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode)
{
    return getSymbolTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode)
{
    return getSymbolTable(table, mode);
}

Acad::ErrorStatus AcDbDatabase::getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode)
{
    return getSymbolTable(table, mode);
}

AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const
{
    return AcDbObjectId(&m_store->namedObjects());
}

AcDbObjectId AcDbDatabase::blockTableId() const
{
    return AcDbObjectId(&m_store->table(TableKind::blockRecord));
}

AcDbObjectId AcDbDatabase::layerTableId() const
{
    return AcDbObjectId(&m_store->table(TableKind::layer));
}

AcDbObjectId AcDbDatabase::linetypeTableId() const
{
    return AcDbObjectId(&m_store->table(TableKind::linetype));
}

AcDbObjectId AcDbDatabase::textStyleTableId() const
{
    return AcDbObjectId(&m_store->table(TableKind::textStyle));
}

AcDbObjectId AcDbDatabase::viewportTableId() const
{
    return AcDbObjectId(&m_store->table(TableKind::viewport));
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, bool /*createIfNotFound*/,
                                                const AcDbHandle& handle)
{
    id = AcDbObjectId(m_store->find(handle.value()));
    return id.isNull() ? Acad::eUnknownHandle : Acad::eOk;
}

std::wstring AcDbDatabase::versionText() const
{
    return m_store->versionText();
}

bool AcDbDatabase::tilemode() const
{
    using namespace corma::host;
    const Groups value = m_store->variable(L"$TILEMODE");
    return value.integer(code::flags, value.all(), 1) != 0;
}
