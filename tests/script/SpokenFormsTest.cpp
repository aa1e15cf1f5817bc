#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "PrompterCore/script/SpokenForms.h"
#include "tests/reference/PlainNumbers.h"
#include "tests/script/Built.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {

namespace {

using Plain::split;
using Tests::spoken;
using Tests::Strings;

struct Case {
    std::string word;
    const char* forms;
};

void expectAll(const std::vector<Case>& cases) {
    for (const auto& [word, forms] : cases)
        EXPECT_EQ(spoken(word), split(forms)) << Text(word);
}

}  // namespace

TEST(SpokenForms, ExamplesAreAsTheHeaderShows) {
    expectAll({{"Don't", "do not"},
               {"3.14", "three point one four"},
               {"2024", "twenty twenty four"},
               {"Café,", "cafe"},
               {"...", ""}});
}

TEST(SpokenForms, APointBetweenTwoNumbersIsRead) {
    expectAll({{"3.14", "three point one four"},
               {"0.5", "zero point five"},
               {"1,250.5", "one thousand two hundred fifty point five"},
               {"1,2,5.0,0", "one hundred twenty five point zero zero"},
               {"1.05", "one point zero five"},
               {"2000.1", "two thousand point one"},
               {"0042.5", "forty two point five"},
               {"$3.50!", "three point five zero"},
               {"(3.14).", "three point one four"},
               {"-3.5", "three point five"},
               {"50.5%", "fifty point five"}});
}

TEST(SpokenForms, EmptyPiecesAroundPointsDoNotCount) {
    expectAll({{"3..14", "three point one four"},
               {".3.14.", "three point one four"},
               {"...3...14...", "three point one four"},
               {"3,.,14", "three point one four"},
               {"3.", "three"},
               {".5", "five"},
               {"3.,", "three"},
               {"stop.", "stop"},
               {"...", ""}});
}

TEST(SpokenForms, OtherPointsAreDropped) {
    expectAll({{"1.2.3", "one hundred twenty three"},
               {"v1.2", "v12"},
               {"1.2v", "12v"},
               {"1.a", "1a"},
               {"a.b", "ab"},
               {"e.g.", "eg"},
               {"3.14-2", "three hundred fourteen two"},
               {"192.168.0.1", "nineteen million two hundred sixteen thousand eight hundred one"}});
}

TEST(SpokenForms, DecimalsTakeTheDigitsOfAnyScriptAndNoOtherNumerals) {
    expectAll({{"3.\uFF11\uFF14", "three point one four"},
               {"3.\u0661\u0664", "three point one four"},
               {"3.1\u0664", "three point one four"},
               {"3.1\u0969", "three point one three"},
               {"3.\u00B2", "three point"},
               {"3.1\u00B25", "three point one five"},
               {"3.\u00BD", "three point"},
               {"3.\u2460", "three point"},
               {"3.\u4E09", "three point"},
               {"3.1\u0301", "three point one"},
               {"3.1\uFE0F\u20E3", "three point one"}});
}

TEST(SpokenForms, TheWholePartHasAsciiDigitsOnly) {
    // No decimal then: the point is dropped like any other sign.
    expectAll({{"\uFF13.14", "three hundred fourteen"},
               {"3\uFF10.5", "three hundred five"},
               {"\u0663.14", "\u066314"},
               {"\u00B2.5", "\u00B25"},
               {"3\u0301.5", "thirty five"}});
}

TEST(SpokenForms, AWholePartThatDoesNotFit64BitsIsNoDecimal) {
    expectAll({{"9223372036854775807.5",
                "nine billion two hundred twenty three million three hundred seventy two thousand "
                "thirty six billion eight hundred fifty four million seven hundred seventy five "
                "thousand eight hundred seven point five"},
               {"9223372036854775808.5", "92233720368547758085"}});
}

TEST(SpokenForms, TheEndsAreTrimmedByCodePointBeforeADecimalIsRead) {
    expectAll({
        {"\u201C3.14\u201D", "three point one four"},
        {"\u20AC3.14\u2026", "three point one four"},
        {"\U0001F4B03.14\U0001F4B0", "three point one four"},
        {"\u03013.14", "three hundred fourteen"},  // a mark is alphanumeric, so it stays in front
        {"3.14\u0301", "three point one four"},
        {".\u03013.14", "three hundred fourteen"},
        {"3.14.\u0301", "three hundred fourteen"},  // a point with a mark is no point
    });
}

TEST(SpokenForms, NumbersAreReadOut) {
    expectAll({{"0", "zero"},
               {"5", "five"},
               {"42", "forty two"},
               {"007", "seven"},
               {"100", "one hundred"},
               {"12345", "twelve thousand three hundred forty five"},
               {"00042", "forty two"},
               {"9223372036854775807",
                "nine billion two hundred twenty three million three hundred seventy two thousand "
                "thirty six billion eight hundred fifty four million seven hundred seventy five "
                "thousand eight hundred seven"}});
}

TEST(SpokenForms, FourDigitsAreAYear) {
    expectAll({{"2024", "twenty twenty four"},
               {"1,500", "fifteen hundred"},
               {"2000", "twenty hundred"},
               {"1000", "one thousand"},
               {"1905", "nineteen oh five"},
               {"0042", "forty two"},
               {"0000", "zero"},
               {"$1,500.", "fifteen hundred"},
               {"19:30", "nineteen thirty"},
               {"\uFF12\uFF10\uFF12\uFF14", "twenty twenty four"}});
}

TEST(SpokenForms, WhatIsNoWholeNumberStaysAsWritten) {
    expectAll({{"9223372036854775808", "9223372036854775808"},
               {"99999999999999999999999", "99999999999999999999999"},
               {"1st", "1st"},
               {"\u0664\u0662", "\u0664\u0662"},
               {"x\u00B2", "x\u00B2"},
               {"\u00BD", "\u00BD"},
               {"\u2167", "\u2177"}});
}

TEST(SpokenForms, HyphensAtTheEndsAreDroppedAndInsideTheyPart) {
    expectAll({{"-5", "five"},
               {"re-", "re"},
               {"-", ""},
               {"---", ""},
               {"well-known", "well known"},
               {"3-4", "three four"},
               {"--a--b--", "a b"},
               {"a-'-b", "a b"},
               {"a-'", "a"},
               {"mother-in-law's", "mother in laws"},
               {"twenty-1905", "twenty nineteen oh five"},
               {"don't-won't", "do not will not"},
               {"1-2.5", "one twenty five"},
               {"2.5-1", "twenty five one"}});
}

TEST(SpokenForms, OnlyTheHyphenMinusParts) {
    expectAll({{"well\u2010known", "wellknown"},
               {"well\u2011known", "wellknown"},  // non-breaking
               {"well\u2013known", "wellknown"},
               {"well\u2014known", "wellknown"},
               {"well\uFE63known", "wellknown"},   // small
               {"well\uFF0Dknown", "well known"},  // full-width: an ordinary one in another width
               {"well\u00ADknown", "wellknown"},   // soft
               {"a-\u0301b", "a b"},               // the accent is folded away first
               {"a-\u200Db", "ab"}});              // joined to another sign, it is dropped
}

TEST(SpokenForms, AccentsAndWidthsAreFolded) {
    expectAll({{"Café", "cafe"},
               {"Cafe\u0301", "cafe"},
               {"ÉCOLE", "ecole"},
               {"Ångström", "angstrom"},
               {"naïve", "naive"},
               {"Straße", "straße"},
               {"Łódź", "łodz"},
               {"İstanbul", "istanbul"},
               {"Việt", "viet"},
               {"\uFF21\uFF22\uFF23", "abc"},
               {"\uFF76\uFF9E", "\u30AC"},
               {"\uFB01", "\uFB01"},
               {"\u212B", "a"}});
}

TEST(SpokenForms, LettersOfEveryScriptAreKept) {
    expectAll({{"ΣΑΣ", "σας"},
               {"Ωμέγα", "ωμεγα"},
               {"Йод", "иод"},
               {"ЁЛКА", "елка"},
               {"שָׁלוֹם", "שלום"},
               {"سَلَام،", "سلام"},
               {"\u202Bשלום\u202C", "שלום"},
               {"안녕하세요.", "안녕하세요"},
               {"\u1112\u1161\u11AB", "\uD55C"},
               {"がぎ", "がぎ"},
               {"か\u3099", "が"},
               {"「東京」", "東京"},
               {"हिन्दी।", "हिन्दी"},
               {"สวัสดี", "สวัสดี"},
               {"น้ำ", "น้ำ"},
               {"二〇〇九年", "二〇〇九年"}});
}

TEST(SpokenForms, SignsAndPicturesAreDropped) {
    expectAll({{"$5", "five"},
               {"50%", "fifty"},
               {"\u00A3100", "one hundred"},
               {"R&D", "rd"},
               {"a/b", "ab"},
               {"\u201CHello,\u201D", "hello"},
               {"don\u2019t", "do not"},
               {"\U0001F600", ""},
               {"hi\U0001F600there", "hithere"},
               {"\U0001F468\u200D\U0001F469\u200D\U0001F467", ""},
               {"\U0001F44D\U0001F3FD", ""},
               {"\U0001F1E9\U0001F1EA", ""},
               {"ok\U0001F1E9\U0001F1EA", "ok"},
               {"1\uFE0F\u20E3", "one"},
               {"#\uFE0F\u20E3", ""},
               {"\u2764\uFE0F", ""},
               {"\u2014", ""},
               {"\uFFFD", ""}});
}

TEST(SpokenForms, AJoinerStaysWithTheLetterBeforeIt) {
    EXPECT_EQ(spoken("a\u200Db"), Strings{"a\u200Db"});
    EXPECT_EQ(spoken("!\u200Db"), Strings{"b"});
    EXPECT_EQ(spoken("a\U0001F3FD"), Strings{"a\U0001F3FD"});
}

TEST(SpokenForms, NothingIsSpokenOfNothing) {
    EXPECT_EQ(spoken(""), Strings{});
    EXPECT_EQ(spoken(std::string(3, '\0')), Strings{});
    EXPECT_EQ(spoken("\u0301"), Strings{});
}

TEST(SpokenForms, ANulIsDroppedLikePunctuation) {
    EXPECT_EQ(spoken(std::string("a\0b", 3)), Strings{"ab"});
    EXPECT_EQ(spoken(std::string("1\0002", 3)), split("twelve"));
    EXPECT_EQ(spoken(std::string("3\0.5", 4)), split("thirty five"));
}

TEST(SpokenForms, WhiteSpaceInsideOneWordIsDropped) {
    EXPECT_EQ(spoken(" New York\n"), Strings{"newyork"});
    EXPECT_EQ(spoken("do\u00A0n't"), split("do not"));
}

TEST(SpokenForms, AHyphenIsACharacterAndNotACodePoint) {
    // Without the NUL between them the mark or the letter joins the hyphen to one character.
    EXPECT_EQ(spoken(std::string("a-\0\u0903", 6)), Strings{"a-\u0903"});
    EXPECT_EQ(spoken("a\u0D4E-b"), Strings{"a\u0D4E-b"});
}

TEST(SpokenForms, LongWordsAreSpokenWhole) {
    const std::string letters(10'000, 'X');
    EXPECT_EQ(spoken(letters + "."), Strings{std::string(10'000, 'x')});
    std::string accents, plain;
    for (int i = 0; i < 1'000; ++i) {
        accents += "É";
        plain += "e";
    }
    EXPECT_EQ(spoken(accents), Strings{plain});
    std::string hyphens;
    for (int i = 0; i < 10'000; ++i)
        hyphens += "a-";
    EXPECT_EQ(spoken(hyphens).size(), 10'000u);
}

TEST(SpokenForms, AreAppendedBehindWhatIsThere) {
    std::vector<Text> forms = {"before"};
    appendSpokenForms("Don't", forms);
    appendSpokenForms("...", forms);
    EXPECT_EQ(Tests::bytes(forms), split("before do not"));
}

TEST(SpokenForms, OrdinaryWordsNeedNoAllocation) {
    std::string last;
    last.reserve(100);
    const auto keep = [&last](std::string_view form) { last = form; };
    struct Ordinary {
        std::string word, last;
    };
    const Ordinary words[] = {
        {"stop.", "stop"},
        {"Don't", "not"},
        {"2024", "four"},
        {"1,000,000", "million"},
        {"re-", "re"},
        {"\u201CCaf\u00E9,\u201D", "cafe"},
        {"\u041C\u0438\u0440\U0001F44D\U0001F3FD", "\u043C\u0438\u0440"},
        {"\u0939\u093F\u0928\u094D\u0926\u0940\u0964", "\u0939\u093F\u0928\u094D\u0926\u0940"},
        {std::string(64, 'X'), std::string(64, 'x')},
    };
    for (const auto& [word, spokenLast] : words) {
        SCOPED_TRACE(word);
        const auto take = [&word = word, &keep] { takeSpokenForms(word, WordTaker(keep)); };
        EXPECT_EQ(Tests::allocationsDuring(take), 0);
        EXPECT_EQ(last, spokenLast);
    }
}

TEST(SpokenForms, EquivalentWordsAreSpokenAlike) {
    Tests::forAll(
        [](const Text& word) { RC_ASSERT(spokenForms(word) == spokenForms(word.composed())); },
        1000);
}

TEST(SpokenForms, HoldNeitherWhiteSpaceNorHyphensAtTheirEnds) {
    Tests::forAll([](const Text& word) {
        for (const Text& form : spokenForms(word)) {
            RC_ASSERT(!form.isEmpty());
            const Characters characters(form);
            RC_ASSERT(!characters[0].is('-'));
            RC_ASSERT(!characters[characters.count() - 1].is('-'));
            for (const Character character : characters)
                RC_ASSERT(!character.isWhiteSpace());
        }
    });
}

}  // namespace PrompterCore
