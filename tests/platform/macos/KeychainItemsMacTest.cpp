// Our source for macOS, run over a stand-in for its frameworks: what it asks for, and what it
// leaves.

#include <gtest/gtest.h>

#include "PrompterCore/platform/Keychain.h"
#include "tests/platform/KeychainWorld.h"
#include "tests/platform/macos/Objects.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

using Tests::KeychainQuery;
using Tests::keychainWorld;

class KeychainItemsMacTest : public ::testing::Test {
protected:
    KeychainItemsMacTest() { keychainWorld() = {}; }
    ~KeychainItemsMacTest() override { EXPECT_EQ(StandIn::liveObjects(), 0) << "something leaked"; }

    const Keychain keychain{"com.example.caf\u00E9"};
    const Tests::KeychainAttributes item = {{"kSecClass", "kSecClassGenericPassword"},
                                            {"kSecAttrService", "com.example.caf\u00E9"}};
};

TEST_F(KeychainItemsMacTest, ReadAsksForTheBytesOfOneItem) {
    static_cast<void>(keychain.read());
    auto query = item;
    query["kSecReturnData"] = "true";
    query["kSecMatchLimit"] = "kSecMatchLimitOne";
    ASSERT_EQ(keychainWorld().queries.size(), 1u);
    EXPECT_EQ(keychainWorld().queries[0], KeychainQuery{query});
}

TEST_F(KeychainItemsMacTest, WriteTouchesNothingButClassServiceAndData) {
    keychain.write(" abc ");
    const Tests::KeychainAttributes change = {{"kSecValueData", "abc"}};
    auto added = item;
    added["kSecValueData"] = "abc";
    ASSERT_EQ(keychainWorld().queries.size(), 2u);
    EXPECT_EQ(keychainWorld().queries[0], (KeychainQuery{item, change}));
    EXPECT_EQ(keychainWorld().queries[1], KeychainQuery{added});
}

TEST_F(KeychainItemsMacTest, RemoveNamesClassAndService) {
    keychain.remove();
    ASSERT_EQ(keychainWorld().queries.size(), 1u);
    EXPECT_EQ(keychainWorld().queries[0], KeychainQuery{item});
}

TEST_F(KeychainItemsMacTest, ResultThatIsNoBlockOfBytesReadsAsNoValue) {
    keychain.write("abc");
    keychainWorld().answersWithText = true;
    EXPECT_EQ(keychain.read(), std::nullopt);
}

TEST_F(KeychainItemsMacTest, NothingLeaksWhateverIsAnswered) {
    keychainWorld().messages[-25308] = "User interaction is not allowed.";
    keychain.write("abc");
    EXPECT_EQ(keychain.read(), Text("abc"));
    keychainWorld().refusals = {{Tests::KeychainCall::update, -25308},
                                {Tests::KeychainCall::copyMatching, -25308},
                                {Tests::KeychainCall::remove, -25308}};
    EXPECT_EQ(keychain.read(), std::nullopt);
    EXPECT_THROW(keychain.write("def"), Keychain::Failure);
    EXPECT_THROW(keychain.remove(), Keychain::Failure);
}

}  // namespace
}  // namespace PrompterCore
