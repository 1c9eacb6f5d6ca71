#pragma once

// What a process uses of the memory, and measuring in a process of its own.

#include <string>
#include <vector>

namespace corma::bench {

/// Bytes that were asked of the allocator and not given back, its own administration counted.
double heapInUse();

/// The resident bytes of this process, now and at its largest since forgetPeak().
double residentBytes();
double peakBytes();
void forgetPeak();

/// Runs this program anew with arguments and reads the numbers that it prints: nothing else has
/// left its memory there. Throws when it fails or prints fewer numbers.
std::vector<double> numbersFromNewProcess(const std::vector<std::string>& arguments,
                                          std::size_t count);

} // namespace corma::bench
