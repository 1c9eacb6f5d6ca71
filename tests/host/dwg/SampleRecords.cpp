#include "host/dwg/SampleRecords.h"

#include "host/dwg/classes.h"
#include "host/dwg/file_form.h"
#include "host/dwg/object_map.h"
#include "platform/platform.h"

#include <algorithm>
#include <stdexcept>

namespace corma::host::dwg {

namespace fs = std::filesystem;

SampleFile::SampleFile(fs::path file)
    : path(std::move(file))
{
    auto content = platform::readFile(path.native());
    if (!content) {
        throw std::runtime_error("cannot read " + path.string());
    }
    auto read = readContainer(std::move(*content), path.wstring());
    if (const auto* const trouble = std::get_if<ReadResult>(&read)) {
        throw std::runtime_error(std::string(trouble->message.begin(), trouble->message.end()));
    }
    container = std::move(std::get<std::unique_ptr<Container>>(read));
    const Parts& parts = container->parts();
    form = formOf(parts);
    auto classes = decodeClasses(parts.classes, form);
    if (!classes) {
        throw std::runtime_error("the classes of " + path.string() + " are damaged");
    }
    types = TypeTable(form.version, std::move(*classes));
}

void SampleFile::eachRecord(
    const std::function<void(std::string_view bytes, Handle handle)>& take) const
{
    const Parts& parts = container->parts();
    const auto places = decodeObjectMap(parts.map);
    if (!places) {
        throw std::runtime_error("the object map of " + path.string() + " is damaged");
    }
    for (const ObjectPlace& place : *places) {
        const std::string_view rest = parts.objects.substr(place.offset);
        const auto head = readHead(rest, parts.version);
        if (!head) {
            throw std::runtime_error("a record of " + path.string() + " is damaged");
        }
        take(rest.substr(0, head->size), place.handle);
    }
}

std::vector<fs::path> sampleDwgFiles()
{
    std::vector<fs::path> files;
    const fs::path folder = CORMA_SAMPLE_DRAWINGS;
    if (!folder.empty()) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".dwg") {
                files.push_back(entry.path());
            }
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace corma::host::dwg
