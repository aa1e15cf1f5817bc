// Each form's own shapes and traps.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/words/WordParts.h"
#include "tests/host/WordsWriters.h"
#include "tests/support/Printing.h"

namespace Varnelle {
namespace {

using namespace Tests;  // NOLINT

WordsRead readIn(WordsFormat format, std::string_view text,
                 WordsArrival arrival = WordsArrival::recorded) {
    const auto reader = wordsReader(format, arrival);
    return readAll(*reader, text);
}

// "behind 0.600 1.050|me 1.050 1.200"
std::string shown(const std::vector<HeardWord>& words) {
    std::string all;
    for (const HeardWord& word : words) {
        all += (all.empty() ? "" : "|") + word.word.utf8() + " " + decimal(word.start) + " " +
               decimal(word.end);
    }
    return all;
}

std::string wordsOfText(WordsFormat format, std::string_view text) {
    const WordsRead read = readIn(format, text);
    EXPECT_TRUE(read.broken.empty()) << read.broken.front().why;
    return shown(wordsIn(read));
}

std::vector<std::string> brokenIn(WordsFormat format, std::string_view text) {
    std::vector<std::string> all;
    for (const BrokenPart& broken : readIn(format, text).broken) {
        all.push_back(std::to_string(broken.line) + ": " + broken.why);
    }
    return all;
}

using Strings = std::vector<std::string>;

TEST(WordParts, PhrasesShareOutTheirTimeByLetters) {
    EXPECT_EQ(shown(wordsOf("Behind me", 1.0, 1.8)), "Behind 1.000 1.600|me 1.600 1.800");
    EXPECT_EQ(shown(wordsOf("  one ", 1.0, 2.0)), "one 1.000 2.000");
    EXPECT_EQ(shown(wordsOf("a bc", 0.0, 0.001)), "a 0.000 0.000|bc 0.000 0.001");
    EXPECT_EQ(shown(wordsOf("e\u0301 \u00E9", 0.0, 1.0)), "e\u0301 0.000 0.500|\u00E9 0.500 1.000");
    EXPECT_EQ(shown(wordsOf("[Music] so [loud] it", 0.0, 0.4)), "so 0.000 0.200|it 0.200 0.400");
    EXPECT_EQ(shown(wordsOf("[open so", 0.0, 0.7)), "[open 0.000 0.500|so 0.500 0.700");
    EXPECT_EQ(shown(wordsOf(" \n", 0.0, 1.0)), "");
    EXPECT_EQ(shown(wordsOf("", 0.0, 1.0)), "");
}

TEST(WordParts, NoisesAndMarksOfVariantsAreNotSpoken) {
    for (const char* noise :
         {"<s>", "</s>", "<sil>", "<eps>", "[NOISE]", "[unk]", "++breath++", ""})
        EXPECT_EQ(spokenWord(noise), std::nullopt) << noise;
    EXPECT_EQ(spokenWord("read(2)"), "read");
    EXPECT_EQ(spokenWord("f(x)"), "f(x)");
    EXPECT_EQ(spokenWord("(2)"), "(2)");
    EXPECT_EQ(spokenWord("<>"), "<>");
    EXPECT_EQ(spokenWord("it's"), "it's");
}

constexpr std::string_view voskUtterance = R"({
  "result" : [{
      "conf" : 0.981000,
      "end" : 1.050000,
      "start" : 0.600000,
      "word" : "behind"
    }, {
      "conf" : 1.000000,
      "end" : 1.200000,
      "start" : 1.050000,
      "word" : "me"
    }],
  "text" : "behind me"
}
)";

TEST(VoskWords, AnUtteranceGivesItsWordsAsTheyAreSaid) {
    const WordsRead read = readIn(WordsFormat::vosk, voskUtterance);
    EXPECT_TRUE(read.broken.empty());
    ASSERT_EQ(read.updates.size(), 2U);
    EXPECT_EQ(read.updates[0].time, 1.05);
    EXPECT_EQ(read.updates[0].words[0].confidence, 0.981);
    EXPECT_EQ(read.updates[1],
              (WordsUpdate{.time = 1.2,
                           .keep = 1,
                           .words = {{.word = "me", .start = 1.05, .end = 1.2, .confidence = 1.0}},
                           .final = true}));
}

TEST(VoskWords, PartialsAreRevisedAndSettled) {
    const std::string text =
        R"({"partial":"be","partial_result":[{"word":"be","start":0.6,"end":0.8,"conf":1}]})"
        "\n"
        R"({"partial":"behind","partial_result":[{"word":"behind","start":0.6,"end":1.0}]})"
        "\n"
        R"({"partial":"behind","partial_result":[{"word":"behind","start":0.6,"end":1.05}]})"
        "\n" +
        std::string(voskUtterance) + R"({"partial" : ""})" + "\n" + R"({"text" : ""})" + "\n";
    const WordsRead read = readIn(WordsFormat::vosk, text);
    EXPECT_TRUE(read.broken.empty());
    ASSERT_EQ(read.updates.size(), 3U) << "nothing new is no update";
    EXPECT_EQ(read.updates[0].keep, 0);
    EXPECT_FALSE(read.updates[0].final);
    EXPECT_EQ(read.updates[1].keep, 0) << "be is withdrawn";
    EXPECT_EQ(read.updates[2].keep, 1) << "behind stays";
    EXPECT_EQ(read.updates[2].time, 1.2);
    EXPECT_TRUE(read.updates[2].final);
    EXPECT_EQ(shown(wordsIn(read)), "behind 0.600 1.000|me 1.050 1.200");
}

TEST(VoskWords, PartialsWithoutTimesCountWhenTheyCome) {
    const std::string text = std::string(voskUtterance) +
                             "{\n  \"partial\" : \"stands a\"\n}\n{\n  \"partial\" : \"\"\n}\n";
    const WordsRead live = readIn(WordsFormat::vosk, text, WordsArrival::live);
    ASSERT_EQ(live.updates.size(), 4U);
    EXPECT_EQ(live.updates[2].keep, 2);
    EXPECT_EQ(live.updates[2].words.size(), 2U);
    EXPECT_EQ(live.updates[2].time, 1.2);
    EXPECT_EQ(live.updates[3].keep, 2);
    EXPECT_TRUE(live.updates[3].words.empty()) << "withdrawn";
    EXPECT_EQ(readIn(WordsFormat::vosk, text).updates.size(), 2U) << "nobody knows when";
}

TEST(VoskWords, UtterancesWithoutTimesAreOnlyFollowedLive) {
    const char* text = "{\"text\" : \"behind me\"}\n";
    EXPECT_EQ(brokenIn(WordsFormat::vosk, text),
              Strings{"1: the words have no times; make the recogniser say them"});
    EXPECT_EQ(shown(wordsIn(readIn(WordsFormat::vosk, text, WordsArrival::live))),
              "behind 0.000 0.000|me 0.000 0.000");
}

TEST(VoskWords, OfAlternativesTheFirstCounts) {
    EXPECT_EQ(wordsOfText(WordsFormat::vosk,
                          R"({"alternatives":[{"confidence":220.5,"result":[
{"end":1.05,"start":0.6,"word":"behind"}],"text":" behind"},{"confidence":210,"result":[
{"end":1.05,"start":0.6,"word":"be"}],"text":" be"}]})"),
              "behind 0.600 1.050");
}

TEST(VoskWords, BrokenObjectsAreNamedAndTheRestGoesOn) {
    const std::string text =
        "LOG (VoskAPI) loaded\n{\"result\":[{\"word\":1}]}\n{\n \"result\" : [{\n" +
        std::string(voskUtterance) + "{\"nothing\":1}\n{\"text\":";
    EXPECT_EQ(brokenIn(WordsFormat::vosk, text),
              (Strings{"1: this is no whole JSON object", "2: \"word\" is no text",
                       "3: this is no whole JSON object", "19: \"text\" is missing",
                       "20: this is no whole JSON object"}));
    EXPECT_EQ(shown(wordsIn(readIn(WordsFormat::vosk, text))), "behind 0.600 1.050|me 1.050 1.200");
}

std::string whisperDocument(const std::string& segments) {
    return "{\n\t\"systeminfo\": \"AVX = 1\",\n\t\"model\": {\"type\": \"base\"},\n"
           "\t\"result\": {\"language\": \"en\"},\n\t\"transcription\": [\n" +
           segments + "\n\t]\n}\n";
}

TEST(WhisperWords, PiecesMakeWords) {
    const char* segment = R"({"timestamps":{"from":"00:00:00,600","to":"00:00:02,000"},
"offsets":{"from":600,"to":2000},"text":" Lighthouse, it's",
"tokens":[
{"text":"[_BEG_]","offsets":{"from":0,"to":0},"id":50364,"p":0.9,"t_dtw":-1},
{"text":" Light","offsets":{"from":600,"to":900},"p":0.9},
{"text":"house","offsets":{"from":900,"to":1200},"p":0.7},
{"text":",","offsets":{"from":1200,"to":1210},"p":0.8},
{"text":" it","offsets":{"from":1300,"to":1400},"p":0.99},
{"text":"'s","offsets":{"from":1400,"to":1500},"p":0.98},
{"text":"[_TT_70]","offsets":{"from":1500,"to":1500},"p":0.1}]})";
    const WordsRead read = readIn(WordsFormat::whisper, whisperDocument(segment));
    EXPECT_TRUE(read.broken.empty());
    EXPECT_EQ(shown(wordsIn(read)), "Lighthouse, 0.600 1.210|it's 1.300 1.500");
    EXPECT_EQ(wordsIn(read)[0].confidence, 0.7);
}

TEST(WhisperWords, SegmentsWithoutPiecesAreSplitByLetters) {
    EXPECT_EQ(
        wordsOfText(WordsFormat::whisper,
                    whisperDocument(R"({"offsets":{"from":1000,"to":1800},"text":" Behind me"},
{"offsets":{"from":1800,"to":2000},"text":" [BLANK_AUDIO]"},
{"offsets":{"from":2000,"to":2500},"text":" st"},{"offsets":{"from":2500,"to":2700},"text":"ands"})")),
        "Behind 1.000 1.600|me 1.600 1.800|stands 2.000 2.700")
        << "a segment that begins without a space goes on with the word before it";
}

TEST(WhisperWords, ACharacterCutInTwoPiecesIsWhole) {
    const std::string segment =
        "{\"offsets\":{\"from\":0,\"to\":900},\"text\":\" \u65E5\",\"tokens\":["
        "{\"text\":\" \xE6\x97\",\"offsets\":{\"from\":0,\"to\":400}},"
        "{\"text\":\"\xA5\",\"offsets\":{\"from\":400,\"to\":900}}]}";
    EXPECT_EQ(wordsOfText(WordsFormat::whisper, whisperDocument(segment)), "\u65E5 0.000 0.900");
}

TEST(WhisperWords, WithoutSpacesASegmentIsAllThatIsKnown) {
    EXPECT_EQ(
        wordsOfText(WordsFormat::whisper,
                    whisperDocument("{\"offsets\":{\"from\":0,\"to\":500},\"text\":\"\u65E5\"},"
                                    "{\"offsets\":{\"from\":500,\"to\":900},\"text\":\"\u672C\"}")),
        "\u65E5 0.000 0.500|\u672C 0.500 0.900");
}

TEST(WhisperWords, ACutDocumentGivesWhatIsThere) {
    const std::string whole = whisperDocument(
        "{\"offsets\":{\"from\":0,\"to\":500},\"text\":\" one\"},\n"
        "{\"offsets\":{\"from\":500},\"text\":\" two\"},\n"
        "{\"offsets\":{\"from\":900,\"to\":1000},\"text\":\" three\"}");
    const std::string cut = whole.substr(0, whole.find("three"));
    EXPECT_EQ(brokenIn(WordsFormat::whisper, cut),
              (Strings{"7: \"to\" is missing", "8: this is no whole JSON object"}));
    EXPECT_EQ(shown(wordsIn(readIn(WordsFormat::whisper, cut))), "one 0.000 0.500");
    EXPECT_EQ(shown(wordsIn(readIn(WordsFormat::whisper, whole))),
              "one 0.000 0.500|three 0.900 1.000");
}

TEST(SherpaWords, APieceLastsUntilTheNext) {
    const char* text =
        R"({"text":" BEHIND ME","tokens":[" BE","HIND"," ME"],"timestamps":[0.6,0.84,1.05],"start_time":1.0})"
        "\n";
    EXPECT_EQ(wordsOfText(WordsFormat::sherpa, text), "BEHIND 1.600 2.050|ME 2.050 2.350");
}

TEST(SherpaWords, WhatIsNotFinalIsReplaced) {
    const char* text = R"({"tokens":[" BE"],"timestamps":[0.6],"is_final":false}
{"tokens":[" BE","HIND"],"timestamps":[0.6,0.8],"is_final":true}
{"tokens":[" ME"],"timestamps":[1.0],"is_final":false}
)";
    const WordsRead read = readIn(WordsFormat::sherpa, text);
    ASSERT_EQ(read.updates.size(), 3U);
    EXPECT_EQ(read.updates[1].keep, 0);
    EXPECT_TRUE(read.updates[1].final);
    EXPECT_EQ(read.updates[2].keep, 1);
    EXPECT_EQ(shown(wordsIn(read)), "BEHIND 0.600 1.100|ME 1.000 1.300");
}

TEST(SherpaWords, TimesMustBeThere) {
    EXPECT_EQ(brokenIn(WordsFormat::sherpa,
                       "{\"tokens\":[\" A\"]}\n{\"tokens\":[\" A\"],\"timestamps\":[]}\n"),
              (Strings{"1: \"timestamps\" is missing", "2: not every token has its time"}));
}

TEST(CtmWords, ALineIsAWord) {
    EXPECT_EQ(wordsOfText(WordsFormat::ctm,
                          ";; comment\n\ntalk 1 0.60 0.45 behind 0.98\r\n"
                          "talk\t1  1.05 .15 me\ntalk 1 1.2 0.4 <sil> 1.0\ntalk 1 1.6 0 a(2) NA\n"),
              "behind 0.600 1.050|me 1.050 1.200|a 1.600 1.600");
    const auto words = wordsIn(readIn(WordsFormat::ctm, "t A 0 1 a 0.5\nt B 1 1 b\nt A 2 1 c 7\n"));
    ASSERT_EQ(words.size(), 3U);
    EXPECT_EQ(words[0].confidence, 0.5);
    EXPECT_EQ(words[1].confidence, std::nullopt);
    EXPECT_EQ(words[2].confidence, std::nullopt) << "no confidence is 7";
}

TEST(CtmWords, OfAlternativesTheFirstCounts) {
    EXPECT_EQ(wordsOfText(WordsFormat::ctm,
                          "t 1 * * <ALT_BEGIN>\nt 1 0.1 0.1 uh\nt 1 * * <ALT>\nt 1 0.1 0.1 um\n"
                          "t 1 * * <ALT>\nt 1 0.1 0.1 @\nt 1 * * <ALT_END>\nt 1 0.3 0.1 so\n"),
              "uh 0.100 0.200|so 0.300 0.400");
}

TEST(CtmWords, BrokenLinesAreNamedAndTheRestGoesOn) {
    EXPECT_EQ(
        brokenIn(WordsFormat::ctm,
                 "t 1 0 1 a\nt 1 0 1\nt 1 x 1 a\nt 1 0 -1 a\nt 1 nan 1 a\nu 1 0 1 a\n"),
        (Strings{"2: a word needs recording, channel, start, duration and word",
                 "3: the start is no time in seconds", "4: the duration is no time in seconds",
                 "5: the start is no time in seconds",
                 "6: the word is of another recording than the first, t"}));
}

TEST(CaptionWords, CuesAreSplitByLetters) {
    const std::string expected = "Behind 1.000 1.600|me 1.600 1.800|stands 2.000 3.000";
    EXPECT_EQ(wordsOfText(WordsFormat::srt,
                          "1\n00:00:01,000 --> 00:00:01,800\nBehind\nme\n\n\n"
                          "2\n00:00:02,000 --> 00:00:03,000 X1:40 X2:600\n{\\an8}<i>stands</i>"),
              expected);
    EXPECT_EQ(
        wordsOfText(WordsFormat::webVtt,
                    "WEBVTT - title\nKind: captions\n\nNOTE\n00:01.000 --> is no cue\n\n"
                    "STYLE\n::cue { color: red }\n\nintro\n00:01.000 --> 00:01.800 align:start\n"
                    "<v Ann>Behind <c.red>me</c>\n\n0:00:02.000 --> 00:00:03\nstands\n"),
        expected);
}

TEST(CaptionWords, TimesInACueCutIt) {
    EXPECT_EQ(wordsOfText(WordsFormat::webVtt,
                          "WEBVTT\n\n00:00.600 --> 00:01.660\n"
                          "Behind<00:00:01.050><c> me</c> <00:01.200>stands<99:99:99.000>\n"),
              "Behind 0.600 1.050|me 1.050 1.200|stands 1.200 1.660");
}

TEST(CaptionWords, EntitiesAreCharacters) {
    EXPECT_EQ(
        wordsOfText(WordsFormat::webVtt,
                    "WEBVTT\n\n00:00.000 --> 00:01.000\nAT&amp;T&nbsp;&lt;x&gt;&lrm; &odd;\n"),
        "AT&T 0.000 0.333|<x> 0.333 0.583|&odd; 0.583 1.000");
}

TEST(CaptionWords, WhatRollsUpIsReadOnce) {
    EXPECT_EQ(wordsOfText(WordsFormat::webVtt,
                          "WEBVTT\n\n00:00.000 --> 00:01.000\n \nbehind<00:00.500><c> me</c>\n\n"
                          "00:01.000 --> 00:01.010\nbehind me\n \n\n"
                          "00:01.010 --> 00:02.010\nbehind me\nstands<00:01.500><c> a</c>\n"),
              "behind 0.000 0.500|me 0.500 1.000|stands 1.010 1.500|a 1.500 2.010");
    EXPECT_EQ(wordsOfText(WordsFormat::srt,
                          "1\n00:00:00,000 --> 00:00:01,000\nNo.\n\n"
                          "2\n00:00:01,000 --> 00:00:02,000\nNo.\n"),
              "No. 0.000 1.000|No. 1.000 2.000")
        << "said twice";
}

TEST(CaptionWords, OverlappingCuesAreReadInTheOrderOfTheirWords) {
    const WordsRead read = readIn(WordsFormat::srt,
                                  "2\n00:00:02,000 --> 00:00:03,000\nthree\n\n"
                                  "1\n00:00:00,000 --> 00:00:04,000\none four\n");
    EXPECT_EQ(shown(wordsIn(read)), "one 0.000 1.714|four 1.714 4.000|three 2.000 3.000");
}

TEST(CaptionWords, BrokenCuesAreNamedAndTheRestGoesOn) {
    EXPECT_EQ(brokenIn(WordsFormat::srt,
                       "1\n00:00:01,000 --> nonsense\nlost\n\n2\n00:00:03,000 --> 00:00:02,000\n"
                       "lost\n\nlost\n\n4\n00:00:05,000 --> 00:00:06,000\nheard\n"),
              (Strings{"2: the times cannot be read", "6: the cue ends before it starts",
                       "9: a cue has no times"}));
}

}  // namespace
}  // namespace Varnelle
