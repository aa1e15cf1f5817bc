#include <string>

#include "PrompterCore/text/Utf8.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"
#include "tests/text/CodePoints.h"

namespace PrompterCore {
namespace {

TEST(Utf8, EveryCodePointReadsForwardsAndBackwards) {
    Tests::forEachCodePoint([](char32_t c) {
        const std::string bytes = Tests::utf8Of(c);
        std::size_t at = 0;
        std::size_t end = bytes.size();
        std::size_t bad = 0;
        if (Utf8::next(bytes, at) != c || at != bytes.size() || Utf8::previous(bytes, end) != c ||
            end != 0 || Utf8::illFormedPart(bytes, bad) != 0 || bad != bytes.size() ||
            Utf8::utf16Length(bytes) != (c > 0xFFFF ? 2 : 1) || Utf8::isAscii(bytes) != (c < 0x80))
            ADD_FAILURE() << std::hex << static_cast<unsigned>(c);
    });
}

TEST(Utf8, SurrogatesAndWhatLiesAbove10FFFFAreIllFormed) {
    for (const char* bytes : {"\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80"}) {
        std::size_t at = 0;
        EXPECT_EQ(Utf8::illFormedPart(bytes, at), 1u);
        EXPECT_EQ(at, 0u);
    }
}

TEST(Utf8, IllFormedPartIsFoundAtOrAfterTheGivenByte) {
    const std::string bytes = "0123456789\xE2\x82z\xFF";
    std::size_t at = 3;
    EXPECT_EQ(Utf8::illFormedPart(bytes, at), 2u);
    EXPECT_EQ(at, 10u);
    at = 12;
    EXPECT_EQ(Utf8::illFormedPart(bytes, at), 1u);
    EXPECT_EQ(at, 13u);
    at = 14;
    EXPECT_EQ(Utf8::illFormedPart(bytes, at), 0u);
    EXPECT_EQ(at, 14u);
}

TEST(Utf8, IsAsciiAtEveryLengthAndPlace) {
    for (std::size_t length = 0; length < 20; ++length) {
        std::string bytes(length, 'a');
        EXPECT_TRUE(Utf8::isAscii(bytes));
        for (std::size_t i = 0; i < length; ++i) {
            bytes[i] = '\x80';
            EXPECT_FALSE(Utf8::isAscii(bytes)) << length << ' ' << i;
            bytes[i] = 'a';
        }
    }
}

TEST(Utf8, Utf16LengthIsThatOfItsCodePoints) {
    Tests::forAll([](const Text& text) {
        std::int64_t units = 0;
        for (std::size_t at = 0; at < text.utf8().size();)
            units += Utf8::next(text.utf8(), at) > 0xFFFF ? 2 : 1;
        RC_ASSERT(Utf8::utf16Length(text.utf8()) == units);
    });
}

}  // namespace
}  // namespace PrompterCore
