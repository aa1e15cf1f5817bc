#include <concepts>

#include "PrompterCore/camera/CameraAdjustment.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::most;

static_assert(std::copyable<CameraAdjustment> && std::equality_comparable<CameraAdjustment>);
static_assert(!std::default_initializable<CameraAdjustment>, "a host says what it means");

CameraAdjustment adjustment(CameraBackground background, bool savesCutout) {
    return {.rotation = CameraRotation::none,
            .pictureDelay = 0,
            .background = std::move(background),
            .savesCutout = savesCutout};
}

TEST(CameraAdjustment, DoesWhatItsManualShows) {
    const CameraAdjustment made{.rotation = CameraRotation::quarter,
                                .pictureDelay = 2500,
                                .background = CameraBackground::off(),
                                .savesCutout = false};
    EXPECT_EQ(made.pictureDelay, 1000);
    EXPECT_FALSE(made.findsPerson());
    EXPECT_EQ(toJson(made),
              R"({"rotation":90,"pictureDelay":1000,"background":{"off":{}},"savesCutout":false})");
}

TEST(CameraAdjustment, DelayIsClampedByEveryChange) {
    CameraAdjustment made = adjustment(CameraBackground::off(), false);
    made.pictureDelay = -1;
    EXPECT_EQ(made.pictureDelay, 0);
    made.pictureDelay = 1001;
    EXPECT_EQ(made.pictureDelay, 1000);
    made.pictureDelay += CameraAdjustment::delayStep;
    EXPECT_EQ(made.pictureDelay, 1000);
    made.pictureDelay -= 1010;
    EXPECT_EQ(made.pictureDelay, 0);
    EXPECT_EQ(CameraAdjustment::delayRange, ClosedRange<std::int64_t>(0, 1000));
    EXPECT_EQ(CameraAdjustment::delayStep, 10);
}

TEST(CameraAdjustmentDeathTest, StopsWhereAChangeOfTheDelayOverflows) {
    CameraAdjustment made = adjustment(CameraBackground::off(), false);
    made.pictureDelay = 1;
    EXPECT_DEATH(made.pictureDelay += most, "a sum fits 64 bits");
}

TEST(CameraAdjustment, FindsThePersonForABackgroundOrACutout) {
    constexpr bool saves = true, savesNot = false;
    EXPECT_FALSE(adjustment(CameraBackground::off(), savesNot).findsPerson());
    EXPECT_TRUE(adjustment(CameraBackground::off(), saves).findsPerson());
    for (const auto& background :
         {CameraBackground::blur(), CameraBackground::colour(CameraBackground::defaultColour),
          CameraBackground::image("")}) {
        EXPECT_TRUE(adjustment(background, savesNot).findsPerson());
        EXPECT_TRUE(adjustment(background, saves).findsPerson());
    }
}

TEST(CameraAdjustment, DiffersInEachField) {
    const CameraAdjustment plain = adjustment(CameraBackground::off(), false);
    CameraAdjustment other = plain;
    EXPECT_EQ(other, plain);
    other.rotation = CameraRotation::half;
    EXPECT_NE(other, plain);
    other = plain;
    other.pictureDelay = 10;
    EXPECT_NE(other, plain);
    other = plain;
    other.background = CameraBackground::blur();
    EXPECT_NE(other, plain);
    other = plain;
    other.savesCutout = true;
    EXPECT_NE(other, plain);
}

TEST(CameraBackground, DoesWhatItsManualShows) {
    using Kind = CameraBackground::Kind;
    const auto background = CameraBackground::colour(CameraBackground::defaultColour);
    EXPECT_EQ(background.switchedTo(Kind::blur), CameraBackground::blur());
    EXPECT_EQ(background.switchedTo(Kind::image), std::nullopt);
    EXPECT_EQ(toJson(CameraBackground::blur()), R"({"blur":{}})");
}

TEST(CameraBackground, SwitchesKeepingWhatItCarries) {
    using Kind = CameraBackground::Kind;
    const RGBA red(1, 0, 0, 1);
    const auto defaultColour = CameraBackground::colour(CameraBackground::defaultColour);
    const auto off = CameraBackground::off(), blur = CameraBackground::blur();
    const auto colour = CameraBackground::colour(red), image = CameraBackground::image("/p.png");
    const struct {
        CameraBackground from;
        Kind kind;
        std::optional<CameraBackground> to;
    } cases[] = {
        {off, Kind::off, off},
        {off, Kind::blur, blur},
        {off, Kind::colour, defaultColour},
        {off, Kind::image, std::nullopt},
        {blur, Kind::off, off},
        {blur, Kind::blur, blur},
        {blur, Kind::colour, defaultColour},
        {blur, Kind::image, std::nullopt},
        {colour, Kind::off, off},
        {colour, Kind::blur, blur},
        {colour, Kind::colour, colour},
        {colour, Kind::image, std::nullopt},
        {image, Kind::off, off},
        {image, Kind::blur, blur},
        {image, Kind::colour, defaultColour},
        {image, Kind::image, image},
    };
    for (const auto& [from, kind, to] : cases) {
        EXPECT_EQ(from.switchedTo(kind), to) << from.title() << " to " << title(kind);
    }
}

TEST(CameraBackground, KindsHaveTitlesAndAllButOffNeedACutout) {
    const struct {
        CameraBackground background;
        CameraBackground::Kind kind;
        std::string_view title;
        bool needsCutout;
    } cases[] = {
        {CameraBackground::off(), CameraBackground::Kind::off, "Off", false},
        {CameraBackground::blur(), CameraBackground::Kind::blur, "Blur", true},
        {CameraBackground::colour(RGBA(0, 0, 0, 1)), CameraBackground::Kind::colour, "Colour",
         true},
        {CameraBackground::image("p"), CameraBackground::Kind::image, "Image", true},
    };
    for (const auto& [background, kind, title, needsCutout] : cases) {
        EXPECT_EQ(background.kind(), kind);
        EXPECT_EQ(background.title(), title);
        EXPECT_EQ(fromRawValue<CameraBackground::Kind>(id(kind)), kind);
        EXPECT_EQ(background.needsCutout(), needsCutout);
    }
    EXPECT_EQ(CameraBackground::defaultColour, RGBA(0.13, 0.14, 0.16, 1));
    EXPECT_EQ(fromRawValue<CameraBackground::Kind>("Blur"), std::nullopt);
}

TEST(CameraBackground, IsEqualByWhatItCarries) {
    EXPECT_NE(CameraBackground::off(), CameraBackground::blur());
    EXPECT_NE(CameraBackground::colour(RGBA(1, 0, 0, 1)),
              CameraBackground::colour(RGBA(1, 0, 0, 0.5)));
    EXPECT_EQ(CameraBackground::image("caf\u00E9"), CameraBackground::image("cafe\u0301"));
    EXPECT_NE(CameraBackground::image("a"), CameraBackground::image("A"));
}

TEST(CameraBackground, VisitSeesWhatItCarries) {
    const auto path = [](const CameraBackground& background) {
        return background.visit([](const CameraBackground::Image& image) { return image.path; },
                                [](const auto&) { return Text("none"); });
    };
    EXPECT_EQ(path(CameraBackground::image("/p.png")), "/p.png");
    EXPECT_EQ(path(CameraBackground::blur()), "none");
}

}  // namespace
}  // namespace PrompterCore
