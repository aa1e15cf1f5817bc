#include <concepts>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/telemetry/TelemetryScrub.h"
#include "tests/support/Generators.h"
#include "tests/support/Printing.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<PropertyValue> && std::equality_comparable<PropertyValue>);
static_assert(!std::is_constructible_v<PropertyValue, const int*>);

TEST(PropertyValue, KnowsItsType) {
    EXPECT_NE(PropertyValue("x").text(), nullptr);
    EXPECT_EQ(PropertyValue(true).text(), nullptr);
    EXPECT_EQ(PropertyValue(1).text(), nullptr);
    EXPECT_EQ(PropertyValue().text(), nullptr);
    EXPECT_NE(PropertyValue(1), PropertyValue(1.0));
    EXPECT_NE(PropertyValue(1), PropertyValue(true));
    EXPECT_EQ(PropertyValue("caf\u00E9"), PropertyValue("cafe\u0301"));
    EXPECT_EQ(PropertyValue(PropertyValue::List{1, "a"}),
              PropertyValue(PropertyValue::List{1, "a"}));
}

TEST(PropertyValue, IsMadeOfEveryKindOfText) {
    const PropertyMap properties = {{"literal", "x"},
                                    {"string", std::string("x")},
                                    {"view", std::string_view("x")},
                                    {"text", Text("x")}};
    for (const auto& [key, value] : properties)
        EXPECT_EQ(value, PropertyValue(Text("x"))) << key;
    EXPECT_EQ(TelemetryScrub::scrub({}), (PropertyMap{{"$ip", TelemetryScrub::blankAddress}}));
}

TEST(TelemetryScrub, CutsAVersionDownToItsMajorPart) {
    struct Case {
        Text version, major;
    };
    const Case cases[] = {{"14.4.1", "14"}, {"2", "2"},       {"", ""},    {"..", ""},
                          {".5.1", "5"},    {"beta", "beta"}, {"3.", "3"}, {"\u0661.2", "\u0661"}};
    for (const auto& [version, major] : cases)
        EXPECT_EQ(TelemetryScrub::majorVersion(version), major) << version.utf8();
}

TEST(TelemetryScrub, AlwaysCarriesTheBlankAddress) {
    const PropertyMap blank = {{"$ip", "0.0.0.0"}};
    EXPECT_EQ(TelemetryScrub::scrub({}), blank);
    EXPECT_EQ(TelemetryScrub::scrub({{"$ip", "192.0.2.7"}}), blank);
    EXPECT_EQ(TelemetryScrub::scrub({{"$ip", 7}}), blank);
}

TEST(TelemetryScrub, CutsTextsUnderVersionKeysOnly) {
    EXPECT_EQ(TelemetryScrub::scrub(
                  {{"$app_version", "3.2.1"}, {"$os_version", "14.5"}, {"$lib_version", "1.0"}}),
              (PropertyMap{{"$app_version", "3"},
                           {"$os_version", "14"},
                           {"$lib_version", "1"},
                           {"$ip", "0.0.0.0"}}));
    EXPECT_EQ(TelemetryScrub::scrub({{"$app_version", 3.2}}),
              (PropertyMap{{"$app_version", 3.2}, {"$ip", "0.0.0.0"}}));
    EXPECT_EQ(TelemetryScrub::scrub({{"$os_version", PropertyValue()}}),
              (PropertyMap{{"$os_version", PropertyValue()}, {"$ip", "0.0.0.0"}}));
}

TEST(TelemetryScrub, RemovesEveryIdentifyingKeyWhateverItHolds) {
    EXPECT_EQ(TelemetryScrub::removed.size(), 16U);
    for (const std::string_view key : TelemetryScrub::removed) {
        SCOPED_TRACE(key);
        for (const PropertyValue& value :
             {PropertyValue("x"), PropertyValue(1), PropertyValue(true), PropertyValue()})
            EXPECT_EQ(TelemetryScrub::scrub({{Text(key), value}}),
                      (PropertyMap{{"$ip", "0.0.0.0"}}));
    }
}

TEST(TelemetryScrub, KeepsEverythingElse) {
    const PropertyMap kept = {{"$geoip_country_code", "DE"},
                              {"$Locale", "de_DE"},
                              {"minutes", "over_60"},
                              {"external_display", true},
                              {"first_run", false},
                              {"$app_version2", "1.2"},
                              {"$ip", "0.0.0.0"}};
    EXPECT_EQ(TelemetryScrub::scrub(kept), kept);
}

TEST(TelemetryScrub, ScrubbingTwiceIsScrubbingOnce) {
    Tests::forAll([](const std::vector<Text>& keys, const Text& value) {
        PropertyMap properties;
        for (const Text& key : keys)
            properties.emplace(key, value);
        for (const std::string_view key : TelemetryScrub::coarsened)
            properties.emplace(Text(key), value);
        const PropertyMap once = TelemetryScrub::scrub(properties);
        RC_ASSERT(TelemetryScrub::scrub(once) == once);
    });
}

}  // namespace
}  // namespace PrompterCore
