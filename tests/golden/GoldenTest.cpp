#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include "tests/golden/Forms.h"
#include "tests/support/Printing.h"

namespace PrompterCore {

namespace Tests {

std::vector<std::string> linesOf(const std::string& file) {
    std::vector<std::string> lines;
    std::istringstream in(file);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

}  // namespace Tests

namespace {

using Tests::Form;

const std::filesystem::path folder = PROMPTERCORE_GOLDEN;

std::vector<Form> allForms() {
    std::vector<Form> all;
    for (auto* const forms : {Tests::cameraForms, Tests::colourForms, Tests::libraryForms,
                              Tests::settingForms, Tests::takeForms, Tests::telemetryForms})
        for (Form& form : forms())
            all.push_back(std::move(form));
    return all;
}

std::string content(const std::filesystem::path& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Golden, WhatIsWrittenIsWhatItAlwaysWas) {
    for (const Form& form : allForms()) {
        SCOPED_TRACE(form.file);
        if (std::getenv("PROMPTERCORE_WRITE_GOLDEN") != nullptr)
            std::ofstream(folder / form.file, std::ios::binary) << form.written;
        EXPECT_FALSE(form.written.empty());
        EXPECT_EQ(form.written, content(folder / form.file));
    }
}

TEST(Golden, WhatWasWrittenIsReadAndWrittenAlike) {
    for (const Form& form : allForms()) {
        if (form.readAndWritten == nullptr) continue;
        SCOPED_TRACE(form.file);
        const std::string file = content(folder / form.file);
        EXPECT_EQ(form.readAndWritten(file), file);
    }
}

TEST(Golden, EveryFileHasItsForm) {
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files.insert(entry.path().filename().string());
    std::set<std::string> forms;
    for (const Form& form : allForms())
        EXPECT_TRUE(forms.insert(form.file).second) << form.file;
    EXPECT_EQ(files, forms);
}

}  // namespace
}  // namespace PrompterCore
