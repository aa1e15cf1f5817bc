#include <concepts>
#include <string>
#include <vector>

#include "PrompterCore/library/WordDiff.h"
#include "PrompterCore/text/Characters.h"
#include "tests/support/Generators.h"
#include "tests/support/Printing.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using enum DiffOperation;
using Segments = std::vector<DiffSegment>;

static_assert(std::copyable<DiffSegment> && std::equality_comparable<DiffSegment>);

TEST(WordDiff, SaysWhatBecameOfTheWords) {
    struct Case {
        const char* what;
        Text before, after;
        Segments segments;
    };
    const Case cases[] = {
        {"both empty", "", "", {}},
        {"only white space", " \t\n", "\u3000", {}},
        {"all new", "", "a b", {{"a b", insert}}},
        {"all gone", "a b", " ", {{"a b", delete_}}},
        {"one word replaced",
         "the quick fox",
         "the slow fox",
         {{"the", equal}, {"quick", delete_}, {"slow", insert}, {"fox", equal}}},
        {"spacing alone", "a  b\tc", "a b c", {{"a b c", equal}}},
        {"all replaced",
         "one two three",
         "four five",
         {{"one two three", delete_}, {"four five", insert}}},
        {"case counts", "Word", "word", {{"Word", delete_}, {"word", insert}}},
        {"punctuation counts", "end.", "end", {{"end.", delete_}, {"end", insert}}},
        {"swapped", "a b", "b a", {{"a", delete_}, {"b", equal}, {"a", insert}}},
        {"accents composed and not", "caf\u00E9", "cafe\u0301", {{"caf\u00E9", equal}}},
        {"no-break space, CR LF, line separator",
         "a\u00A0b\r\nc\u2028d",
         "a b c d",
         {{"a b c d", equal}}},
        {"a space with a mark still separates", "a \u0301b", "a b", {{"a b", equal}}},
        {"a family is one word",
         "\U0001F468\u200D\U0001F469 x",
         "\U0001F468\u200D\U0001F469",
         {{"\U0001F468\u200D\U0001F469", equal}, {"x", delete_}}},
    };
    for (const auto& [what, before, after, segments] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(WordDiff::between(before, after), segments);
    }
}

// The words of a text, each followed by a space.
std::string plainWords(const Text& text) {
    std::string words;
    bool inWord = false;
    for (const Character character : Characters(text)) {
        if (!character.isWhiteSpace()) {
            words += character.utf8();
        } else if (inWord) {
            words += ' ';
        }
        inWord = !character.isWhiteSpace();
    }
    return inWord ? words + ' ' : words;
}

std::string readBack(const Segments& segments, DiffOperation other) {
    std::string words;
    for (const DiffSegment& segment : segments)
        if (segment.operation != other) words += segment.text.utf8() + ' ';
    return words;
}

TEST(WordDiff, BothSidesReadBackToTheirWords) {
    Tests::forAll([](const Text& before, const Text& after) {
        const Segments segments = WordDiff::between(before, after);
        RC_ASSERT(readBack(segments, insert) == plainWords(before));
        RC_ASSERT(Text(readBack(segments, delete_)) == Text(plainWords(after)));
    });
}

TEST(WordDiff, NeighboursNeverHaveTheSameOperation) {
    Tests::forAll([](const Text& before, const Text& after) {
        const Segments segments = WordDiff::between(before, after);
        for (std::size_t i = 1; i < segments.size(); ++i)
            RC_ASSERT(segments[i - 1].operation != segments[i].operation);
    });
}

}  // namespace
}  // namespace PrompterCore
