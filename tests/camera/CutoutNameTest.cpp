#include "PrompterCore/camera/CutoutName.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using std::filesystem::path;

TEST(CutoutName, DoesWhatItsManualShows) {
    EXPECT_EQ(CutoutName::fileFor("/Recordings/Take 3.mp4"), "/Recordings/Take 3 cut-out.mov");
    EXPECT_TRUE(CutoutName::isCutout("/Recordings/Take 3 cut-out.mov"));
}

TEST(CutoutName, StandsBesideTheRecordingUnderItsName) {
    const struct {
        const char* what;
        path recording, cutout;
    } cases[] = {
        {"no extension", "/Recordings/Take", "/Recordings/Take cut-out.mov"},
        {"its own extension is kept nowhere", "/a/Take.mov", "/a/Take cut-out.mov"},
        {"full stops in the name", "/a/Talk v1.2.mp4", "/a/Talk v1.2 cut-out.mov"},
        {"two full stops in a row", "/a/Take..mp4", "/a/Take. cut-out.mov"},
        {"a full stop at the end", "/a/Take 3.", "/a/Take 3. cut-out.mov"},
        {"a blank behind the full stop", "/a/Talk v1. Final", "/a/Talk v1. Final cut-out.mov"},
        {"a blank elsewhere behind it", "/a/Talk v1.0 final", "/a/Talk v1.0 final cut-out.mov"},
        {"a mark that steers the direction", "/a/Take.mp\u202E4", "/a/Take.mp\u202E4 cut-out.mov"},
        {"a hidden file", "/a/.take", "/a/.take cut-out.mov"},
        {"a hidden file with an extension", "/a/.take.mp4", "/a/.take cut-out.mov"},
        {"two full stops in front", "/a/..take.mp4", "/a/..take cut-out.mov"},
        {"a full stop in the folder", "/a.b/Take", "/a.b/Take cut-out.mov"},
        {"a separator at the end", "/a/Take 3.mp4/", "/a/Take 3 cut-out.mov"},
        {"more of them", "/a/Take 3.mp4///", "/a/Take 3 cut-out.mov"},
        {"no folder", "Take 3.mp4", "Take 3 cut-out.mov"},
        {"folders as they are written", "/a//b/../Take.mp4", "/a//b/../Take cut-out.mov"},
        {"letters of other scripts", "/a/\u30C6\u30A4\u30AF.mp4",
         "/a/\u30C6\u30A4\u30AF cut-out.mov"},
        {"bytes that are no text", "/a/Take\xFF.mp4", "/a/Take\xFF cut-out.mov"},
        {"an extension that is no text", "/a/Take.m\xFF", "/a/Take cut-out.mov"},
        {"the root", "/", "/ cut-out.mov"},
        {"nothing", "", " cut-out.mov"},
    };
    for (const auto& [what, recording, cutout] : cases) {
        EXPECT_EQ(CutoutName::fileFor(recording).native(), cutout.native()) << what;
    }
}

TEST(CutoutName, CutoutsAreToldFromRecordings) {
    for (const char* const cutout :
         {"/Recordings/Take cut-out.mov", "/Recordings/Take cut-out.mp4", "Take cut-out",
          "/a/Take 3 cut-out.mov/", "/a/ cut-out.mov", "/a/Take\u0600 cut-out.mov",
          "/a/Talk 1.5 cut-out", "/a/\u30C6\u30A4\u30AF cut-out.mov"}) {
        EXPECT_TRUE(CutoutName::isCutout(cutout)) << cutout;
    }
    for (const char* const other :
         {"/Recordings/Take 3.mp4", "/a/Take Cut-out.mov", "/a/Takecut-out.mov", "/a/cut-out.mov",
          "/a/Take cut-out 2.mov", "/a/Take cut-out.mov.part", "/a cut-out/b.mov",
          "/a/Take cut-out\u0301.mov", "", "/"}) {
        EXPECT_FALSE(CutoutName::isCutout(other)) << other;
    }
}

TEST(CutoutName, EveryCutoutIsOneAndStaysInItsFolder) {
    Tests::forAll([] {
        const std::string name = *Tests::bytesOver(
            {"a", ".", " ", "-", "mov", " cut-out", "\u00E9", "\u0600", "\u202E", "\xFF"});
        const path recording = path("/folder.d") / (name + "a");
        const path cutout = CutoutName::fileFor(recording);
        RC_ASSERT(CutoutName::isCutout(cutout));
        RC_ASSERT(cutout.parent_path() == recording.parent_path());
        RC_ASSERT(cutout.native().ends_with(" cut-out.mov"));
        // Whatever the recording's extension is.
        RC_ASSERT(CutoutName::fileFor(recording.native() + ".mp4") ==
                  CutoutName::fileFor(recording.native() + ".m4a"));
    });
}

}  // namespace
}  // namespace PrompterCore
