// The test data and the library must be of one version of Unicode, or their tests say nothing.

#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <unicode/uchar.h>

namespace {

TEST(UnicodeData, IsOfTheVersionThatTheUnicodeLibraryHas) {
    UVersionInfo version;
    u_getUnicodeVersion(version);
    const std::string number = std::to_string(version[0]) + '.' + std::to_string(version[1]);
    for (const char* file : {GRAPHEME_BREAK_TEST, NORMALIZATION_TEST}) {
        std::ifstream stream(file);
        std::string first;
        std::getline(stream, first);
        EXPECT_NE(first.find("Test-" + number), std::string::npos) << file << ": " << first;
    }
}

}  // namespace
