#pragma once

// What programs do with drawings, as work to measure.

#include "host/acdb_database.h"

#include <cstddef>
#include <string>
#include <vector>

namespace corma::bench {

/// A drawing of bench/make_drawing.py, as bench/CMakeLists.txt has it made.
struct DrawingFile
{
    int megabytes; // without its settings
    std::size_t settings;

    [[nodiscard]] std::string in(const std::string& folder) const; // path
    [[nodiscard]] std::string form() const; // for the table
};

/// The idents of its settings.
std::vector<std::wstring> identsOf(const DrawingFile& file);

/// The configuration file whose settings the drawings hold, by the name that they know it by.
/// Made in a folder; the path.
std::wstring makeConfigurationFile(const std::string& folder);

/// A drawing in memory, which is the one to work on for as long as the object lives.
class WorkingDrawing
{
public:
    WorkingDrawing(); // a new one
    explicit WorkingDrawing(const std::string& path);
    WorkingDrawing(const WorkingDrawing&) = delete;
    WorkingDrawing& operator=(const WorkingDrawing&) = delete;
    ~WorkingDrawing();

    [[nodiscard]] AcDbDatabase& database() { return m_database; }

private:
    AcDbDatabase m_database;
};

/// Texts at the end of the model space.
std::vector<AcDbObjectId> addTexts(AcDbDatabase& database, std::size_t count);

/// Opens the first entities of the model space for read; how many there were of so many.
std::size_t openFirst(AcDbDatabase& database, std::size_t most);

void eraseEach(const std::vector<AcDbObjectId>& ids);

} // namespace corma::bench
