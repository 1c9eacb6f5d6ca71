#pragma once

// What must hold for any files that a settings model is loaded from: it is what the plain reading
// of the rules makes of them.

#include <string>
#include <string_view>

namespace corma::fuzzing {

/// The files of a model; an empty one is there, too, but for the project file.
struct ModelInput
{
    std::string_view global;
    std::string_view definitions;
    std::string_view descriptions;
    std::string_view project;
};

/// An input as two files: the one that a target is about, and behind a byte 1E the configuration
/// file; without that byte a small one with the idents that corpora use.
struct TwoFiles
{
    explicit TwoFiles(std::string_view input);

    std::string_view subject;
    std::string_view global;
};

/// Loads a model, then its project file on top, if there is one, and holds it, and what the user
/// was told, against the plain reading.
void checkModel(const ModelInput& input);

/// The same for a configuration file that is loaded alone.
void checkStream(std::string_view bytes);

} // namespace corma::fuzzing
