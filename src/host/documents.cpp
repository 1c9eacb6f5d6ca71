#include "host/host.h"
#include "host/support_path.h"
#include "platform/platform.h"

#include <algorithm>
#include <memory>
#include <string>

namespace {

std::unique_ptr<AcApDocument>& currentDocument()
{
    static std::unique_ptr<AcApDocument> document;
    return document;
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
    const auto& document = currentDocument();
    if (!document) {
        return {};
    }
    const auto parts = corma::platform::splitPath(document->fileName());
    return parts.folderPath();
}

} // namespace

AcApDocument::AcApDocument(const ACHAR* fileName)
    : m_fileName(fileName)
{
}

const ACHAR* AcApDocument::fileName() const
{
    return m_fileName.c_str();
}

AcApDocument* AcApDocManager::curDocument() const
{
    return currentDocument().get();
}

AcApDocManager* acDocManagerPtr()
{
    static AcApDocManager manager;
    return &manager;
}

AcDbDatabase* AcDbHostApplicationServices::workingDatabase() const
{
    return nullptr; // documents have no drawing database here
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

bool openDocument(const wchar_t* fileName)
{
    if (fileName == nullptr || *fileName == 0) {
        return false;
    }
    currentDocument() = std::make_unique<AcApDocument>(platform::fullPath(fileName).c_str());
    return true;
}

void closeDocument()
{
    currentDocument().reset();
}

} // namespace corma
