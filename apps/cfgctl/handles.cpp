#include "handles.h"

#include "text.h"
#include "usage.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace cfgctl {

namespace {

constexpr unsigned int kSide = 4; // rows and columns of a matrix
constexpr unsigned int kNumbers = kSide * kSide;
constexpr const char* kMatrixAdvice
    = "; pass 16 numbers, row by row, such as 1,0,0,5,0,1,0,0,0,0,1,0,0,0,0,1";

bool isHandle(const std::wstring& text)
{
    constexpr std::size_t kLongest = 16; // digits
    return !text.empty() && text.size() <= kLongest
        && text.find_first_not_of(L"0123456789abcdefABCDEF") == std::wstring::npos;
}

double numberOf(std::string_view text)
{
    const auto first = std::min(text.find_first_not_of(' '), text.size());
    text = text.substr(first, text.find_last_not_of(' ') + 1 - first);
    text.remove_prefix(text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
    double number = 0;
    const auto [behind, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || behind != text.data() + text.size() || !std::isfinite(number)) {
        throw UsageError("--matrix has \"" + std::string(text) + "\", which is no number"
                         + kMatrixAdvice);
    }
    return number;
}

std::vector<double> numbersOf(const std::string& text)
{
    std::vector<double> numbers;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(',', at), text.size());
        numbers.push_back(numberOf(std::string_view(text).substr(at, end - at)));
        at = end + 1;
    }
    return numbers;
}

Json triple(double x, double y, double z)
{
    return Json::array({x, y, z});
}

} // namespace

void requireDrawing()
{
    if (corma::currentDocument() == nullptr) {
        throw UsageError("no drawing to work on; pass one with --drawing FILE");
    }
}

AcDbObjectId objectOf(const std::wstring& handle)
{
    if (!isHandle(handle)) {
        throw UsageError(cfgctl::quoted(handle)
                         + " is no handle; pass one as the drawing has it, such as 6D");
    }
    return corma::objectWithHandle(handle.c_str());
}

AcDbObjectIdArray objectsOf(const std::vector<std::wstring>& handles)
{
    AcDbObjectIdArray ids;
    for (const std::wstring& handle : handles) {
        ids.append(objectOf(handle));
    }
    return ids;
}

Json asJson(AcDbObjectId id)
{
    return id.isNull() ? Json() : toJson(corma::handleOf(id));
}

Json asJson(const AcDbObjectIdArray& ids)
{
    Json handles = Json::array();
    for (const AcDbObjectId id : ids) {
        handles.push_back(asJson(id));
    }
    return handles;
}

Json asJson(const AcGePoint3d& point)
{
    return triple(point.x, point.y, point.z);
}

Json asJson(const AcGeVector3d& vector)
{
    return triple(vector.x, vector.y, vector.z);
}

AcGeMatrix3d matrixOf(const std::wstring& text)
{
    const std::vector<double> numbers = numbersOf(toBytes(text));
    if (numbers.size() != kNumbers) {
        throw UsageError("--matrix has " + std::to_string(numbers.size()) + " numbers"
                         + kMatrixAdvice);
    }
    AcGeMatrix3d matrix;
    for (unsigned int i = 0; i < kNumbers; ++i) {
        matrix(i / kSide, i % kSide) = numbers[i];
    }
    constexpr double kLastRow[kSide] = {0, 0, 0, 1};
    if (!std::equal(kLastRow, kLastRow + kSide, numbers.end() - kSide)) {
        throw UsageError(std::string("--matrix must end in the row 0,0,0,1") + kMatrixAdvice);
    }
    return matrix;
}

} // namespace cfgctl
