#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <string>

#include "PrompterCore/colour/RGBA.h"
#include "tests/colour/Colours.h"
#include "tests/support/Extremes.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"
#include "tests/text/CodePoints.h"

namespace PrompterCore {
namespace {

using Tests::black;
using Tests::orange;
using Tests::white;

static_assert(std::copyable<RGBA> && std::equality_comparable<RGBA>);

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
using Tests::infinity;

std::string twoDigits(int byte) {
    const std::string digits = "0123456789ABCDEF";
    return {digits[static_cast<std::size_t>(byte / 16)],
            digits[static_cast<std::size_t>(byte % 16)]};
}

RGBA anyColour() {
    const auto byte = [] { return *rc::gen::inRange(0, 256) / 255.0; };
    const double red = byte();
    const double green = byte();
    const double blue = byte();
    return {red, green, blue, byte()};
}

TEST(RGBA, ClampsEachComponent) {
    const RGBA colour(-0.2, 1.7, 0.5, 1);
    EXPECT_EQ(colour.red(), 0);
    EXPECT_EQ(colour.green(), 1);
    EXPECT_EQ(colour.blue(), 0.5);
    EXPECT_EQ(colour.alpha(), 1);
    EXPECT_EQ(RGBA(infinity, -infinity, 1e300, -1e-300), RGBA(1, 0, 1, 0));
    EXPECT_FALSE(std::signbit(RGBA(-0.0, 0, 0, 0).red())) << "at or below 0 is 0";
    EXPECT_TRUE(std::isnan(RGBA(notANumber, 0, 0, 0).red())) << "what is no number stays";
    EXPECT_EQ(RGBA(std::nextafter(1.0, 2.0), 0, 0, 0).red(), 1);
    EXPECT_EQ(RGBA(std::nextafter(1.0, 0.0), 0, 0, 0).red(), std::nextafter(1.0, 0.0));
}

TEST(RGBA, AStoredColourStaysAsItIs) {
    const RGBA colour = RGBA::unclamped(-0.2, 1.7, 0.5, 2);
    EXPECT_EQ(colour.red(), -0.2);
    EXPECT_EQ(colour.green(), 1.7);
    EXPECT_EQ(colour.blue(), 0.5);
    EXPECT_EQ(colour.alpha(), 2);
    EXPECT_EQ(RGBA::unclamped(1, 0.5, 0, 1), orange);
}

TEST(RGBA, IsEqualExactly) {
    EXPECT_EQ(orange, RGBA(1, 0.5, 0, 1));
    EXPECT_NE(orange, RGBA(1, std::nextafter(0.5, 1.0), 0, 1));
    EXPECT_NE(orange, RGBA(0.9, 0.5, 0, 1));
    EXPECT_NE(orange, RGBA(1, 0.5, 0.1, 1));
    EXPECT_NE(orange, RGBA(1, 0.5, 0, 0.9));
    const RGBA unknown(notANumber, 0, 0, 1);
    EXPECT_NE(unknown, unknown);
}

TEST(RGBA, ReadsHex) {
    struct Case {
        const char* what;
        Text text;
        std::optional<RGBA> colour;
    };
    const RGBA opaque(1, 128 / 255.0, 0, 1);
    const Case cases[] = {
        {"six digits are opaque", "#ff8000", opaque},
        {"without the sign", "FF8000", opaque},
        {"mixed case", "#fF80aB", RGBA(1, 128 / 255.0, 171 / 255.0, 1)},
        {"eight digits", "FF800080", RGBA(1, 128 / 255.0, 0, 128 / 255.0)},
        {"transparent", "#00000000", RGBA(0, 0, 0, 0)},
        {"4 digits", "#FF80", {}},
        {"3 digits", "#F80", {}},
        {"5 digits", "#FF800", {}},
        {"7 digits", "#FF80001", {}},
        {"9 digits", "#FF8000FF0", {}},
        {"two signs", "##FF8000", {}},
        {"two signs in place of two digits", "##FF80", {}},
        {"no digits", "#GG8000", {}},
        {"a last one that is none", "#FF800G", {}},
        {"just behind the digits", "#FF800:", {}},
        {"just before the letters", "#FF800@", {}},
        {"nothing", "", {}},
        {"only the sign", "#", {}},
        {"a blank before", " #FF8000", {}},
        {"a blank behind", "#FF8000 ", {}},
        {"a line break behind", "FF8000\r\n", {}},
        {"the sign behind", "FF8000#", {}},
        {"a number's sign", "#+F8000", {}},
        {"a number's sign of a later pair", "#FF-100", {}},
        {"a prefix of programs", "0xFF8000", {}},
        {"a mark on a digit", "#FF8000\u0301", {}},
        {"a mark on the sign", "#\u0301FF8000", {}},
        {"full-width digits", "#\uFF26\uFF268000", {}},
        {"Arabic-Indic digits", "#FF\u0668\u0660\u0660\u0660", {}},
        {"three letters of two bytes", "\u00C9\u00C9\u00C9", {}},
        {"zero bytes", std::string("#FF80\0\0", 7), {}},
        {"a ligature that upper-cases to two digits", "#\uFB008000", opaque},
        {"the ligature counts as two", "#\uFB0080001", {}},
    };
    for (const auto& [what, text, colour] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(RGBA::fromHex(text), colour);
    }
}

TEST(RGBA, ReadsNoOtherCodePoint) {
    Tests::forEachCodePoint([](char32_t c) {
        const std::string written = Tests::utf8Of(c);
        const bool isDigit =
            (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
        ASSERT_EQ(RGBA::fromHex(written + "12345").has_value(), isDigit)
            << static_cast<std::uint32_t>(c);
        // A sign in front is dropped, and five digits are left; the ligature counts as two.
        ASSERT_EQ(RGBA::fromHex(written + "1234").has_value(), c == 0xFB00)
            << static_cast<std::uint32_t>(c);
    });
}

TEST(RGBA, WritesHexWithAllEightDigits) {
    EXPECT_EQ(orange.hex(), "#FF8000FF") << "127.5 is rounded up";
    EXPECT_EQ(black.hex(), "#000000FF");
    EXPECT_EQ(RGBA(0, 0, 0, 0).hex(), "#00000000");
    EXPECT_EQ(RGBA(0.1, 0.2, 0.3, 0.4).hex(), "#1A334D66");
    // Half a step is the border; what a stored colour has beyond 0 and 1 may round back to it.
    EXPECT_EQ(RGBA::unclamped(std::nextafter(255.5 / 255, 0.0), -0.4 / 255, 0, 1).hex(),
              "#FF0000FF");
}

TEST(RGBA, EveryByteSurvivesHex) {
    for (int byte = 0; byte <= 255; byte++) {
        const std::string digits = twoDigits(byte);
        const std::string others = twoDigits(255 - byte);
        const std::string written = "#" + digits + others + "00" + digits;
        const auto colour = RGBA::fromHex(written);
        ASSERT_TRUE(colour);
        EXPECT_EQ(*colour, RGBA(byte / 255.0, (255 - byte) / 255.0, 0, byte / 255.0));
        EXPECT_EQ(colour->hex(), written);
    }
}

TEST(RGBA, HexOfAColourReadsBackWithinHalfAByte) {
    Tests::forAll([] {
        const auto component = [] { return *rc::gen::inRange(0, 1'000'001) / 1'000'000.0; };
        const double red = component();
        const double alpha = component();
        const auto read = RGBA::fromHex(RGBA(red, 0.25, 1, alpha).hex());
        RC_ASSERT(read.has_value());
        RC_ASSERT(std::abs(read->red() - red) <= 0.5 / 255 + 1e-12);
        RC_ASSERT(std::abs(read->alpha() - alpha) <= 0.5 / 255 + 1e-12);
        RC_ASSERT(read->hex() == RGBA(red, 0.25, 1, alpha).hex());
    });
}

TEST(RGBA, NoTextStopsTheReading) {
    Tests::forAll([](const Text& text) {
        const auto colour = RGBA::fromHex(text);
        RC_ASSERT(!colour || RGBA::fromHex(colour->hex()) == colour);
    });
}

TEST(RGBADeathTest, HexRefusesWhatIsNoByte) {
    const char* rule = "a colour that is written as hex lies within 0 ... 1";
    EXPECT_DEATH(static_cast<void>(RGBA::unclamped(255.5 / 255, 0, 0, 1).hex()), rule);
    EXPECT_DEATH(static_cast<void>(RGBA::unclamped(0, -0.5 / 255, 0, 1).hex()), rule);
    EXPECT_DEATH(static_cast<void>(RGBA::unclamped(0, 0, 2, 1).hex()), rule);
    EXPECT_DEATH(static_cast<void>(RGBA::unclamped(0, 0, 0, -1).hex()), rule);
    EXPECT_DEATH(static_cast<void>(RGBA(notANumber, 0, 0, 1).hex()), "precondition broken");
    EXPECT_DEATH(static_cast<void>(RGBA::unclamped(infinity, 0, 0, 1).hex()),
                 "precondition broken");
}

// The primaries' shares stand in the definition; the greys are the published borders: #767676 is
// the lightest that WCAG lets stand on white as text, #949494 as large text, #595959 at level AAA.
TEST(RGBA, LuminanceIsTheRelativeOneOfWCAG) {
    EXPECT_EQ(black.luminance(), 0);
    EXPECT_DOUBLE_EQ(white.luminance(), 1);
    EXPECT_DOUBLE_EQ(RGBA(1, 0, 0, 1).luminance(), 0.2126);
    EXPECT_DOUBLE_EQ(RGBA(0, 1, 0, 1).luminance(), 0.7152);
    EXPECT_DOUBLE_EQ(RGBA(0, 0, 1, 1).luminance(), 0.0722);
    EXPECT_NEAR(RGBA(0.5, 0.5, 0.5, 1).luminance(), 0.21404, 0.000005);
    EXPECT_EQ(RGBA(1, 0.5, 0, 0).luminance(), orange.luminance()) << "alpha does not count";
    // The two branches, at and above their border.
    EXPECT_DOUBLE_EQ(RGBA(0, 0.03928, 0, 1).luminance(), 0.7152 * (0.03928 / 12.92));
    EXPECT_DOUBLE_EQ(RGBA(0, 0.03929, 0, 1).luminance(),
                     0.7152 * std::pow((0.03929 + 0.055) / 1.055, 2.4));
}

TEST(RGBA, ContrastIsThePublishedOne) {
    struct Case {
        const char *one, *other;
        double contrast;  // as published, to two digits
    };
    const Case cases[] = {
        {"#000000", "#FFFFFF", 21},    {"#FF0000", "#FFFFFF", 4.00}, {"#00FF00", "#FFFFFF", 1.37},
        {"#0000FF", "#FFFFFF", 8.59},  {"#FFFF00", "#FFFFFF", 1.07}, {"#767676", "#FFFFFF", 4.54},
        {"#777777", "#FFFFFF", 4.48},  {"#949494", "#FFFFFF", 3.03}, {"#595959", "#FFFFFF", 7.00},
        {"#808080", "#FFFFFF", 3.95},  {"#FF0000", "#000000", 5.25}, {"#0000FF", "#000000", 2.44},
        {"#FFFF00", "#000000", 19.56},
    };
    for (const auto& [one, other, contrast] : cases) {
        SCOPED_TRACE(std::string(one) + " and " + other);
        EXPECT_NEAR(RGBA::fromHex(one)->contrastWith(*RGBA::fromHex(other)), contrast, 0.005001);
    }
    EXPECT_DOUBLE_EQ(black.contrastWith(white), 21);
    EXPECT_EQ(orange.contrastWith(orange), 1);
}

TEST(RGBA, ContrastIsSymmetricAndWithin1And21) {
    Tests::forAll([] {
        const RGBA one = anyColour();
        const RGBA other = anyColour();
        const double contrast = one.contrastWith(other);
        RC_ASSERT(contrast == other.contrastWith(one));
        RC_ASSERT(1 <= contrast && contrast <= 21 + 1e-12);
        RC_ASSERT(one.contrastWith(one) == 1);
        // Between black and white: the two contrasts share out the whole range.
        RC_ASSERT(std::abs(one.contrastWith(black) * one.contrastWith(white) - 21) < 1e-9);
    });
}

TEST(RGBA, ContrastWithWhatIsNoNumberIsNone) {
    const RGBA unknown(notANumber, 0, 0, 1);
    EXPECT_TRUE(std::isnan(unknown.contrastWith(white)));
    EXPECT_TRUE(std::isnan(white.contrastWith(unknown)));
}

}  // namespace
}  // namespace PrompterCore
