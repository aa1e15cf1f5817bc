#include <limits>
#include <string>

#include "PrompterCore/colour/ColourPreset.h"
#include "tests/colour/Colours.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::orange;
using Tests::white;

constexpr const char* orangeJson = R"({"red":1,"green":0.5,"blue":0,"alpha":1})";
constexpr const char* studioJson =
    R"({"id":"0F8FAD5B-D9CB-469F-A165-70867728950E","name":"Studio",)"
    R"("text":{"red":1,"green":1,"blue":1,"alpha":1},)"
    R"("highlight":{"red":1,"green":0.5,"blue":0,"alpha":1}})";

const ColourPreset studio{.id = *UUID::fromText("0f8fad5b-d9cb-469f-a165-70867728950e"),
                          .name = "Studio",
                          .text = white,
                          .highlight = orange};

// What is wrong, and where.
template <class T>
std::string failure(const std::string& json) {
    try {
        static_cast<void>(fromJson<T>(json));
        return "none";
    } catch (const RecordFailure& failure) {
        return failure.what();
    }
}

std::string replaced(std::string text, const std::string& part, const std::string& by) {
    return text.replace(text.find(part), part.size(), by);
}

TEST(ColourRecords, AColourIsFourNumbers) {
    EXPECT_EQ(toJson(orange), orangeJson);
    EXPECT_EQ(fromJson<RGBA>(orangeJson), orange);
    EXPECT_EQ(fromJson<RGBA>(R"({"alpha":1.0,"blue":0,"other":[],"green":5e-1,"red":1})"), orange)
        << "in any order, with whatever else is there";
    EXPECT_EQ(toJson(RGBA(1 / 3.0, 0.1, 128 / 255.0, 0)),
              R"({"red":0.3333333333333333,"green":0.1,"blue":0.5019607843137255,"alpha":0})");
}

TEST(ColourRecords, StoredNumbersStayAsTheyAre) {
    const std::string outside = R"({"red":-0.5,"green":1.5,"blue":200,"alpha":-1})";
    EXPECT_EQ(fromJson<RGBA>(outside), RGBA::unclamped(-0.5, 1.5, 200, -1));
    EXPECT_EQ(toJson(fromJson<RGBA>(outside)), outside);
}

TEST(ColourRecords, EveryKeyOfAColourIsRequired) {
    for (const std::string key : {"red", "green", "blue", "alpha"}) {
        const std::string quoted = '"' + key + '"';
        EXPECT_EQ(failure<RGBA>(replaced(orangeJson, quoted, "\"other\"")), quoted + ": missing");
        for (const char* const value : {"\"1\"", "true", "null", "[]", "{}"}) {
            const std::string json =
                replaced(orangeJson, quoted + ":", quoted + ":" + value + ",\"other\":");
            EXPECT_THROW(static_cast<void>(fromJson<RGBA>(json)), RecordFailure) << json;
        }
    }
    EXPECT_THROW(static_cast<void>(fromJson<RGBA>("\"#FF8000\"")), RecordFailure);
}

TEST(ColourRecords, WhatIsNoNumberCannotBeStored) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(static_cast<void>(toJson(RGBA::unclamped(infinity, 0, 0, 1))), RecordFailure);
    EXPECT_THROW(static_cast<void>(toJson(RGBA(0, 0, 0, notANumber))), RecordFailure);
}

TEST(ColourRecords, APresetHoldsItsColours) {
    EXPECT_EQ(toJson(studio), studioJson) << "without the marker that it does not have";
    EXPECT_EQ(fromJson<ColourPreset>(studioJson), studio);
    ColourPreset marked = studio;
    marked.marker = orange;
    std::string json = studioJson;
    json.pop_back();
    json += std::string(",\"marker\":") + orangeJson + '}';
    EXPECT_EQ(toJson(marked), json);
    EXPECT_EQ(fromJson<ColourPreset>(json), marked);
}

TEST(ColourRecords, AMarkerThatIsNotThereIsAbsent) {
    EXPECT_EQ(fromJson<ColourPreset>(studioJson).marker, std::nullopt);
    const std::string null = replaced(studioJson, "\"text\"", "\"marker\":null,\"text\"");
    EXPECT_EQ(fromJson<ColourPreset>(null), studio);
    EXPECT_EQ(toJson(fromJson<ColourPreset>(null)), studioJson);
    const std::string broken = replaced(studioJson, "\"text\"", "\"marker\":{},\"text\"");
    EXPECT_EQ(failure<ColourPreset>(broken), "\"marker.red\": missing");
}

TEST(ColourRecords, EveryOtherKeyOfAPresetIsRequired) {
    for (const std::string key : {"id", "name", "text", "highlight"}) {
        const std::string quoted = '"' + key + '"';
        EXPECT_EQ(failure<ColourPreset>(replaced(studioJson, quoted, "\"other\"")),
                  quoted + ": missing");
        const std::string number = replaced(studioJson, quoted + ":", quoted + ":1,\"other\":");
        EXPECT_THROW(static_cast<void>(fromJson<ColourPreset>(number)), RecordFailure) << key;
    }
    EXPECT_EQ(failure<ColourPreset>(replaced(studioJson, "0F8F", "0F8G")),
              "\"id\": \"0F8GAD5B-D9CB-469F-A165-70867728950E\" where a UUID is required");
}

TEST(ColourRecords, IdsAreReadInEitherCaseAndWrittenInUpperCase) {
    const std::string lower = replaced(studioJson, "0F8FAD5B-D9CB-469F", "0f8fad5b-d9cb-469f");
    EXPECT_EQ(toJson(fromJson<ColourPreset>(lower)), studioJson);
}

TEST(ColourRecords, ANameIsNotMadeCleanByReading) {
    const std::string json = replaced(studioJson, "Studio", "  Stu\\ndio ");
    EXPECT_EQ(fromJson<ColourPreset>(json).name, "  Stu\ndio ");
}

TEST(ColourRecords, EveryPresetSurvives) {
    Tests::forAll([](const Text& name, double red, double green, bool isMarked) {
        ColourPreset preset = studio;
        preset.name = name;
        preset.text = RGBA::unclamped(red, green, 1 / 3.0, 0);
        if (isMarked) preset.marker = RGBA::unclamped(green, red, 0, 1);
        const std::string json = toJson(preset);
        RC_ASSERT(fromJson<ColourPreset>(json) == preset);
        RC_ASSERT(fromJson<ColourPreset>(json).name.utf8() == name.utf8());
        RC_ASSERT(toJson(fromJson<ColourPreset>(json)) == json);
    });
}

}  // namespace
}  // namespace PrompterCore
