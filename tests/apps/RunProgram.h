#pragma once

#include <map>
#include <string>
#include <vector>

namespace corma::testing {

/// What a program left behind.
struct ProgramResult
{
    int exitStatus = -1; // 128 plus the signal when one ended it
    std::string out;
    std::string err;
};

/// A program to be run, with what it finds around it.
struct ProgramCall
{
    std::string program; // full path
    std::vector<std::string> arguments;
    std::string folder; // its current folder
    std::map<std::string, std::string> environment; // beside what the test program has
    std::string outTo; // file that takes its standard output; empty: it is caught
};

/// Runs the program to its end. Throws when it cannot be started.
ProgramResult runProgram(const ProgramCall& call);

} // namespace corma::testing
