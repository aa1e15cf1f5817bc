#pragma once

// Everything that leaves the library and is found again: by a later version of it, by a service, by
// a video site. Each form stands in a file of tests/data/golden/, byte by byte;
// docs/stored-forms.md says what the files are.
//
// A new form is a file there and a Form in the list of its room. What changes by intent is written
// anew by PROMPTERCORE_WRITE_GOLDEN=1 test-golden; the difference is then read in the review.

#include <string>
#include <vector>

#include "PrompterCore/records/Record.h"

namespace PrompterCore::Tests {

struct Form {
    const char* file;     ///< in tests/data/golden/
    std::string written;  ///< what the library writes today
    /// Reads what the file holds and writes it again; null for what is only ever written.
    std::string (*readAndWritten)(const std::string& file) = nullptr;
};

std::vector<Form> cameraForms();
std::vector<Form> colourForms();
std::vector<Form> libraryForms();
std::vector<Form> settingForms();
std::vector<Form> takeForms();
std::vector<Form> telemetryForms();

/// The lines of `file`, without their line feeds.
std::vector<std::string> linesOf(const std::string& file);

/// One record a line.
template <class T>
std::string recordLines(const std::vector<T>& values) {
    std::string lines;
    for (const T& value : values)
        lines += toJson(value) + '\n';
    return lines;
}

template <class T>
std::string recordsReadAndWritten(const std::string& file) {
    std::string lines;
    for (const std::string& line : linesOf(file))
        lines += toJson(fromJson<T>(line)) + '\n';
    return lines;
}

}  // namespace PrompterCore::Tests
