#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/records/Record.h"
#include "tests/records/Stored.h"
#include "tests/support/Extremes.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::Mark;
using Tests::Preset;
using Tests::Style;
using Tests::Turn;
using Kind = RecordFailure::Kind;
using Integers = std::vector<std::int64_t>;

static_assert(std::copyable<Record> && std::equality_comparable<Record>);
static_assert(std::copyable<RecordValue> && std::equality_comparable<RecordValue>);
static_assert(!std::constructible_from<RecordValue, const char*>);

using Tests::infinity;
constexpr auto largest = std::numeric_limits<std::int64_t>::max();

// What the failure of `act` says, with its kind in front.
template <class Act>
std::string failureOf(Act&& act) {
    try {
        act();
    } catch (const RecordFailure& failure) {
        const char* const kinds[] = {"malformed", "missing", "mismatch", "not finite"};
        return kinds[static_cast<int>(failure.kind())] + std::string("; ") + failure.what();
    }
    return "none";
}

TEST(Record, IsReadByItsKeysInAnyOrder) {
    const Mark mark{.title = "Intro", .seconds = 1.5};
    EXPECT_EQ(fromJson<Mark>(R"({"title":"Intro","seconds":1.5})"), mark);
    EXPECT_EQ(fromJson<Mark>(" { \"seconds\" : 1.5 ,\r\n\t\"title\" : \"Intro\" } "), mark);
    EXPECT_EQ(fromJson<Mark>(R"({"x":{"y":[null,{}]},"title":"Intro","seconds":15e-1,"":0})"), mark)
        << "unknown keys do not matter";
    EXPECT_EQ(fromJson<Mark>(R"({"t\u0069tle":"Intr\u006F","seconds":1.5})"), mark);
}

TEST(Record, IsWrittenInItsOrder) {
    EXPECT_EQ(toJson(Mark{.title = "Intro", .seconds = 1.5}), R"({"title":"Intro","seconds":1.5})");
    EXPECT_EQ(toJson(Record()), "{}");
    const Record record = Record().with("z", std::int64_t{1}).with("a", true).with("m", Text("x"));
    EXPECT_EQ(toJson(record), R"({"z":1,"a":true,"m":"x"})");
    EXPECT_EQ(record.keys(), (std::vector<std::string_view>{"z", "a", "m"}));
    EXPECT_NE(record, Record().with("a", true).with("z", std::int64_t{1}).with("m", Text("x")));
}

TEST(Record, LeavesAbsentValuesOut) {
    const Preset bare{.name = "a", .style = Style::plain, .turn = Turn::none, .marks = {}};
    EXPECT_EQ(toJson(bare), R"({"name":"a","style":"plain","turn":0,"marks":[]})");
    EXPECT_EQ(fromJson<Preset>(toJson(bare)), bare);
    EXPECT_EQ(fromJson<Preset>(
                  R"({"name":"a","style":"plain","turn":0,"marks":[],"last":null,"loud":null})"),
              bare)
        << "null under an optional key is as good as missing";
}

TEST(Record, HoldsRecordsListsAndEnumerations) {
    const Preset preset{.name = "b",
                        .style = Style::fancy,
                        .turn = Turn::quarter,
                        .marks = {{"one", 1}, {"two", 2.25}},
                        .last = Mark{"three", 3},
                        .loud = false};
    const char* const json =
        R"({"name":"b","style":"fancy","turn":90,)"
        R"("marks":[{"title":"one","seconds":1},{"title":"two","seconds":2.25}],)"
        R"("last":{"title":"three","seconds":3},"loud":false})";
    EXPECT_EQ(toJson(preset), json);
    EXPECT_EQ(fromJson<Preset>(json), preset);
    EXPECT_EQ(fromJson<std::vector<Preset>>("[" + std::string(json) + "]"),
              std::vector<Preset>{preset});
    EXPECT_EQ(fromJson<Turn>("90.0"), Turn::quarter) << "alone too";
    EXPECT_EQ(fromJson<std::vector<Integers>>("[[1],[],[2,3]]"),
              (std::vector<Integers>{{1}, {}, {2, 3}}));
}

TEST(Record, SaysWhichKeyAndWhy) {
    struct Case {
        const char* json;
        const char* what;
    };
    const Case cases[] = {
        {"{}", R"(missing; "name": missing)"},
        {R"({"name":1})", R"(mismatch; "name": a number where a text is required)"},
        {R"({"name":null})", R"(mismatch; "name": null where a text is required)"},
        {R"({"name":"a","style":"Fancy"})",
         R"(mismatch; "style": "Fancy" where one of a few known values is required)"},
        {R"({"name":"a","style":1})", R"(mismatch; "style": a number where a text is required)"},
        {R"({"name":"a","style":"plain","turn":45})",
         R"(mismatch; "turn": 45 where one of a few known values is required)"},
        {R"({"name":"a","style":"plain","turn":90.5})",
         R"(mismatch; "turn": 90.5 where a whole number is required)"},
        {R"({"name":"a","style":"plain","turn":0,"marks":{}})",
         R"(mismatch; "marks": a record where a list is required)"},
        {R"({"name":"a","style":"plain","turn":0,"marks":[{"title":"x","seconds":1},{}]})",
         R"(missing; "marks[1].title": missing)"},
        {R"({"name":"a","style":"plain","turn":0,"marks":[7]})",
         R"(mismatch; "marks[0]": a number where a record is required)"},
        {R"({"name":"a","style":"plain","turn":0,"marks":[],"last":{"title":"x","seconds":"1"}})",
         R"(mismatch; "last.seconds": a text where a number is required)"},
        {R"({"name":"a","style":"plain","turn":0,"marks":[],"loud":0})",
         R"(mismatch; "loud": a number where true or false is required)"},
        {"[]", "mismatch; the record: a list where a record is required"},
        {"null", "mismatch; the record: null where a record is required"},
    };
    for (const auto& [json, what] : cases) {
        SCOPED_TRACE(json);
        EXPECT_EQ(failureOf([json = json] { std::ignore = fromJson<Preset>(json); }), what);
    }
    EXPECT_EQ(failureOf([] { std::ignore = fromJson<std::vector<Integers>>("[[1],[2,true]]"); }),
              R"(mismatch; "[1][1]": true or false where a whole number is required)");
}

TEST(Record, AReaderMaySayWhatIsWrong) {
    struct Picky {
        static Picky fromRecord(const Record&) { throw RecordFailure(Kind::mismatch, "Not so."); }
        Record toRecord() const { return {}; }
    };
    EXPECT_EQ(failureOf([] { std::ignore = fromJson<Record>(R"({"a":{}})").required<Picky>("a"); }),
              R"(mismatch; "a": Not so.)");
}

TEST(Record, NumbersAreNumbersHoweverWritten) {
    for (const char* json : {"90", "90.0", "9e1", "9.0E+1", "900e-1"}) {
        EXPECT_EQ(fromJson<std::int64_t>(json), 90) << json;
        EXPECT_EQ(fromJson<double>(json), 90.0) << json;
    }
    EXPECT_EQ(fromJson<double>("1.5"), 1.5);
    EXPECT_EQ(fromJson<double>("1e-400"), 0.0) << "below the smallest double";
    EXPECT_EQ(fromJson<double>("-0"), 0.0);
    EXPECT_EQ(fromJson<std::int64_t>("-0.0"), 0);
    EXPECT_EQ(fromJson<std::int64_t>("9223372036854775807"), largest);
    EXPECT_EQ(fromJson<std::int64_t>("-9223372036854775808"), -largest - 1);
    EXPECT_EQ(fromJson<std::int64_t>("-9223372036854775808.0"), -largest - 1);
    EXPECT_EQ(fromJson<double>("9223372036854775807"), 0x1p63) << "rounded";
    EXPECT_EQ(fromJson<double>("18446744073709551615"), 0x1p64);
    EXPECT_EQ(fromJson<double>("123456789012345678901234567890"), 123456789012345678901234567890.0);
}

TEST(Record, NumbersThatDoNotFitAreRefused) {
    const auto integer = [](const char* json) {
        return failureOf([json] { std::ignore = fromJson<std::int64_t>(json); });
    };
    EXPECT_EQ(integer("1.5"), "mismatch; the record: 1.5 where a whole number is required");
    EXPECT_EQ(integer("9223372036854775808"),
              "mismatch; the record: 9.223372036854776e+18 does not fit 64 bits");
    EXPECT_EQ(integer("-9223372036854775809"),
              "mismatch; the record: -9.223372036854778e+18 does not fit 64 bits")
        << "though the nearest double does";
    EXPECT_EQ(integer("-9223372036854777856"),
              "mismatch; the record: -9.223372036854778e+18 does not fit 64 bits");
    EXPECT_EQ(integer("1e300"), "mismatch; the record: 1e+300 does not fit 64 bits");
    EXPECT_EQ(integer("true"),
              "mismatch; the record: true or false where a whole number is required");
    EXPECT_EQ(integer("\"1\""), "mismatch; the record: a text where a whole number is required");
    EXPECT_EQ(integer("1e400"), "malformed; the record: a number beyond all doubles before byte 5");
    EXPECT_EQ(failureOf([] { std::ignore = fromJson<Mark>(R"({"other":-1e99999})"); }).substr(0, 9),
              "malformed")
        << "under any key";
}

TEST(Record, WholeNumbersAreWrittenWithoutAFraction) {
    struct Case {
        double number;
        const char* json;
    };
    const Case cases[] = {
        {1, "1"},
        {-1, "-1"},
        {0, "0"},
        {-0.0, "0"},
        {0.1, "0.1"},
        {1e6, "1000000"},
        {-2.5, "-2.5"},
        {65.9, "65.9"},
        {0x1p53, "9007199254740992"},
        {0x1p60, "1.152921504606847e+18"},
        {1e300, "1e+300"},
        {5e-324, "5e-324"},
        {1.0 / 3, "0.3333333333333333"},
    };
    for (const auto& [number, json] : cases) {
        SCOPED_TRACE(json);
        EXPECT_EQ(toJson(number), json);
        EXPECT_EQ(fromJson<double>(json), number);
    }
    EXPECT_EQ(toJson(largest), "9223372036854775807");
}

TEST(Record, NumbersThatAreNotFiniteCannotBeWritten) {
    for (const double number : {infinity, -infinity, std::nan("")}) {
        EXPECT_EQ(failureOf([&] {
                      std::ignore = toJson(Mark{"a", number});
                  }),
                  R"(not finite; "seconds": a number that is not finite)");
        EXPECT_EQ(failureOf([&] {
                      std::ignore = toJson(std::vector<Mark>{{"a", 1}, {"b", number}});
                  }),
                  R"(not finite; "[1].seconds": a number that is not finite)");
        EXPECT_EQ(failureOf([&] {
                      std::ignore = toJson(Preset{.name = "a",
                                                  .style = Style::plain,
                                                  .turn = Turn::none,
                                                  .marks = {},
                                                  .last = Mark{"a", number}});
                  }),
                  R"(not finite; "last.seconds": a number that is not finite)");
    }
}

TEST(Record, TextsKeepTheirBytes) {
    for (const Text& text : {Text(""), Text("\"\\/\b\f\n\r\t\x01\x7F"), Text("e\u0301"),
                             Text("\u2028\uFFFF\U0001F600"), Text(std::string("a\0b", 3))}) {
        EXPECT_EQ(fromJson<Text>(toJson(text)).utf8(), text.utf8()) << text;
    }
    EXPECT_EQ(fromJson<Text>(R"("\ud83d\ude00\u0000")").utf8(), std::string("\U0001F600\0", 5));
    EXPECT_EQ(toJson(Text("a\nb\u00E9")), "\"a\\nb\u00E9\"");
}

TEST(Record, WhatIsNoJsonIsRefused) {
    using namespace std::string_literals;
    struct Case {
        const char* what;
        std::string json;
    };
    const Case cases[] = {
        {"nothing", ""},
        {"blanks", " \n"},
        {"something behind it", "{} x"},
        {"two of them", "{}{}"},
        {"broken off", R"({"title": "a)"},
        {"a comma too many", R"({"title": "a",})"},
        {"a comment", "{/**/}"},
        {"no quotes", "{title: 1}"},
        {"single quotes", "{'title': 1}"},
        {"a plus", "[+1]"},
        {"a leading zero", "[01]"},
        {"no number", "[NaN]"},
        {"without end", "[Infinity]"},
        {"a control character in a text", "\"a\nb\""},
        {"a zero byte behind it", "{}\0"s},
        {"an ill-formed text", "\"\xFF\""},
        {"an encoded surrogate", "\"\xED\xA0\x80\""},
        {"half a pair", R"("\ud83d")"},
        {"the other half", R"("\ude00")"},
        {"a mark of another encoding", "\xFF\xFE{}"},
    };
    for (const auto& [what, json] : cases) {
        SCOPED_TRACE(what);
        const std::string failure =
            failureOf([&bytes = json] { std::ignore = RecordValue::fromJson(bytes); });
        EXPECT_TRUE(failure.starts_with("malformed; the record: no well-formed JSON at byte "))
            << failure;
    }
    EXPECT_EQ(failureOf([] { std::ignore = fromJson<Mark>("{} x"); }),
              "malformed; the record: no well-formed JSON at byte 4");
    EXPECT_EQ(fromJson<Record>("\xEF\xBB\xBF{}"), Record()) << "a byte order mark is skipped";
}

TEST(Record, AKeyThatStandsTwiceIsRefused) {
    EXPECT_EQ(
        failureOf([] { std::ignore = fromJson<Mark>(R"({"title":"a","seconds":1,"title":"a"})"); }),
        R"(malformed; the record: the key "title" stands twice in a record)");
    EXPECT_EQ(failureOf([] { std::ignore = fromJson<Record>(R"([{"x":{"a":1,"\u0061":2}}])"); }),
              R"(malformed; the record: the key "a" stands twice in a record)");
    EXPECT_EQ(fromJson<Record>(R"({"a":{"a":1}})").keys().size(), 1U) << "one in each";
    EXPECT_EQ(fromJson<Record>("{\"\u00E9\":1,\"e\u0301\":2}").keys().size(), 2U)
        << "keys are bytes";
}

TEST(Record, NestingEndsSomewhere) {
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    EXPECT_EQ(RecordValue::fromJson(nested(RecordValue::deepest)).json(),
              nested(RecordValue::deepest));
    const std::string refused = "malformed; the record: nested deeper than 100 lists and records";
    EXPECT_EQ(failureOf([&] { std::ignore = RecordValue::fromJson(nested(101)); }), refused);
    EXPECT_EQ(failureOf([&] { std::ignore = RecordValue::fromJson(std::string(10'000'000, '[')); }),
              refused);
    std::string records;
    for (int i = 0; i < 1'000'000; ++i)
        records += "{\"a\":";
    EXPECT_EQ(failureOf([&] { std::ignore = RecordValue::fromJson(records); }), refused);
}

TEST(RecordDeathTest, AKeyIsWrittenOnce) {
    EXPECT_DEATH(std::ignore = Record().with("a", true).with("b", true).with("a", false),
                 "a record's key is written once");
}

TEST(Record, WhatIsWrittenIsReadBack) {
    Tests::forAll([](const std::vector<std::pair<Text, double>>& pairs, const Text& name,
                     std::int64_t integer, bool truth) {
        Preset preset{.name = name,
                      .style = *rc::gen::element(Style::plain, Style::fancy),
                      .turn = *rc::gen::element(Turn::none, Turn::quarter),
                      .marks = {}};
        for (const auto& [title, seconds] : pairs)
            preset.marks.push_back({title, std::isfinite(seconds) ? seconds : 0});
        if (!preset.marks.empty()) preset.last = preset.marks.back();
        if (truth) preset.loud = integer > 0;
        const std::string json = toJson(preset);
        const auto again = fromJson<Preset>(json);
        RC_ASSERT(again == preset);
        RC_ASSERT(again.name.utf8() == name.utf8());
        RC_ASSERT(toJson(again) == json);
        RC_ASSERT(fromJson<std::int64_t>(toJson(integer)) == integer);
    });
}

}  // namespace
}  // namespace PrompterCore
