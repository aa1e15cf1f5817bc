// What a take records, where it is stored, how its time is shown.

#include <cmath>
#include <concepts>
#include <filesystem>
#include <optional>

#include "PrompterCore/takes/FolderName.h"
#include "PrompterCore/takes/FreeSpace.h"
#include "PrompterCore/takes/RecordingClock.h"
#include "PrompterCore/takes/RecordingMode.h"
#include "PrompterCore/takes/StorageFolder.h"
#include "PrompterCore/takes/VideoBitrate.h"
#include "tests/support/Extremes.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::infinity;

static_assert(std::copyable<StorageFolder> && std::equality_comparable<StorageFolder>);

TEST(RecordingMode, SaysWhatATakeSaves) {
    struct Case {
        RecordingMode mode;
        const char *title, *explanation;
        bool usesCamera, savesFile;
    };
    const Case cases[] = {
        {RecordingMode::cameraAndSound, "Camera and sound",
         "Each take saves the camera and the microphone as one video.", true, true},
        {RecordingMode::soundOnly, "Sound only",
         "Each take saves the microphone alone. The camera stays off.", false, true},
        {RecordingMode::nothing, "Nothing",
         "The prompter follows you, and no file is saved. For filming on a camera that records "
         "itself.",
         false, false},
    };
    for (const auto& [mode, expectedTitle, expectedExplanation, camera, file] : cases) {
        EXPECT_EQ(title(mode), expectedTitle);
        EXPECT_EQ(explanation(mode), expectedExplanation);
        EXPECT_EQ(usesCamera(mode), camera);
        EXPECT_EQ(savesFile(mode), file);
    }
}

TEST(RecordingMode, IsReadLeniently) {
    EXPECT_EQ(fromStored<RecordingMode>("cameraAndSound"), RecordingMode::cameraAndSound);
    EXPECT_EQ(fromStored<RecordingMode>("soundOnly"), RecordingMode::soundOnly);
    EXPECT_EQ(fromStored<RecordingMode>("nothing"), RecordingMode::nothing);
    for (const char* other : {"SoundOnly", "", " soundOnly", "Sound only"})
        EXPECT_EQ(fromStored<RecordingMode>(other), RecordingMode::cameraAndSound);
    EXPECT_EQ(fromStored<RecordingMode>(std::nullopt), RecordingMode::cameraAndSound);
}

TEST(RecordingClock, ShowsHoursFromTheFirstOn) {
    struct Case {
        double seconds;
        const char* shown;
    };
    const Case cases[] = {
        {0, "00:00"},
        {59.9, "00:59"},
        {60, "01:00"},
        {3599, "59:59"},
        {3599.999, "59:59"},
        {3600, "1:00:00"},
        {3661, "1:01:01"},
        {36000, "10:00:00"},
        {360000, "100:00:00"},
        {-3, "00:00"},
        {-0.5, "00:00"},
        {-1e300, "00:00"},
        {0x1p62, "1281023894007607:45:04"},
    };
    for (const auto& [seconds, shown] : cases) {
        SCOPED_TRACE(seconds);
        EXPECT_EQ(RecordingClock::format(seconds), shown);
    }
}

TEST(RecordingClockDeathTest, ATimeThatCannotBeShownStopsTheProgram) {
    const char* const rule = "a recording clock's time is finite";
    EXPECT_DEATH(std::ignore = RecordingClock::format(infinity), rule);
    EXPECT_DEATH(std::ignore = RecordingClock::format(-infinity), rule);
    EXPECT_DEATH(std::ignore = RecordingClock::format(std::nan("")), rule);
    EXPECT_DEATH(std::ignore = RecordingClock::format(1e300), "a whole number fits 64 bits");
}

TEST(FolderName, IsShortInsideTheHome) {
    struct Case {
        const char* what;
        Text path, home, shown;
    };
    const Case cases[] = {
        {"in the home", "/Users/ann/Movies", "/Users/ann", "~/Movies"},
        {"the home", "/Users/ann", "/Users/ann", "~"},
        {"with a slash behind", "/Users/ann/", "/Users/ann", "~/"},
        {"another's", "/Users/anna", "/Users/ann", "/Users/anna"},
        {"above it", "/Users", "/Users/ann", "/Users"},
        {"elsewhere", "/Volumes/Takes", "/Users/ann", "/Volumes/Takes"},
        {"inside another path", "/x/Users/ann/y", "/Users/ann", "/x/Users/ann/y"},
        {"no home", "/Users/ann", "", "/Users/ann"},
        {"no path", "", "/Users/ann", ""},
        {"neither", "", "", ""},
        {"a home that ends with a slash", "/Users/ann/Movies", "/Users/ann/", "/Users/ann/Movies"},
        {"the root as home", "/Users", "/", "/Users"},
        {"cases differ", "/users/ann/Movies", "/Users/ann", "/users/ann/Movies"},
        {"the same name, decomposed", "/Users/Rene\u0301/Movies", "/Users/Ren\u00E9", "~/Movies"},
        {"the same name, composed", "/Users/Ren\u00E9", "/Users/Rene\u0301", "~"},
        {"a mark makes another name", "/Users/ann\u0301/Movies", "/Users/ann",
         "/Users/ann\u0301/Movies"},
        {"a mark on the slash", "/Users/ann/\u0301Movies", "/Users/ann", "/Users/ann/\u0301Movies"},
    };
    for (const auto& [what, path, home, shown] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(FolderName::short_(path, home).utf8(), shown.utf8());
    }
}

TEST(FolderName, ShortenedReadsBack) {
    Tests::forAll([](const Text& home, const Text& rest) {
        RC_PRE(!home.isEmpty());
        const Text path = home.utf8() + "/" + rest.utf8();
        const Text shown = FolderName::short_(path, home);
        RC_ASSERT(shown.utf8() == path.utf8() ||
                  home.utf8() + shown.utf8().substr(1) == path.utf8());
    });
}

TEST(StorageFolder, IsTheDeclaredOneOrTheStandardOne) {
    struct Case {
        const char* what;
        std::optional<Text> declared;
        Text name;
        bool isShipping;
    };
    const Case cases[] = {
        {"nothing declared", std::nullopt, "Varnelle", true},
        {"empty", "", "Varnelle", true},
        {"three spaces", "   ", "Varnelle", true},
        {"other white space", "\t\r\n\u00A0", "Varnelle", true},
        {"another build's", "Varnelle Beta", "Varnelle Beta", false},
        {"with white space around", " \u3000Varnelle Beta\n", "Varnelle Beta", false},
        {"the standard one, said", " Varnelle ", "Varnelle", true},
        {"another case", "varnelle", "varnelle", false},
    };
    for (const auto& [what, declared, name, isShipping] : cases) {
        SCOPED_TRACE(what);
        const StorageFolder folder = StorageFolder::fromDeclared(declared);
        EXPECT_EQ(folder.name(), name);
        EXPECT_EQ(folder.isShipping(), isShipping);
        EXPECT_EQ(folder == StorageFolder::fromDeclared(std::nullopt), isShipping);
    }
    EXPECT_EQ(StorageFolder::shipping, "Varnelle");
    EXPECT_EQ(StorageFolder::infoKey, "VarnelleStorageFolder");
}

TEST(StorageFolder, CurrentIsTheStandardOneWithoutABundle) {
    EXPECT_TRUE(StorageFolder::current().isShipping());
}

TEST(FreeSpace, AsksTheVolumeOfThePath) {
    const auto here = std::filesystem::temp_directory_path();
    const auto bytes = FreeSpace::bytesAt(here);
    ASSERT_TRUE(bytes);
    EXPECT_GE(*bytes, 0);
    EXPECT_LE(static_cast<std::uintmax_t>(*bytes), std::filesystem::space(here).capacity);
    EXPECT_EQ(FreeSpace::bytesAt(here / "no such folder" / "take.mov"), std::nullopt);
    EXPECT_EQ(FreeSpace::bytesAt(""), std::nullopt);
}

TEST(VideoBitrate, StaysWithinItsBounds) {
    struct Case {
        const char* what;
        Size size;
        std::int64_t frameRate, bits;
    };
    const Case cases[] = {
        {"full HD", {1920, 1080}, 30, 11'197'440},
        {"720p is raised", {1280, 720}, 30, 8'000'000},
        {"4K is lowered", {3840, 2160}, 60, 40'000'000},
        {"a part of a bit is dropped", {1921, 1081}, 31, 11'587'433},
        {"nothing", {0, 0}, 0, 8'000'000},
        {"turned inside out", {-1920, 1080}, 30, 8'000'000},
        {"both sides", {-1920, -1080}, 30, 11'197'440},
        {"more than 64 bits", {1e150, 1e150}, 1, 40'000'000},
        {"less than 64 bits", {-1e150, 1e150}, 1, 8'000'000},
    };
    for (const auto& [what, size, frameRate, bits] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(VideoBitrate::forSize(size, frameRate), bits);
    }
}

TEST(VideoBitrateDeathTest, ASizeWithoutEndStopsTheProgram) {
    const char* const rule = "a video's bit rate is finite";
    EXPECT_DEATH(std::ignore = VideoBitrate::forSize({infinity, 1}, 30), rule);
    EXPECT_DEATH(std::ignore = VideoBitrate::forSize({1e300, 1e300}, 30), rule);
    EXPECT_DEATH(std::ignore = VideoBitrate::forSize({std::nan(""), 1}, 30), rule);
    EXPECT_DEATH(std::ignore = VideoBitrate::forSize({infinity, 1}, 0), rule);
}

}  // namespace
}  // namespace PrompterCore
