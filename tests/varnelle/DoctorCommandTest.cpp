// `varnelle doctor` on a machine that has everything, and on one that has nothing.

#include <map>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/host/TemporaryFolder.h"
#include "tests/platform/PrivateKeyring.h"
#include "tests/platform/StoredSecrets.h"
#include "tests/varnelle/RunCommand.h"
#include "tests/varnelle/SoundServer.h"

namespace Varnelle::Tests {
namespace {

using PrompterCore::Tests::itemsInKeyring;
using PrompterCore::Tests::PrivateKeyring;

TEST(DoctorCommand, EverythingIsThereWhereEverythingIs) {
    SoundServer sound;
    sound.start();
    sound.addBooth("booth");
    PrivateKeyring session;
    session.startKeyring("password");

    const CommandResult lines = runVarnelle({"doctor"});
    EXPECT_EQ(lines.status, 0);
    EXPECT_EQ(lines.error, "");
    std::istringstream shown(lines.out);
    const char* const names[] = {"speech",   "pronunciations", "microphone",
                                 "keychain", "sound files",    "takes"};
    for (const char* name : names) {
        std::string line;
        std::getline(shown, line);
        EXPECT_EQ(line.rfind(std::string("ok       ") + name, 0), 0u) << line;
    }
    EXPECT_EQ(itemsInKeyring(), 0u) << "what the doctor stores it removes";

    const CommandResult json = runVarnelle({"doctor", "--json"});
    EXPECT_EQ(json.status, 0);
    EXPECT_TRUE(nlohmann::json::parse(json.out).at("isAllThere"));
}

TEST(DoctorCommand, SaysWhatIsMissingAndWhatToDo) {
    SoundServer noSound;
    PrivateKeyring noKeyring;
    const TemporaryFolder noModel;
    const CommandResult result =
        runCommand({"env", "PATH=/nowhere", VARNELLE_PROGRAM, "doctor", "--json"},
                   {.environment = {"VARNELLE_SPEECH_MODEL=" + noModel.path().string()}});
    EXPECT_EQ(result.status, 69);
    EXPECT_EQ(result.error, "");
    const auto found = nlohmann::json::parse(result.out);
    EXPECT_FALSE(found.at("isAllThere"));
    std::map<std::string, std::string> missing;
    for (const auto& finding : found.at("findings")) {
        if (!finding.at("isThere")) missing[finding.at("name")] = finding.at("text");
    }
    ASSERT_EQ(missing.size(), 4u) << result.out;
    EXPECT_EQ(missing["speech"], "the English model is not in " + noModel.path().string() +
                                     "; on Debian: apt-get install --reinstall pocketsphinx-en-us");
    EXPECT_EQ(missing["pronunciations"],
              "without espeak-ng, words that the dictionary lacks are not heard; on Debian: "
              "apt-get install espeak-ng");
    EXPECT_EQ(
        missing["keychain"],
        "Could not use the keychain: No secret service answers on this session's bus. Start one, "
        "as gnome-keyring; on Debian: apt-get install gnome-keyring");
    EXPECT_TRUE(missing["microphone"].ends_with("; start PulseAudio or PipeWire"))
        << missing["microphone"];
}

TEST(DoctorCommand, AFolderThatIsNotUtf8IsToldAsJsonToo) {
    SoundServer noSound;
    PrivateKeyring noKeyring;
    const CommandResult result = runCommand({VARNELLE_PROGRAM, "doctor", "--json"},
                                            {.environment = {"VARNELLE_SPEECH_MODEL=/no/\xFF"}});
    EXPECT_EQ(result.status, 69);
    EXPECT_EQ(nlohmann::json::parse(result.out).at("findings").at(0).at("text"),
              "the English model is not in /no/\uFFFD; on Debian: apt-get install --reinstall "
              "pocketsphinx-en-us");
}

}  // namespace
}  // namespace Varnelle::Tests
