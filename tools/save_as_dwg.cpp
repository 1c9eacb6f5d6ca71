// Writes a drawing as a DWG file: save_as_dwg DRAWING FILE.dwg

#include <corma/host.h>

#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

namespace {

// What is wrong the library says itself.
bool saveAsDwg(const std::filesystem::path& drawing, const std::filesystem::path& file)
{
    const bool isSaved = corma::openDocument(drawing.wstring().c_str())
        && corma::saveDocument(file.wstring().c_str());
    corma::closeDocument();
    return isSaved;
}

} // namespace

int main(int argc, char* argv[])
{
    constexpr int kWords = 3;
    constexpr int kWrongUse = 2;
    if (argc != kWords) {
        std::cerr << "usage: save_as_dwg DRAWING FILE.dwg\n";
        return kWrongUse;
    }
    try {
        return saveAsDwg(argv[1], argv[2]) ? 0 : 1;
    } catch (const std::exception& trouble) {
        std::cerr << trouble.what() << '\n';
        return 1;
    }
}
