// How what is stored of the camera is read; how it is written stands in tests/golden/.

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "PrompterCore/camera/CameraAdjustment.h"
#include "PrompterCore/camera/CameraResolution.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Kind = RecordFailure::Kind;

CameraAdjustment adjustment(CameraRotation rotation, std::int64_t delay,
                            CameraBackground background, bool savesCutout) {
    return {.rotation = rotation,
            .pictureDelay = delay,
            .background = std::move(background),
            .savesCutout = savesCutout};
}

struct Failure {
    Kind kind;
    std::string path, problem;

    friend bool operator==(const Failure&, const Failure&) = default;
};

std::ostream& operator<<(std::ostream& out, const Failure& failure) {
    return out << static_cast<int>(failure.kind) << ' ' << failure.path << ": " << failure.problem;
}

template <class T>
std::optional<Failure> failureOf(const char* json) {
    try {
        static_cast<void>(fromJson<T>(json));
    } catch (const RecordFailure& failure) {
        return Failure{failure.kind(), failure.path(), failure.problem()};
    }
    return std::nullopt;
}

TEST(CameraRecords, AreWrittenInTheirOrder) {
    EXPECT_EQ(toJson(CameraResolution{1920, 1080}), R"({"width":1920,"height":1080})");
    EXPECT_EQ(toJson(CameraBackground::colour(CameraBackground::defaultColour)),
              R"({"colour":{"_0":{"red":0.13,"green":0.14,"blue":0.16,"alpha":1}}})");
    EXPECT_EQ(toJson(CameraBackground::image("/p.png")), R"({"image":{"path":"/p.png"}})");
    EXPECT_EQ(toJson(adjustment(CameraRotation::threeQuarters, 7, CameraBackground::blur(), true)),
              R"({"rotation":270,"pictureDelay":7,"background":{"blur":{}},"savesCutout":true})");
}

TEST(CameraRecords, ARotationIsItsNumberAlone) {
    EXPECT_EQ(toJson(CameraRotation::threeQuarters), "270");
    EXPECT_EQ(fromJson<CameraRotation>("90"), CameraRotation::quarter);
    EXPECT_TRUE(failureOf<CameraRotation>("45").has_value());
}

TEST(CameraRecords, AResolutionNeedsBothNumbers) {
    EXPECT_EQ(fromJson<CameraResolution>(R"({"height":-3,"more":1,"width":0})"),
              (CameraResolution{0, -3}));
    EXPECT_EQ(failureOf<CameraResolution>(R"({"width":1920})"),
              (Failure{Kind::missingKey, "height", "missing"}));
    EXPECT_EQ(failureOf<CameraResolution>(R"({"height":1080})"),
              (Failure{Kind::missingKey, "width", "missing"}));
    for (const char* const json :
         {R"({"width":"1920","height":1080})", R"({"width":1920.5,"height":1080})",
          R"({"width":null,"height":1080})", R"({"width":1e30,"height":1080})", "[1920,1080]",
          R"("1920x1080")"}) {
        const auto failure = failureOf<CameraResolution>(json);
        ASSERT_TRUE(failure.has_value()) << json;
        EXPECT_EQ(failure->kind, Kind::mismatch) << json;
    }
}

TEST(CameraRecords, AnAdjustmentFillsInWhatOldVersionsDidNotStore) {
    const CameraAdjustment read =
        fromJson<CameraAdjustment>(R"({"rotation":90,"pictureDelay":2500})");
    EXPECT_EQ(read, adjustment(CameraRotation::quarter, 1000, CameraBackground::off(), false));
    EXPECT_EQ(fromJson<CameraAdjustment>(R"({"rotation":90,"pictureDelay":-40})").pictureDelay, 0);
    EXPECT_EQ(fromJson<CameraAdjustment>(
                  R"({"rotation":0,"pictureDelay":7,"background":null,"savesCutout":null})"),
              adjustment(CameraRotation::none, 7, CameraBackground::off(), false));
}

TEST(CameraRecords, AnAdjustmentSaysWhatIsWrongWithIt) {
    const struct {
        const char* json;
        Kind kind;
        const char* path;
    } cases[] = {
        {R"({"rotation":45,"pictureDelay":0})", Kind::mismatch, "rotation"},
        {R"({"rotation":360,"pictureDelay":0})", Kind::mismatch, "rotation"},
        {R"({"rotation":"90","pictureDelay":0})", Kind::mismatch, "rotation"},
        {R"({"pictureDelay":0})", Kind::missingKey, "rotation"},
        {R"({"rotation":90})", Kind::missingKey, "pictureDelay"},
        {R"({"rotation":90,"pictureDelay":1.5})", Kind::mismatch, "pictureDelay"},
        {R"({"rotation":90,"pictureDelay":null})", Kind::mismatch, "pictureDelay"},
        {R"({"rotation":90,"pictureDelay":0,"background":"off"})", Kind::mismatch, "background"},
        {R"({"rotation":90,"pictureDelay":0,"background":{}})", Kind::mismatch, "background"},
        {R"({"rotation":90,"pictureDelay":0,"savesCutout":1})", Kind::mismatch, "savesCutout"},
        {R"({"rotation":90,"pictureDelay":0,"background":{"colour":{"_0":{"red":1}}}})",
         Kind::missingKey, "background.colour._0.green"},
    };
    for (const auto& [json, kind, path] : cases) {
        const auto failure = failureOf<CameraAdjustment>(json);
        ASSERT_TRUE(failure.has_value()) << json;
        EXPECT_EQ(failure->kind, kind) << json;
        EXPECT_EQ(failure->path, path) << json;
    }
}

TEST(CameraRecords, ABackgroundHasOneKey) {
    const Failure wrongCount{Kind::mismatch, "", "Invalid number of keys found, expected one."};
    EXPECT_EQ(failureOf<CameraBackground>("{}"), wrongCount);
    EXPECT_EQ(failureOf<CameraBackground>(R"({"off":{},"blur":{}})"), wrongCount);
    EXPECT_EQ(failureOf<CameraBackground>(R"({"blur":{},"other":1})"), wrongCount);
}

TEST(CameraRecords, ABackgroundsKeyIsAKnownKindWithItsRecord) {
    EXPECT_EQ(failureOf<CameraBackground>(R"({"Blur":{}})"),
              (Failure{Kind::mismatch, "Blur", "no kind of background"}));
    EXPECT_EQ(failureOf<CameraBackground>(R"({"wall":3})"),
              (Failure{Kind::mismatch, "wall", "no kind of background"}))
        << "whatever stands under it";
    EXPECT_EQ(failureOf<CameraBackground>(R"({"image":{}})"),
              (Failure{Kind::missingKey, "image.path", "missing"}));
    EXPECT_EQ(failureOf<CameraBackground>(R"({"colour":{"red":1}})"),
              (Failure{Kind::missingKey, "colour._0", "missing"}));
    for (const char* const json :
         {R"({"off":null})", R"({"off":true})", R"({"blur":[]})", R"({"image":"/p.png"})",
          R"({"image":{"path":3}})", R"({"colour":{"_0":"#FF0000FF"}})"}) {
        const auto failure = failureOf<CameraBackground>(json);
        ASSERT_TRUE(failure.has_value()) << json;
        EXPECT_EQ(failure->kind, Kind::mismatch) << json;
    }
}

TEST(CameraRecords, MoreThanABackgroundCarriesDoesNotMatter) {
    EXPECT_EQ(fromJson<CameraBackground>(R"({"off":{"path":"/p.png"}})"), CameraBackground::off());
    EXPECT_EQ(fromJson<CameraBackground>(R"({"image":{"more":[1],"path":"/p.png"}})"),
              CameraBackground::image("/p.png"));
    EXPECT_EQ(
        fromJson<CameraBackground>(
            R"({"colour":{"_0":{"red":2,"green":0,"blue":-1,"alpha":1,"gamma":2}}})"),
        CameraBackground::colour(fromJson<RGBA>(R"({"red":2,"green":0,"blue":-1,"alpha":1})")));
}

TEST(CameraRecords, WhatIsWrittenReadsBackAndIsWrittenAlike) {
    Tests::forAll([](const Text& path, std::int64_t delay, bool savesCutout) {
        const auto number = rc::gen::arbitrary<double>();
        const std::vector<CameraBackground> backgrounds = {
            CameraBackground::off(), CameraBackground::blur(), CameraBackground::image(path),
            CameraBackground::colour(RGBA(*number, *number, *number, *number))};
        for (const CameraRotation rotation : allCases<CameraRotation>) {
            for (const CameraBackground& background : backgrounds) {
                const CameraAdjustment made = adjustment(rotation, delay, background, savesCutout);
                const std::string json = toJson(made);
                const CameraAdjustment read = fromJson<CameraAdjustment>(json);
                RC_ASSERT(read == made);
                RC_ASSERT(toJson(read) == json);
            }
        }
    });
}

}  // namespace
}  // namespace PrompterCore
