#include <concepts>
#include <string>

#include "PrompterCore/colour/UUID.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<UUID> && std::equality_comparable<UUID>);
static_assert(!std::default_initializable<UUID>, "an identity is always somebody's");

constexpr UUID::Bytes counting = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77,
                                  0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF};

TEST(UUID, WritesUpperCase) {
    EXPECT_EQ(UUID(counting).text(), "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(UUID(UUID::Bytes{}).text(), "00000000-0000-0000-0000-000000000000");
}

TEST(UUID, ReadsEitherCase) {
    EXPECT_EQ(UUID::fromText("00112233-4455-6677-8899-AABBCCDDEEFF"), UUID(counting));
    EXPECT_EQ(UUID::fromText("00112233-4455-6677-8899-aabbccddeeff"), UUID(counting));
    EXPECT_EQ(UUID::fromText("00112233-4455-6677-8899-aAbBcCdDeEfF"), UUID(counting));
    EXPECT_EQ(UUID::fromText("0f8fad5b-d9cb-469f-a165-70867728950e")->text(),
              "0F8FAD5B-D9CB-469F-A165-70867728950E");
}

TEST(UUID, ReadsNothingElse) {
    const char* const texts[] = {
        "",
        "-",
        "00112233445566778899AABBCCDDEEFF",
        "{00112233-4455-6677-8899-AABBCCDDEEFF}",
        "00112233-4455-6677-8899-AABBCCDDEEF",
        "00112233-4455-6677-8899-AABBCCDDEEFF0",
        " 0112233-4455-6677-8899-AABBCCDDEEFF",
        "00112233-4455-6677-8899-AABBCCDDEEFG",
        "0011223-34455-6677-8899-AABBCCDDEEFF",
        "00112233-4455-6677-88-99AABBCCDDEEFF",
        "00112233_4455_6677_8899_AABBCCDDEEFF",
        "00112233-4455-6677-8899-AABBCCDDEE\u00E9",
        "00112233\u20114455-6677-8899-AABBCCDDEE",
        "------------------------------------",
    };
    for (const char* const text : texts)
        EXPECT_EQ(UUID::fromText(text), std::nullopt) << text;
}

// Each place of the text, with each byte in it.
TEST(UUID, EveryPlaceHoldsADigitOrAHyphen) {
    const std::string text = UUID(counting).text();
    for (std::size_t at = 0; at < text.size(); at++) {
        const bool isHyphen = at == 8 || at == 13 || at == 18 || at == 23;
        for (int c = 0; c < 128; c++) {
            std::string changed = text;
            changed[at] = static_cast<char>(c);
            const bool isDigit =
                (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
            EXPECT_EQ(UUID::fromText(changed).has_value(), isHyphen ? c == '-' : isDigit)
                << at << ' ' << c;
        }
    }
}

TEST(UUID, EveryByteSurvivesItsText) {
    for (int value = 0; value <= 255; value++) {
        UUID::Bytes bytes{};
        for (std::size_t i = 0; i < bytes.size(); i++)
            bytes[i] = static_cast<std::uint8_t>(value + static_cast<int>(i));
        EXPECT_EQ(UUID::fromText(UUID(bytes).text()), UUID(bytes));
    }
}

TEST(UUID, AFreshOneSaysThatItIsRandom) {
    EXPECT_EQ(UUID::fromRandom(UUID::Bytes{}).text(), "00000000-0000-4000-8000-000000000000");
    UUID::Bytes ones;
    ones.fill(0xFF);
    EXPECT_EQ(UUID::fromRandom(ones).text(), "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF");
    EXPECT_NE(UUID::fromRandom(ones), UUID::fromRandom(counting));
}

TEST(UUID, NoTextStopsTheReading) {
    Tests::forAll([](const Text& text) {
        const auto id = UUID::fromText(text);
        RC_ASSERT(!id || UUID::fromText(id->text()) == id);
    });
}

}  // namespace
}  // namespace PrompterCore
