#include <concepts>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/RecogniserMessages.h"
#include "tests/support/Printing.h"

namespace Varnelle {
namespace {

using Kind = RecogniserMessage::Kind;

static_assert(std::copyable<MessageReader> && std::equality_comparable<MessageReader>);
static_assert(std::copyable<RecogniserMessage> && std::equality_comparable<RecogniserMessage>);

const std::vector<WordsUpdate> updates{
    {.time = 1.2,
     .keep = 3,
     .words = {{"the", 0.9, 1.0, {}}, {"naïve\n", 1.0, 1.2, 0.5}},
     .final = false},
    {.time = 1.3, .keep = 5, .words = {}, .final = true}};

TEST(RecogniserMessages, AreReadAsTheyWereWritten) {
    const std::string bytes = bytesOf({Kind::ready, ""}) + bytesOf({Kind::words, "some words"});
    EXPECT_EQ(bytes, std::string("r\0\0\0\0w\n\0\0\0some words", 20));
    MessageReader reader;
    std::vector<RecogniserMessage> messages;
    for (const char byte : bytes) {
        reader.append({&byte, 1});
        while (const auto message = reader.next()) {
            messages.push_back(*message);
        }
    }
    EXPECT_TRUE(messages ==
                (std::vector<RecogniserMessage>{{Kind::ready, ""}, {Kind::words, "some words"}}));
    EXPECT_FALSE(reader.isBroken());
}

TEST(RecogniserMessages, WhatIsNoMessageBreaksTheStream) {
    const std::string whole = bytesOf({Kind::ready, ""});
    const std::string broken[] = {
        "terminate called",               // no kind
        std::string("R\0\0\0\0", 5),      // none either
        std::string("w\x01\0\0\x01", 5),  // a byte more than the largest content
        std::string("w\xFF\xFF\xFF\xFF", 5),
    };
    for (const std::string& bytes : broken) {
        SCOPED_TRACE(bytes);
        MessageReader reader;
        reader.append(whole + bytes + whole);
        EXPECT_TRUE(reader.next().has_value());
        EXPECT_FALSE(reader.next().has_value());
        EXPECT_TRUE(reader.isBroken());
        EXPECT_FALSE(reader.next().has_value()) << "nothing follows";
    }
}

TEST(RecogniserMessages, ACutOffMessageIsWaitedFor) {
    const std::string whole = bytesOf({Kind::words, "abc"});
    for (std::size_t size = 0; size < whole.size(); ++size) {
        MessageReader reader;
        reader.append(std::string_view(whole).substr(0, size));
        EXPECT_FALSE(reader.next().has_value());
        EXPECT_FALSE(reader.isBroken());
    }
}

TEST(RecogniserMessages, UpdatesAndSamplesReadBack) {
    EXPECT_EQ(updatesFromBytes(bytesOfUpdates(updates)), updates);
    EXPECT_EQ(updatesFromBytes(""), std::vector<WordsUpdate>{});
    const std::vector<float> samples{0, -1, 0.1F, std::numeric_limits<float>::infinity()};
    EXPECT_EQ(samplesFromBytes(bytesOfSamples(samples)), samples);
    EXPECT_EQ(samplesFromBytes(""), std::vector<float>{});
}

TEST(RecogniserMessages, BrokenContentsAreAbsent) {
    EXPECT_EQ(samplesFromBytes("abc"), std::nullopt);
    const std::string line = bytesOfUpdates(updates);
    EXPECT_EQ(updatesFromBytes(line + "{}\n"), std::nullopt);
    EXPECT_EQ(updatesFromBytes(line.substr(0, line.size() - 1)), std::nullopt);
    EXPECT_EQ(updatesFromBytes("\n"), std::nullopt);
    EXPECT_DEATH(
        static_cast<void>(bytesOf({Kind::words, std::string(RecogniserMessage::largest + 1, 'a')})),
        "not too large");
}

}  // namespace
}  // namespace Varnelle
