// What holds on every system.

#include <concepts>
#include <cstdint>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "PrompterCore/platform/Keychain.h"
#include "PrompterCore/platform/KeychainItems.h"
#include "PrompterCore/text/Trims.h"
#include "tests/platform/KeychainUnderTest.h"
#include "tests/support/Generators.h"
#include "tests/support/Printing.h"
#include "tests/support/Properties.h"

namespace PrompterCore {

static_assert(std::copyable<Keychain> && std::equality_comparable<Keychain>);
static_assert(std::derived_from<Keychain::Failure, std::exception>);
static_assert(std::is_nothrow_copy_constructible_v<Keychain::Failure>);

namespace {

class KeychainTest : public ::testing::Test {
protected:
    KeychainTest() { Tests::startKeychain(); }
    ~KeychainTest() override { Tests::stopKeychain(); }

    const Keychain keychain{"com.example.prompter"};

    // The item's bytes, whatever they are.
    static void store(const std::string& bytes) {
        ASSERT_EQ(KeychainItems::add("com.example.prompter", bytes), KeychainItems::success);
    }
    std::string bytesAfterWriting(const Text& value) const {
        keychain.write(value);
        const auto read = keychain.read();
        return read ? read->utf8() : "nothing";
    }
};

TEST_F(KeychainTest, HeaderSnippetHolds) {
    keychain.write("  abc\n");
    EXPECT_EQ(keychain.read(), Text("abc"));
    keychain.write("   ");
    EXPECT_EQ(keychain.read(), std::nullopt);
    keychain.remove();
}

TEST_F(KeychainTest, WriteTrimsWhiteSpaceAndLineBreaksFromBothEnds) {
    struct Case {
        const char *what, *given, *stored;
    };
    const Case cases[] = {
        {"two leading spaces and a trailing line break", "  abc\n", "abc"},
        {"what stands inside stays", " a b\r\nc ", "a b\r\nc"},
        {"every kind of line break", "\r\n\v\f\u0085\u2028abc\u2029\r\n", "abc"},
        {"spaces that are not ASCII", "\u00A0\u2003abc\u3000\u1680", "abc"},
        {"no white space: zero width, byte order mark", "\u200Babc\uFEFF", "\u200Babc\uFEFF"},
        {"a space takes its mark along", " \u0301abc", "abc"},
        {"written decomposed, stored so", "cafe\u0301", "cafe\u0301"},
    };
    for (const auto& [what, given, stored] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(bytesAfterWriting(given), stored);
    }
}

TEST_F(KeychainTest, WriteOfSpacesRemovesTheItem) {
    keychain.write("abc");
    keychain.write("    ");
    EXPECT_EQ(keychain.read(), std::nullopt);
    EXPECT_EQ(Tests::storedItems(), 0u);
}

TEST_F(KeychainTest, WriteOfNothingWhereNothingIsSucceeds) {
    for (const char* blank : {"", " ", "\r\n", "\u3000\u0085"}) {
        EXPECT_NO_THROW(keychain.write(blank));
        EXPECT_EQ(Tests::storedItems(), 0u);
    }
}

TEST_F(KeychainTest, RemoveWhenNothingIsStoredSucceeds) { EXPECT_NO_THROW(keychain.remove()); }

TEST_F(KeychainTest, RemoveMayComeTwice) {
    keychain.write("abc");
    keychain.remove();
    EXPECT_EQ(keychain.read(), std::nullopt);
    EXPECT_NO_THROW(keychain.remove());
}

TEST_F(KeychainTest, ItemThatIsNoUtf8ReadsAsNoValue) {
    store("abc\xFF");
    EXPECT_EQ(keychain.read(), std::nullopt);
    EXPECT_EQ(Tests::storedItems(), 1u);
}

TEST_F(KeychainTest, EmptyItemReadsAsNoValue) {
    store("");
    EXPECT_EQ(keychain.read(), std::nullopt);
}

TEST_F(KeychainTest, ItemThatCannotBeReadIsWrittenOver) {
    store("\xC3");
    keychain.write("abc");
    EXPECT_EQ(keychain.read(), Text("abc"));
    EXPECT_EQ(Tests::storedItems(), 1u);
}

TEST_F(KeychainTest, ReadTrimsNothing) {
    store(" abc\n");
    ASSERT_TRUE(keychain.read());
    EXPECT_EQ(keychain.read()->utf8(), " abc\n");
}

TEST_F(KeychainTest, WriteReplacesTheOneItem) {
    for (const char* value : {"first", "second", "third"})
        keychain.write(value);
    EXPECT_EQ(keychain.read(), Text("third"));
    EXPECT_EQ(Tests::storedItems(), 1u);
}

TEST_F(KeychainTest, EachServiceHasAnItemOfItsOwn) {
    const Keychain other{"com.example.prompter2"};
    const Keychain none{""};
    keychain.write("abc");
    other.write("def");
    none.write("ghi");
    EXPECT_EQ(Tests::storedItems(), 3u);
    other.remove();
    EXPECT_EQ(keychain.read(), Text("abc"));
    EXPECT_EQ(other.read(), std::nullopt);
    EXPECT_EQ(none.read(), Text("ghi"));
}

TEST_F(KeychainTest, EqualServicesShareTheItem) {
    const Keychain composed{"caf\u00E9"};
    const Keychain decomposed{"cafe\u0301"};
    ASSERT_EQ(composed, decomposed);
    composed.write("abc");
    EXPECT_EQ(decomposed.read(), Text("abc"));
    decomposed.write("def");
    EXPECT_EQ(composed.read(), Text("def"));
    EXPECT_EQ(Tests::storedItems(), 1u);
}

TEST_F(KeychainTest, BytesThatAreNoUtf8AreStoredAsTheTextTheyMake) {
    EXPECT_EQ(bytesAfterWriting(std::string("a\xFF"
                                            "b")),
              "a\uFFFDb");
}

TEST_F(KeychainTest, HoldsAMegabyteOfAnyText) {
    std::string long_;
    while (long_.size() < 1'000'000)
        for (const std::string& piece : Tests::nastyPieces())
            long_ += piece;
    const std::string value = "<" + long_ + ">";
    EXPECT_EQ(bytesAfterWriting(value), value);
}

TEST_F(KeychainTest, WriteThenReadGivesTheTrimmedText) {
    Tests::forAll(
        [this](const Text& value) {
            const std::string_view trimmed = trimmedOfWhiteSpace(value.utf8());
            keychain.write(value);
            const auto read = keychain.read();
            RC_ASSERT(read.has_value() == !trimmed.empty());
            if (read) RC_ASSERT(read->utf8() == trimmed);
            RC_ASSERT(Tests::storedItems() == (trimmed.empty() ? 0u : 1u));
        },
        Tests::lawCases());
}

TEST_F(KeychainTest, WritingWhatWasReadChangesNothing) {
    Tests::forAll(
        [this](const Text& value) {
            keychain.write(value);
            const auto read = keychain.read();
            keychain.write(read.value_or(""));
            RC_ASSERT(keychain.read() == read);
        },
        Tests::lawCases());
}

TEST_F(KeychainTest, FailureWithoutAMessageShowsItsNumber) {
    const Keychain::Failure failure(-1);
    EXPECT_EQ(failure.status(), -1);
    EXPECT_EQ(failure.errorDescription(), Text("Could not use the keychain: status -1"));
    EXPECT_STREQ(failure.what(), "Could not use the keychain: status -1");
    EXPECT_EQ(Keychain::Failure(INT32_MIN).errorDescription(),
              Text("Could not use the keychain: status -2147483648"));
}

}  // namespace
}  // namespace PrompterCore
