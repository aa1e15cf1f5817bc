#include <chrono>
#include <optional>
#include <string>
#include <unordered_set>

#include "PrompterCore/takes/RecordingName.h"
#include "PrompterCore/text/Characters.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using namespace std::chrono_literals;
using RecordingName::Kind;
using Moment = std::chrono::system_clock::time_point;

// 5 March 2025, 14:07:09 UTC.
constexpr Moment moment = Moment(1741183629s);

Text takeOf(const std::optional<Text>& script) {
    return RecordingName::file(script, moment, TimeZone::utc(), Kind::video);
}

TEST(RecordingName, SafeKeepsWhatAFileMayBeCalled) {
    struct Case {
        const char* what;
        Text name, safe;
    };
    const Case cases[] = {
        {"nothing to do", "Launch", "Launch"},
        {"a slash and a colon", "a/b:c", "a b c"},
        {"all ten", "a/b\\c:d?e%f*g|h\"i<j>k", "a b c d e f g h i j k"},
        {"nothing else is forbidden", "a.b-c_d'e&f#g~h", "a.b-c_d'e&f#g~h"},
        {"only forbidden ones and spaces", " /\\: ?%*|\"<> \t", ""},
        {"nothing", "", ""},
        {"runs of white space", "  a \t\r\n b\u00A0\u3000c  ", "a b c"},
        {"control characters",
         std::string("a\0b\x1F"
                     "c\x7F"
                     "d\u0085e\u009Ff",
                     13),
         "a b c d e f"},
        {"a slash with a mark on it", "a/\u0301b", "a b"},
        {"signs that hold one, composed", "a\u226Eb\u226F\u0301c", "a b c"},
        {"and decomposed", "a<\u0338b>\u0338\u0301c", "a b c"},
        {"what looks like one but is none", "a\u2215b\uFF0Fc", "a\u2215b\uFF0Fc"},
        {"invisible signs that join", "\U0001F468\u200D\U0001F469", "\U0001F468\u200D\U0001F469"},
        {"from right to left, with its marks", "\u200F\u05E9\u05DC\u05D5\u05DD/\u202Bx\u202C",
         "\u200F\u05E9\u05DC\u05D5\u05DD \u202Bx\u202C"},
        {"decomposed stays decomposed", "cafe\u0301", "cafe\u0301"},
        {"ill-formed bytes are mended already", std::string("a\xFF"), "a\uFFFD"},
    };
    for (const auto& [what, name, safe] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(RecordingName::safe(name).utf8(), safe.utf8());
    }
}

TEST(RecordingName, SafeKeepsSixtyCharacters) {
    const std::string sixty(60, 'x');
    EXPECT_EQ(RecordingName::safe(std::string(70, 'x')), sixty);
    EXPECT_EQ(RecordingName::safe(sixty), sixty);
    EXPECT_EQ(RecordingName::safe(std::string(59, 'x') + " yyyy"), std::string(59, 'x'))
        << "the cut leaves a space";
    EXPECT_EQ(RecordingName::safe(sixty + " yyyy"), sixty) << "the space goes with the cut";
    EXPECT_EQ(RecordingName::safe(std::string(58, 'x') + " yyyy"), std::string(58, 'x') + " y");
    EXPECT_EQ(RecordingName::safe(std::string(30, ' ') + sixty), sixty) << "blanks go first";
    std::string families, marked;
    for (int i = 0; i < 70; ++i) {
        families += "\U0001F468\u200D\U0001F469\u200D\U0001F467";
        marked += "e\u0301";
    }
    EXPECT_EQ(RecordingName::safe(families).utf8(), families.substr(0, families.size() / 70 * 60));
    EXPECT_EQ(RecordingName::safe(marked).utf8(), marked.substr(0, marked.size() / 70 * 60));
}

TEST(RecordingName, SafeNamesAreSafe) {
    Tests::forAll([](const Text& name) {
        const Text safe = RecordingName::safe(name);
        RC_ASSERT(safe.utf8().find_first_of("/\\:?%*|\"<>\n\r\t") == std::string::npos);
        RC_ASSERT(safe.utf8().find("  ") == std::string::npos);
        const Characters characters(safe);
        RC_ASSERT(characters.count() <= RecordingName::longestName);
        if (!characters.isEmpty()) {
            RC_ASSERT(!characters[0].isWhiteSpace());
            RC_ASSERT(!characters[characters.count() - 1].isWhiteSpace());
        }
        RC_ASSERT(RecordingName::renamed(name, "mov").has_value() == !safe.isEmpty());
        RC_ASSERT(RecordingName::isAutomatic(
            RecordingName::file(name, moment, TimeZone::utc(), Kind::sound)
                .utf8()
                .substr(0, takeOf(name).utf8().size() - 4)));
    });
}

TEST(RecordingName, FileTellsScriptAndTime) {
    EXPECT_EQ(takeOf("Launch: video"), "Launch video 2025-03-05 at 14.07.09.mov");
    EXPECT_EQ(RecordingName::file("Launch", moment, TimeZone::utc(), Kind::sound),
              "Launch 2025-03-05 at 14.07.09.m4a");
    EXPECT_EQ(takeOf(std::nullopt), "Prompter 2025-03-05 at 14.07.09.mov");
    EXPECT_EQ(takeOf(""), "Prompter 2025-03-05 at 14.07.09.mov");
    EXPECT_EQ(takeOf("  /:?  "), "Prompter 2025-03-05 at 14.07.09.mov");
    EXPECT_EQ(takeOf(std::string(70, 'x')), std::string(60, 'x') + " 2025-03-05 at 14.07.09.mov");
}

TEST(RecordingName, FileFollowsTheGivenClock) {
    struct Case {
        const char* what;
        Moment at;
        const char* zone;
        const char* stamp;
    };
    const Case cases[] = {
        {"the same moment elsewhere", moment, "Asia/Tokyo", "2025-03-05 at 23.07.09"},
        {"a quarter of an hour", moment, "Asia/Kathmandu", "2025-03-05 at 19.52.09"},
        {"the day before", moment, "Pacific/Pago_Pago", "2025-03-05 at 03.07.09"},
        {"a fixed offset", moment, "GMT-15:30", "2025-03-04 at 22.37.09"},
        {"an hour that does not exist", Moment(1743296399s), "Europe/Berlin",
         "2025-03-30 at 01.59.59"},
        {"is left out", Moment(1743296400s), "Europe/Berlin", "2025-03-30 at 03.00.00"},
        {"an hour that exists twice", Moment(1761438600s), "Europe/Berlin",
         "2025-10-26 at 02.30.00"},
        {"reads alike both times", Moment(1761442200s), "Europe/Berlin", "2025-10-26 at 02.30.00"},
        {"a begun second", Moment(1741183629s) + 999ms, "UTC", "2025-03-05 at 14.07.09"},
        {"before 1970 too", Moment(-1ms), "UTC", "1969-12-31 at 23.59.59"},
        {"the epoch", Moment(), "UTC", "1970-01-01 at 00.00.00"},
        {"an offset with seconds", Moment(), "Africa/Monrovia", "1969-12-31 at 23.15.30"},
        {"a summer of half an hour", Moment(1743865199s), "Australia/Lord_Howe",
         "2025-04-06 at 01.59.59"},
        {"goes back by it", Moment(1743865200s), "Australia/Lord_Howe", "2025-04-06 at 01.30.00"},
        {"the last second before a day", Moment(1325239199s), "Pacific/Apia",
         "2011-12-29 at 23.59.59"},
        {"that was left out", Moment(1325239200s), "Pacific/Apia", "2011-12-31 at 00.00.00"},
        {"as early as nanoseconds reach", Moment(-9223372036s), "UTC", "1677-09-21 at 00.12.44"},
        {"as late", Moment(9223372036s), "UTC", "2262-04-11 at 23.47.16"},
        {"a leap day", Moment(1709164800s), "UTC", "2024-02-29 at 00.00.00"},
        {"midnight is nought", Moment(1735689600s), "UTC", "2025-01-01 at 00.00.00"},
        {"the year of the day, not of its week", Moment(1735603200s), "UTC",
         "2024-12-31 at 00.00.00"},
    };
    for (const auto& [what, at, identifier, stamp] : cases) {
        SCOPED_TRACE(what);
        const auto zone = TimeZone::fromIdentifier(identifier);
        ASSERT_TRUE(zone);
        EXPECT_EQ(RecordingName::file("x", at, *zone, Kind::video),
                  "x " + std::string(stamp) + ".mov");
    }
}

TEST(RecordingName, IsAutomaticWhileItEndsWithItsStamp) {
    struct Case {
        const char* what;
        Text name;
        bool isAutomatic;
    };
    const Case cases[] = {
        {"as it was given", "Launch 2025-03-05 at 14.07.09", true},
        {"without a script", "Prompter 2025-03-05 at 14.07.09", true},
        {"only the stamp, with its space", " 2025-03-05 at 14.07.09", true},
        {"without its space", "2025-03-05 at 14.07.09", false},
        {"renamed", "Launch final", false},
        {"with its extension", "Launch 2025-03-05 at 14.07.09.mov", false},
        {"something behind it", "Launch 2025-03-05 at 14.07.09 b", false},
        {"a space behind it", "Launch 2025-03-05 at 14.07.09 ", false},
        {"colons", "Launch 2025-03-05 at 14:07:09", false},
        {"a digit too few", "Launch 225-03-05 at 14.07.09", false},
        {"a digit too many", "Launch 12025-03-05 at 14.07.09", false},
        {"no such date, but its form", "Launch 9999-99-99 at 99.99.99", true},
        {"nothing", "", false},
        {"digits of another script", "Launch \u0662\u0660\u0662\u0665-03-05 at 14.07.09", true},
        {"superscripts are no digits", "Launch \u00B2025-03-05 at 14.07.09", false},
        {"a line break behind it", "Launch 2025-03-05 at 14.07.09\n", true},
        {"of two characters", "Launch 2025-03-05 at 14.07.09\r\n", true},
        {"of another kind", "Launch 2025-03-05 at 14.07.09\u2028", true},
        {"two line breaks behind it", "Launch 2025-03-05 at 14.07.09\n\n", false},
        {"another space before it",
         "Launch\u00A0"
         "2025-03-05 at 14.07.09",
         false},
        {"a line before it", "a\nb 2025-03-05 at 14.07.09", true},
        {"at the end of a line that is not the last", "b 2025-03-05 at 14.07.09\nc", false},
        {"a mark behind it", "Launch 2025-03-05 at 14.07.09\u0301", false},
    };
    for (const auto& [what, name, isAutomatic] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(RecordingName::isAutomatic(name), isAutomatic);
    }
}

TEST(RecordingName, RenamedKeepsTheExtension) {
    EXPECT_EQ(RecordingName::renamed("Launch: final ", "mov"), "Launch final.mov");
    EXPECT_EQ(RecordingName::renamed("a.b", "m4a"), "a.b.m4a");
    EXPECT_EQ(RecordingName::renamed("a", ""), "a.");
    EXPECT_EQ(RecordingName::renamed("   ", "mov"), std::nullopt);
    EXPECT_EQ(RecordingName::renamed("", "mov"), std::nullopt);
    EXPECT_EQ(RecordingName::renamed("//", "mov"), std::nullopt);
}

TEST(RecordingName, KindsAreKeysOfASet) {
    EXPECT_EQ(std::unordered_set<Kind>({Kind::video, Kind::sound, Kind::video}).size(), 2U);
    EXPECT_EQ(fileExtension(Kind::video), "mov");
    EXPECT_EQ(fileExtension(Kind::sound), "m4a");
}

}  // namespace
}  // namespace PrompterCore
