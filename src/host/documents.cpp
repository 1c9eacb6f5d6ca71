#include "host/host.h"
#include "host/model/Stub.h"
#include "host/support_path.h"
#include "platform/platform.h"

#include <algorithm>
#include <memory>
#include <string>

namespace {

std::unique_ptr<AcApDocument>& theDocument()
{
    static std::unique_ptr<AcApDocument> document;
    return document;
}

// A database that was made the one to work on; null while it is that of the current document.
AcDbDatabase*& chosenDatabase()
{
    static AcDbDatabase* database = nullptr;
    return database;
}

bool copyOut(const std::wstring& path, ACHAR* result, std::size_t length)
{
    if (path.size() >= length) {
        return false;
    }
    std::copy_n(path.c_str(), path.size() + 1, result);
    return true;
}

std::wstring drawingFolder()
{
    const auto& document = theDocument();
    if (!document) {
        return {};
    }
    const auto parts = corma::platform::splitPath(document->fileName());
    return parts.folderPath();
}

} // namespace

AcApDocument::AcApDocument(const ACHAR* fileName, std::unique_ptr<AcDbDatabase> database)
    : m_fileName(fileName)
    , m_database(std::move(database))
{
}

const ACHAR* AcApDocument::fileName() const
{
    return m_fileName.c_str();
}

AcAp::DocLockMode AcApDocument::lockMode() const
{
    const auto strongest = std::max_element(m_locks.begin(), m_locks.end());
    return strongest == m_locks.end() ? AcAp::kNotLocked : *strongest;
}

Acad::ErrorStatus AcApDocManager::lockDocument(AcApDocument* document, AcAp::DocLockMode mode)
{
    if (document == nullptr) {
        return Acad::eInvalidInput;
    }
    document->m_locks.push_back(mode);
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::unlockDocument(AcApDocument* document)
{
    if (document == nullptr) {
        return Acad::eInvalidInput;
    }
    if (document->m_locks.empty()) {
        return Acad::eNotApplicable;
    }
    document->m_locks.pop_back();
    return Acad::eOk;
}

AcApDocument* AcApDocManager::curDocument() const
{
    return theDocument().get();
}

AcApDocManager* acDocManagerPtr()
{
    static AcApDocManager manager;
    return &manager;
}

AcDbDatabase* AcDbHostApplicationServices::workingDatabase() const
{
    if (chosenDatabase() != nullptr) {
        return chosenDatabase();
    }
    return theDocument() ? theDocument()->database() : nullptr;
}

void AcDbHostApplicationServices::setWorkingDatabase(AcDbDatabase* database)
{
    chosenDatabase() = database;
}

const ACHAR* AcDbHostApplicationServices::getEnv(const ACHAR* name) const
{
    return corma::services().environment(name);
}

AcDbHostApplicationServices* acdbHostApplicationServices()
{
    static AcDbHostApplicationServices services;
    return &services;
}

int acedFindFile(const ACHAR* name, ACHAR* result, std::size_t length)
{
    using namespace corma;
    if (name == nullptr || *name == 0) {
        return RTERROR;
    }
    const auto tryIn = [&](const std::wstring& folder) {
        const std::wstring candidate = platform::fullPath(platform::joinPath(folder, name));
        return platform::exists(candidate) && copyOut(candidate, result, length);
    };
    if (tryIn(L"")) {
        return RTNORM;
    }
    if (platform::isAbsolute(name)) {
        return RTERROR;
    }
    const std::wstring folder = drawingFolder();
    if (!folder.empty() && tryIn(folder)) {
        return RTNORM;
    }
    const auto support = host::supportFolders();
    return std::any_of(support.begin(), support.end(), tryIn) ? RTNORM : RTERROR;
}

namespace corma {

namespace {

void makeCurrent(const wchar_t* fileName, std::unique_ptr<AcDbDatabase> database)
{
    theDocument()
        = std::make_unique<AcApDocument>(platform::fullPath(fileName).c_str(), std::move(database));
    chosenDatabase() = nullptr; // who opens a drawing means to work on it
}

} // namespace

bool openDocument(const wchar_t* fileName)
{
    if (fileName == nullptr || *fileName == 0) {
        return false;
    }
    auto database = std::make_unique<AcDbDatabase>(false);
    if (database->readDwgFile(fileName) != Acad::eOk) {
        return false;
    }
    makeCurrent(fileName, std::move(database));
    return true;
}

bool newDocument(const wchar_t* fileName)
{
    if (fileName == nullptr || *fileName == 0) {
        return false;
    }
    makeCurrent(fileName, std::make_unique<AcDbDatabase>());
    return true;
}

bool isDocumentModified()
{
    return theDocument() && theDocument()->database()->isModified();
}

bool saveDocument(const wchar_t* fileName)
{
    if (!theDocument()) {
        return false;
    }
    const ACHAR* const target = fileName == nullptr ? theDocument()->fileName() : fileName;
    return theDocument()->database()->saveAs(target) == Acad::eOk;
}

void closeDocument()
{
    theDocument().reset();
}

AcApDocument* currentDocument()
{
    return theDocument().get();
}

AcDbDatabase* openDatabase(const wchar_t* fileName)
{
    auto database = std::make_unique<AcDbDatabase>(false, true);
    return database->readDwgFile(fileName) == Acad::eOk ? database.release() : nullptr;
}

void closeDatabase(AcDbDatabase* database)
{
    delete database;
}

std::wstring handleOf(AcDbObjectId id)
{
    return id.isNull() ? std::wstring() : host::toText(id.stub()->handle);
}

AcDbObjectId objectWithHandle(const wchar_t* handle, AcDbDatabase* database)
{
    if (database == nullptr) {
        database = acdbHostApplicationServices()->workingDatabase();
    }
    AcDbObjectId id;
    if (database != nullptr) {
        database->getAcDbObjectId(id, false, AcDbHandle(handle));
    }
    return id;
}

} // namespace corma
