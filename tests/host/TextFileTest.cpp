#include <string>

#include <gtest/gtest.h>

#include "host/Failures.h"
#include "host/TextFile.h"
#include "tests/host/TemporaryFile.h"
#include "tests/support/Printing.h"

namespace Varnelle {
namespace {

using Tests::TemporaryFile;

template <class Failure>
std::string failure(const std::string& name) {
    try {
        static_cast<void>(readText(name));
    } catch (const Failure& thrown) {
        return thrown.what();
    }
    return "nothing was thrown";
}

TEST(TextFile, BytesComeAsTheyAre) {
    const std::string bytes("a\0b\r\n\u00E9", 7);
    const TemporaryFile file(bytes);
    EXPECT_EQ(readFile(file.name()), bytes);
    EXPECT_EQ(readText(file.name()).utf8(), bytes);
}

TEST(TextFile, AByteOrderMarkIsDropped) {
    const TemporaryFile file("\xEF\xBB\xBF# One");
    EXPECT_EQ(readText(file.name()), "# One");
}

TEST(TextFile, AByteOrderMarkIsRememberedByWhoEditsTheFile) {
    const TemporaryFile marked("\xEF\xBB\xBF\xEF\xBB\xBFx");
    EXPECT_TRUE(readFileText(marked.name()).hasMark);
    EXPECT_EQ(readFileText(marked.name()).text, "\uFEFFx") << "a second one is text";
    const TemporaryFile plain("x");
    EXPECT_FALSE(readFileText(plain.name()).hasMark);
    EXPECT_EQ(readFileText(plain.name()).text, "x");
}

TEST(TextFile, AnEmptyFileIsAnEmptyText) {
    const TemporaryFile file("");
    EXPECT_TRUE(readText(file.name()).isEmpty());
}

TEST(TextFile, WhatIsNotUtf8NamesTheLine) {
    const TemporaryFile file("one\ntwo\ncaf\xE9\n");
    EXPECT_EQ(failure<BadData>(file.name()),
              file.name() + ":3: the text is not UTF-8; save it as UTF-8 and try again");
}

TEST(TextFile, MissingFilesAndDirectoriesAreNamed) {
    EXPECT_EQ(failure<NoInput>("/no/such/file"), "/no/such/file: No such file or directory");
    EXPECT_EQ(failure<NoInput>("/"), "/: Is a directory");
}

TEST(TextFile, StandardInputIsCalledByItsName) {
    EXPECT_EQ(shownName("-"), "standard input");
    EXPECT_EQ(shownName("a.txt"), "a.txt");
}

}  // namespace
}  // namespace Varnelle
