#include <concepts>
#include <string>

#include "host/CameraFormats.h"
#include "host/Failures.h"
#include "tests/support/Properties.h"

namespace Varnelle {
namespace {

using namespace PrompterCore;  // NOLINT

static_assert(std::copyable<CameraFormat> && std::equality_comparable<CameraFormat>);

constexpr const char* manual = R"(
    [{"width": 1920, "height": 1080, "frameRates": [[1, 30], [60, 60]]},
     {"width": 1280, "height": 720, "frameRates": [[1, 60]]}])";

std::string failureOf(const char* json) {
    try {
        static_cast<void>(cameraFormats(json));
    } catch (const BadData& failure) {
        return failure.what();
    }
    return "none";
}

TEST(CameraFormats, AreReadAsItsManualShows) {
    const std::vector<CameraFormat> formats = cameraFormats(manual);
    ASSERT_EQ(formats.size(), 2U);
    EXPECT_EQ(formats[0], (CameraFormat{{1920, 1080}, {{1, 30}, {60, 60}}}));
    EXPECT_EQ(formats[1], (CameraFormat{{1280, 720}, {{1, 60}}}));
    EXPECT_TRUE(cameraFormats("[]").empty());
}

TEST(CameraFormats, GiveTheirHighestRateAndThoseOfOneResolution) {
    std::vector<CameraFormat> formats = cameraFormats(manual);
    formats.push_back({{1920, 1080}, {{120, 120}}});
    EXPECT_EQ(formatOptions(formats),
              (std::vector<CameraFormatOption>{
                  {{1920, 1080}, 60}, {{1280, 720}, 60}, {{1920, 1080}, 120}}));
    EXPECT_EQ(frameRatesOf({1920, 1080}, formats),
              (std::vector<ClosedRange<double>>{{1, 30}, {60, 60}, {120, 120}}));
    EXPECT_TRUE(frameRatesOf({640, 480}, formats).empty());
}

TEST(CameraFormats, SayWhichEntryIsWrongAndHow) {
    const char* const good = R"([{"width":1,"height":1,"frameRates":[[1,1]]},)";
    const struct {
        std::string json, why;
    } cases[] = {
        {"", "no well-formed JSON"},
        {"[", "no well-formed JSON"},
        {"{}", "a record where a list is required"},
        {"[3]", "format 1: a number where a record is required"},
        {good + std::string("{}]"), "format 2: \"width\": missing"},
        {good + std::string(R"({"width":1}])"), "format 2: \"height\": missing"},
        {R"([{"width":"1920"}])", "format 1: \"width\": a text where a whole number is required"},
        {R"([{"width":19.5}])", "format 1: \"width\": 19.5 where a whole number is required"},
        {R"([{"width":0}])", "format 1: \"width\": 0 is not from 1 to 100000"},
        {R"([{"width":1,"height":100001}])", "format 1: \"height\": 100001 is not from"},
        {R"([{"width":1,"height":1}])", "format 1: \"frameRates\": missing"},
        {R"([{"width":1,"height":1,"frameRates":30}])", "format 1: \"frameRates\""},
        {R"([{"width":1,"height":1,"frameRates":[30]}])", "format 1: \"frameRates[0]\""},
        {R"([{"width":1,"height":1,"frameRates":[["a",3]]}])", "format 1: \"frameRates[0][0]\""},
        {R"([{"width":1,"height":1,"frameRates":[]}])", "format 1: \"frameRates\": there are none"},
        {R"([{"width":1,"height":1,"frameRates":[[30]]}])",
         "format 1: \"frameRates[0]\": a range is a lowest and a highest rate"},
        {R"([{"width":1,"height":1,"frameRates":[[1,2],[1,2,3]]}])", "\"frameRates[1]\": a range"},
        {R"([{"width":1,"height":1,"frameRates":[[30,1]]}])", "the lowest rate comes first"},
        {R"([{"width":1,"height":1,"frameRates":[[0,1]]}])", "lies above 0"},
        {R"([{"width":1,"height":1,"frameRates":[[1,1e6]]}])", "at most 100000"},
        {R"([{"width":1,"width":2}])", "stands twice"},
    };
    for (const auto& [json, why] : cases) {
        const std::string failure = failureOf(json.c_str());
        EXPECT_NE(failure.find(why), std::string::npos) << json << " says " << failure;
        EXPECT_EQ(failure.find('\n'), std::string::npos);
    }
}

}  // namespace
}  // namespace Varnelle
