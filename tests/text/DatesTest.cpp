// Dates, and the zones and locales that they are written in.

#include <chrono>
#include <concepts>
#include <cstdlib>
#include <optional>
#include <string>

#include "PrompterCore/text/Dates.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using namespace std::chrono_literals;
using Moment = std::chrono::system_clock::time_point;

static_assert(std::copyable<TimeZone> && std::equality_comparable<TimeZone>);
static_assert(std::copyable<Locale> && std::equality_comparable<Locale>);

TEST(TimeZone, IsFoundByItsIdentifier) {
    for (const char* identifier : {"Europe/Berlin", "UTC", "GMT+05:30", "America/New_York"}) {
        const auto zone = TimeZone::fromIdentifier(identifier);
        ASSERT_TRUE(zone) << identifier;
        EXPECT_EQ(zone->identifier(), identifier);
        EXPECT_EQ(zone, TimeZone::fromIdentifier(identifier));
    }
    EXPECT_EQ(TimeZone::fromIdentifier("UTC"), TimeZone::utc());
    EXPECT_NE(TimeZone::fromIdentifier("Europe/Berlin"), TimeZone::fromIdentifier("Europe/Paris"));
}

TEST(TimeZone, IsAbsentForAnyOtherText) {
    for (const char* identifier : {"", "Europe/Nowhere", "europe/berlin", "Berlin", " UTC",
                                   "Etc/Unknown", "GMT+99", "\u00E9", "\xFF"})
        EXPECT_EQ(TimeZone::fromIdentifier(identifier), std::nullopt) << identifier;
    EXPECT_EQ(TimeZone::fromIdentifier(std::string_view("UTC\0", 4)), std::nullopt);
    EXPECT_EQ(TimeZone::fromIdentifier(std::string_view("GMT+5\0", 6)), std::nullopt);
}

TEST(TimeZone, IsTheUsersOwnByDefault) {
    const char* const before = std::getenv("TZ");
    const std::optional<std::string> saved =
        before ? std::optional<std::string>(before) : std::nullopt;
    ASSERT_EQ(setenv("TZ", "Asia/Tokyo", 1), 0);
    EXPECT_EQ(TimeZone().identifier(), "Asia/Tokyo");
    ASSERT_EQ(setenv("TZ", "Europe/Berlin", 1), 0);
    EXPECT_EQ(TimeZone().identifier(), "Europe/Berlin");
    if (saved) {
        setenv("TZ", saved->c_str(), 1);
    } else {
        unsetenv("TZ");
    }
}

TEST(Locale, IsReadInAnySpelling) {
    const auto german = Locale::fromIdentifier("de-DE");
    ASSERT_TRUE(german);
    EXPECT_EQ(german->identifier(), "de_DE");
    EXPECT_EQ(german, Locale::fromIdentifier("de_DE"));
    EXPECT_NE(german, Locale::fromIdentifier("de_AT"));
    EXPECT_EQ(Locale::fromIdentifier("en_US_POSIX"), Locale::fixed());
    EXPECT_EQ(Locale::fromIdentifier(""), std::nullopt);
    EXPECT_EQ(Locale::fromIdentifier(std::string_view("de\0x", 4)), std::nullopt);
    EXPECT_FALSE(Locale().identifier().empty());
}

TEST(Dates, FollowPatternLocaleAndZone) {
    const Moment moment{1741183629s};  // 5 March 2025, 14:07:09 UTC
    const TimeZone tokyo = *TimeZone::fromIdentifier("Asia/Tokyo");
    struct Case {
        const char *pattern, *locale, *written;
    };
    const Case cases[] = {
        {"yyyy-MM-dd 'at' HH.mm.ss", "en_US_POSIX", "2025-03-05 at 23.07.09"},
        {"EEEE, d. MMMM", "de_DE", "Mittwoch, 5. M\u00E4rz"},
        {"yyyy", "ar_EG", "\u0662\u0660\u0662\u0665"},
        {"", "en_US", ""},
    };
    for (const auto& [pattern, locale, written] : cases) {
        SCOPED_TRACE(pattern);
        EXPECT_EQ(Dates::formatted(moment, pattern, *Locale::fromIdentifier(locale), tokyo),
                  written);
    }
}

TEST(Dates, ABegunSecondIsNotOver) {
    const auto seconds = [](Moment moment) {
        return Dates::formatted(moment, "HH:mm:ss", Locale::fixed(), TimeZone::utc());
    };
    EXPECT_EQ(seconds(Moment(999ms)), "00:00:00");
    EXPECT_EQ(seconds(Moment(-1ms)), "23:59:59");
    EXPECT_EQ(seconds(Moment(-1s)), "23:59:59");
    EXPECT_EQ(seconds(Moment(-1001ms)), "23:59:58");
    EXPECT_EQ(seconds(Moment(Moment::duration(-1))), "23:59:59");
}

TEST(Dates, ReachTheEndsOfTheClock) {
    const auto year = [](Moment moment) {
        return Dates::formatted(moment, "yyyy", Locale::fixed(), TimeZone::utc());
    };
    if constexpr (std::is_same_v<Moment::period, std::nano>) {
        EXPECT_EQ(year(Moment::max()), "2262");
        EXPECT_EQ(year(Moment::min()), "1677");
    } else {
        EXPECT_EQ(year(Moment(253402300800s)), "10000");
        EXPECT_EQ(year(Moment(-62167219201s)), "0001") << "the first year before the first";
    }
}

// The calendar's own arithmetic agrees with the standard library's.
TEST(Dates, EveryDayIsTheCalendars) {
    Tests::forAll([](std::int16_t days, std::uint32_t second) {
        const Moment moment{std::chrono::days(days) + std::chrono::seconds(second % 86400)};
        const auto day = std::chrono::floor<std::chrono::days>(moment);
        const std::chrono::year_month_day date(day);
        const std::chrono::hh_mm_ss time(std::chrono::floor<std::chrono::seconds>(moment - day));
        char expected[64];
        std::snprintf(expected, sizeof expected, "%04d-%02u-%02u %02d.%02d.%02d",
                      static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                      static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
                      static_cast<int>(time.minutes().count()),
                      static_cast<int>(time.seconds().count()));
        RC_ASSERT(Dates::formatted(moment, "yyyy-MM-dd HH.mm.ss", Locale::fixed(),
                                   TimeZone::utc()) == expected);
    });
}

TEST(DatesDeathTest, APatternThatIsNoneStopsTheProgram) {
    EXPECT_DEATH(std::ignore = Dates::formatted(Moment(), "ppp", Locale::fixed(), TimeZone::utc()),
                 "a date's pattern is well-formed");
}

}  // namespace
}  // namespace PrompterCore
