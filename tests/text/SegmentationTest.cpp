#include <array>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

#include "PrompterCore/text/Segmentation.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"
#include "tests/text/CodePoints.h"

namespace PrompterCore {
namespace {

using Ends = std::vector<std::size_t>;

Ends clusterEnds(std::string_view bytes) {
    Ends ends;
    for (std::size_t at = 0; at < bytes.size(); ends.push_back(at))
        at = Segmentation::clusterEnd(bytes, at);
    return ends;
}

// The Unicode library's own character boundaries, from its rules and dictionary of properties.
class CharacterBoundaries {
public:
    Ends of(const std::string& bytes) {
        UErrorCode status = U_ZERO_ERROR;
        utext_openUTF8(text_.get(), bytes.data(), static_cast<std::int64_t>(bytes.size()), &status);
        breaker_->setText(text_.get(), status);
        Ends ends;
        for (auto at = breaker_->next(); at != icu::BreakIterator::DONE; at = breaker_->next())
            ends.push_back(static_cast<std::size_t>(at));
        return ends;
    }

private:
    UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<UText, decltype(&utext_close)> text_{utext_openUTF8(nullptr, "", 0, &status_),
                                                         &utext_close};
    std::unique_ptr<icu::BreakIterator> breaker_{
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status_)};
};

TEST(Segmentation, EveryLineOfUnicodesTestHolds) {
    std::ifstream stream(GRAPHEME_BREAK_TEST);
    int lines = 0;
    for (std::string line; std::getline(stream, line);) {
        std::istringstream fields(line.substr(0, line.find('#')));
        std::string bytes;
        Ends ends;
        for (std::string field; fields >> field;) {
            if (field == "\u00F7") {
                if (!bytes.empty()) ends.push_back(bytes.size());
            } else if (field != "\u00D7") {
                bytes += Tests::utf8Of(static_cast<char32_t>(std::stoul(field, nullptr, 16)));
            }
        }
        if (bytes.empty()) continue;
        ++lines;
        EXPECT_EQ(clusterEnds(bytes), ends) << line;
    }
    EXPECT_GE(lines, 602);
}

// What a code point joins with tells its break class. Each probe is two or three code points around
// it; whether they are one cluster is known from the class alone.
TEST(Segmentation, EveryCodePointHasTheBreakClassOfTheDatabase) {
    const std::string mark = "\u0301", joiner = "\u200D", copyright = "\u00A9", half = "\U0001F1E6";
    const std::string leading = "\u1100", vowel = "\u1161", trailing = "\u11A8";
    const auto together = [](const std::string& probe) {
        return Segmentation::clusterEnd(probe, 0) == probe.size();
    };
    int failures = 0;
    Tests::forEachCodePoint([&](char32_t c) {
        const auto point = static_cast<UChar32>(c);
        const auto gcb = u_getIntPropertyValue(point, UCHAR_GRAPHEME_CLUSTER_BREAK);
        const bool pictograph = u_hasBinaryProperty(point, UCHAR_EXTENDED_PICTOGRAPHIC) != 0;
        const auto is = [gcb](auto... classes) { return ((gcb == classes) || ...); };
        const std::string it = Tests::utf8Of(c);
        const bool control = is(U_GCB_CONTROL, U_GCB_CR, U_GCB_LF);
        const bool extends = is(U_GCB_EXTEND, U_GCB_ZWJ, U_GCB_SPACING_MARK);
        const bool prepends = is(U_GCB_PREPEND);
        const std::array<std::pair<bool, bool>, 12> probes = {{
            {together(it + mark), !control},
            {together('\r' + it), is(U_GCB_LF)},
            {together(it + '\n'), is(U_GCB_CR)},
            {together('a' + it), extends},
            {together(it + 'a'), prepends},
            {together(it + half), prepends || is(U_GCB_REGIONAL_INDICATOR)},
            {together(half + it), extends || is(U_GCB_REGIONAL_INDICATOR)},
            {together(copyright + it + copyright), is(U_GCB_ZWJ)},
            {together(copyright + it + joiner + copyright), is(U_GCB_EXTEND)},
            {together(it + joiner + copyright), pictograph},
            {together(leading + it), extends || is(U_GCB_L, U_GCB_V, U_GCB_LV, U_GCB_LVT)},
            {together(it + vowel) && !prepends, is(U_GCB_L, U_GCB_V, U_GCB_LV)},
        }};
        bool right =
            together(it + trailing) == (prepends || is(U_GCB_V, U_GCB_T, U_GCB_LV, U_GCB_LVT));
        right = right && together(it + leading) == (prepends || is(U_GCB_L));
        for (const auto& [found, expected] : probes)
            right = right && found == expected;
        if (!right && ++failures < 10)
            ADD_FAILURE() << std::hex << static_cast<unsigned>(c) << " of class " << std::dec
                          << gcb;
    });
    EXPECT_EQ(failures, 0);
}

TEST(Segmentation, AgreesWithTheUnicodeLibraryOnAllShortTexts) {
    const std::vector<std::string> alphabet = {
        "a",          "\r",     "\n",     "\u0301",     "\u200D", "\u00A9",
        "\U0001F1E6", "\u0600", "\u0903", "\u1100",     "\u1161", "\u11A8",
        "\uAC00",     "\uAC01", "\u0085", "\U0001F44D", "\u0915", "\u094D",
    };
    CharacterBoundaries reference;
    const std::size_t n = alphabet.size();
    for (std::size_t i = 0; i < n * n * n * n; ++i) {
        const std::string bytes = alphabet[i % n] + alphabet[i / n % n] + alphabet[i / n / n % n] +
                                  alphabet[i / n / n / n];
        ASSERT_EQ(clusterEnds(bytes), reference.of(bytes)) << Text(bytes);
    }
}

TEST(Segmentation, AgreesWithTheUnicodeLibraryOnEveryConjunct) {
    CharacterBoundaries reference;
    const std::string ka = "\u0915", virama = "\u094D", sha = "\u0937";
    Tests::forEachCodePoint([&](char32_t c) {
        const bool extends = u_getCombiningClass(static_cast<UChar32>(c)) != 0;
        if (!extends && (c < 0x0900 || c > 0x0DFF)) return;
        const std::string it = Tests::utf8Of(c);
        for (const std::string& bytes : {ka + virama + it, it + virama + ka, ka + it + sha,
                                         ka + virama + it + sha, ka + it + virama + sha})
            EXPECT_EQ(clusterEnds(bytes), reference.of(bytes)) << Text(bytes);
    });
}

TEST(Segmentation, AgreesWithTheUnicodeLibraryOnNastyTexts) {
    CharacterBoundaries reference;
    Tests::forAll(
        [&reference](const Text& text) {
            RC_ASSERT(clusterEnds(text.utf8()) == reference.of(text.utf8()));
        },
        3000);
}

TEST(Segmentation, ACutTextSplitsLikeTheWholeUpToTheCut) {
    Tests::forAll([](const Text& text) {
        const Ends ends = clusterEnds(text.utf8());
        if (ends.empty()) return;
        const auto cut = *rc::gen::inRange<std::size_t>(0, ends.size());
        const Ends front(ends.begin(), ends.begin() + static_cast<std::ptrdiff_t>(cut) + 1);
        RC_ASSERT(clusterEnds(text.utf8().substr(0, ends[cut])) == front);
    });
}

}  // namespace
}  // namespace PrompterCore
