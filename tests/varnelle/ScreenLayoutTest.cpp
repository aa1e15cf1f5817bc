#include <gtest/gtest.h>

#include "PrompterCore/prompter/LineBreaker.h"
#include "apps/varnelle/ScreenLayout.h"
#include "host/Tuning.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"
#include "tests/varnelle/ScreenPicture.h"

namespace Varnelle {
namespace {

using Tests::ScreenPicture;

// A script laid out for a size, and its frames at chosen places.
class Prompter {
public:
    Prompter(std::string_view text, ScreenSize size)
        : size_(size),
          reading_(Script(Text(text)), ScreenLayout::linesFor(Script(Text(text)), size),
                   Tuning::aligner, Tuning::scroll) {}

    Frame frameAt(double position) const {
        return {.time = 0,
                .cursor = static_cast<std::int64_t>(position),
                .position = position,
                .line = LineBreaker::lineIndexFor(position, reading_.lines())};
    }
    ScreenPicture showing(const Frame& frame) const {
        const ScreenView view{.reading = reading_, .frame = frame};
        return {ScreenLayout::spansOf(view, size_), size_};
    }
    ScreenPicture at(double position) const { return showing(frameAt(position)); }
    ScreenPicture beforeTheFirstWord() const { return showing({.cursor = -1}); }

    const ReadThrough& reading() const { return reading_; }
    std::int64_t eye() const { return ScreenLayout::eyeRow(size_); }

private:
    ScreenSize size_;
    ReadThrough reading_;
};

// Six lines of two tokens each, in a column of 10.
constexpr std::string_view sixLines =
    "one two\nthree four\nfive six\nseven eight\nnine ten\neleven twelve";
constexpr ScreenSize low{.rows = 14, .columns = 40};   // one row a line, eye row 4
constexpr ScreenSize tall{.rows = 26, .columns = 40};  // two rows a line, eye row 8

TEST(ScreenLayout, TheLineBeingReadStandsAtTheEyeRow) {
    const Prompter prompter(sixLines, low);
    struct Case {
        double position;
        const char* line;
    };
    for (const auto& [position, line] :
         {Case{0, "one two"}, Case{1.9, "one two"}, Case{2, "three four"}, Case{5.5, "five six"},
          Case{11.99, "eleven twelve"}}) {
        SCOPED_TRACE(position);
        const ScreenPicture picture = prompter.at(position);
        EXPECT_EQ(picture.row(prompter.eye()), std::string("\u25B6\u258E ") + line);
    }
}

TEST(ScreenLayout, LinesBeforeStandAboveAndLinesBehindBelow) {
    const Prompter prompter(sixLines, low);
    const ScreenPicture picture = prompter.at(4);
    EXPECT_EQ(picture.row(2), "   one two");
    EXPECT_EQ(picture.row(3), "   three four");
    EXPECT_EQ(picture.row(5), "   seven eight");
    EXPECT_EQ(picture.row(7), "   eleven twelve");
    EXPECT_EQ(picture.row(8), "");
    EXPECT_EQ(picture.row(1), "");
}

TEST(ScreenLayout, ATallScreenLeavesARowBetweenLinesAndScrollsByHalfLines) {
    const Prompter prompter(sixLines, tall);
    const std::int64_t eye = prompter.eye();
    EXPECT_EQ(prompter.at(4).rowOf("five six"), eye);
    EXPECT_EQ(prompter.at(4).rowOf("three four"), eye - 2);
    EXPECT_EQ(prompter.at(4.9).rowOf("five six"), eye);
    EXPECT_EQ(prompter.at(5).rowOf("five six"), eye - 1);
    EXPECT_EQ(prompter.at(5).rowOf("seven eight"), eye + 1);
    EXPECT_EQ(prompter.at(6).rowOf("seven eight"), eye);
}

TEST(ScreenLayout, TheBandCoversTheLineBeingReadAndSoTheEyeRow) {
    const Prompter prompter(sixLines, tall);
    const std::int64_t eye = prompter.eye();
    EXPECT_EQ(prompter.at(4).row(eye), "\u25B6\u258E five six");
    EXPECT_EQ(prompter.at(4).row(eye + 1), " \u258E");
    EXPECT_EQ(prompter.at(5).row(eye - 1), " \u258E five six");
    EXPECT_EQ(prompter.at(5).row(eye), "\u25B6\u258E");
}

TEST(ScreenLayout, WordsBeforeTheCursorAreRead) {
    const Prompter prompter(sixLines, low);
    const ScreenPicture picture = prompter.at(3);
    EXPECT_EQ(picture.styleOf("one two"), SpanStyle::read);
    EXPECT_EQ(picture.styleOf("three"), SpanStyle::read);
    EXPECT_EQ(picture.styleOf("four"), SpanStyle::reading);
    EXPECT_EQ(picture.styleOf("five six"), SpanStyle::ahead);
}

TEST(ScreenLayout, BeforeTheFirstWordNothingIsRead) {
    const ScreenPicture picture = Prompter(sixLines, low).beforeTheFirstWord();
    EXPECT_EQ(picture.styleOf("one two"), SpanStyle::reading);
    EXPECT_EQ(picture.styleOf("three four"), SpanStyle::ahead);
}

TEST(ScreenLayout, WordsThatTheDisplayHasPassedButNobodyHeardAreNotRead) {
    const Prompter prompter(sixLines, low);
    Frame frame = prompter.frameAt(2.5);
    frame.cursor = 0;
    const ScreenPicture picture = prompter.showing(frame);
    EXPECT_EQ(picture.styleOf("one"), SpanStyle::ahead);
    EXPECT_EQ(picture.styleOf("three four"), SpanStyle::reading);
}

TEST(ScreenLayout, AWordOfSeveralTokensIsReadWithItsLast) {
    const Prompter prompter("about 42 steps", low);
    ASSERT_EQ(prompter.reading().script().words()[1].tokenRange, TokenRange(1, 3));
    EXPECT_EQ(prompter.at(2).styleOf("42 steps"), SpanStyle::reading);
    EXPECT_EQ(prompter.at(3).styleOf("about 42"), SpanStyle::read);
}

TEST(ScreenLayout, PastTheEndTheTextStandsAboveTheEyeRow) {
    const Prompter prompter(sixLines, low);
    Frame frame = prompter.frameAt(12);
    const ScreenPicture picture = prompter.showing(frame);
    EXPECT_EQ(picture.rowOf("eleven twelve"), prompter.eye() - 1);
    EXPECT_EQ(picture.row(prompter.eye()), "\u25B6");
}

TEST(ScreenLayout, HeadingsAreToldApartAndIndentationIsKept) {
    const Prompter prompter("# One\nfirst\n\n    second\n# Two\nthird", low);
    const ScreenPicture picture = prompter.at(0);
    const std::int64_t eye = prompter.eye();
    EXPECT_EQ(picture.row(eye - 1), "   One");
    EXPECT_EQ(picture.styleOf("One"), SpanStyle::readHeading);
    EXPECT_EQ(picture.row(eye + 1), "");
    EXPECT_EQ(picture.row(eye + 2), "       second");
    EXPECT_EQ(picture.row(eye + 3), "   Two");
    EXPECT_EQ(picture.styleOf("Two"), SpanStyle::heading);
}

TEST(ScreenLayout, DeepIndentationLeavesHalfTheColumnToTheText) {
    const Prompter prompter(std::string(50, ' ') + "word", low);
    EXPECT_EQ(prompter.at(0).row(prompter.eye()), "\u25B6\u258E " + std::string(18, ' ') + "word");
}

TEST(ScreenLayout, TheColumnIsCentredAndNeverWiderThanSixty) {
    struct Case {
        std::int64_t columns, width;
    };
    for (const auto& [columns, width] :
         {Case{200, 60}, Case{64, 60}, Case{63, 59}, Case{12, 8}, Case{11, 11}, Case{1, 1}}) {
        SCOPED_TRACE(columns);
        EXPECT_EQ(ScreenLayout::textColumns({.rows = 24, .columns = columns}), width);
    }
    const Prompter wide("word", {.rows = 24, .columns = 164});
    EXPECT_EQ(wide.at(0).row(wide.eye()), std::string(50, ' ') + "\u25B6\u258E word");
}

TEST(ScreenLayout, AWordWiderThanTheColumnGoesOnBelow) {
    const Prompter prompter("abcdefghijkl mno", {.rows = 10, .columns = 12});
    const ScreenPicture picture = prompter.at(0);
    const std::int64_t eye = prompter.eye();
    EXPECT_EQ(picture.row(eye), "\u25B6\u258E abcdefgh");
    EXPECT_EQ(picture.row(eye + 1), " \u258E ijkl");
    EXPECT_EQ(picture.row(eye + 2), "   mno");
}

TEST(ScreenLayout, AWordOfSeveralRowsScrollsRowByRow) {
    const Prompter prompter("abcdefghijkl mno", {.rows = 10, .columns = 12});
    EXPECT_EQ(prompter.at(0.4).rowOf("abcdefgh"), prompter.eye());
    EXPECT_EQ(prompter.at(0.5).rowOf("ijkl"), prompter.eye());
}

TEST(ScreenLayout, WideCharactersAreNeverHalved) {
    const Prompter prompter("\u65E5\u672C\u8A9E\u306E\u6587\u7AE0", {.rows = 10, .columns = 7});
    const ScreenPicture picture = prompter.at(0);
    EXPECT_EQ(picture.row(prompter.eye()), "\u65E5\u672C\u8A9E");
    EXPECT_EQ(picture.row(prompter.eye() + 1), "\u306E\u6587\u7AE0");
}

TEST(ScreenLayout, AWideCharacterInASingleColumnIsReplaced) {
    const Prompter prompter("\u65E5", {.rows = 1, .columns = 1});
    EXPECT_EQ(prompter.at(0).row(0), "\uFFFD");
}

TEST(ScreenLayout, ControlCharactersAreNotShown) {
    using namespace std::string_view_literals;
    const Prompter prompter("a\0b\x1B[31mc\x7F\u009Bd\u202Ee"sv, low);
    EXPECT_EQ(prompter.at(0).row(prompter.eye()), "\u25B6\u258E ab[31mcde");
}

TEST(ScreenLayout, AnEmptyScriptShowsTheEyeLineAndTheStatus) {
    const Prompter prompter("", low);
    const ScreenPicture picture = prompter.beforeTheFirstWord();
    EXPECT_EQ(picture.row(prompter.eye()), "\u25B6");
    EXPECT_EQ(picture.row(12), " listening                    0:00 left");
}

TEST(ScreenLayout, AScriptOfHeadingsShowsThem) {
    const Prompter prompter("# One\n\n# Two", low);
    const ScreenPicture picture = prompter.beforeTheFirstWord();
    EXPECT_EQ(picture.row(prompter.eye()), "\u25B6  One");
    EXPECT_EQ(picture.row(prompter.eye() + 2), "   Two");
}

TEST(ScreenLayout, StatusAndKeysGoBeforeTheLastTextRow) {
    struct Case {
        std::int64_t rows;
        bool hasStatus, hasKeys;
    };
    for (const auto& [rows, hasStatus, hasKeys] :
         {Case{1, false, false}, Case{2, false, false}, Case{3, true, false}, Case{7, true, false},
          Case{8, true, true}}) {
        SCOPED_TRACE(rows);
        const ScreenPicture picture = Prompter("word by word", {.rows = rows, .columns = 40}).at(0);
        EXPECT_TRUE(picture.rowOf("word").has_value());
        EXPECT_EQ(picture.rowOf("listening").has_value(), hasStatus);
        EXPECT_EQ(picture.rowOf("q quit").has_value(), hasKeys);
    }
}

TEST(ScreenLayout, AScreenWithoutRowsOrColumnsIsEmpty) {
    EXPECT_TRUE(Prompter("word", {.rows = 0, .columns = 80}).at(0).spans().empty());
    EXPECT_TRUE(Prompter("word", {.rows = 24, .columns = 0}).at(0).spans().empty());
}

TEST(ScreenLayout, LinesOfAnotherWidthAreStillShown) {
    const ScreenSize narrow{.rows = 10, .columns = 8};
    const Prompter prompter("one two three four", {.rows = 24, .columns = 80});
    const ScreenView view{.reading = prompter.reading(), .frame = prompter.frameAt(0)};
    const ScreenPicture picture(ScreenLayout::spansOf(view, narrow), narrow);
    EXPECT_EQ(picture.misplaced(), std::nullopt);
    EXPECT_EQ(picture.row(ScreenLayout::eyeRow(narrow) + 1), "three fo");
}

TEST(ScreenLayout, EverySpanLiesOnTheScreenWhateverTheTextAndTheSize) {
    PrompterCore::Tests::forAll([](const Text& text) {
        const ScreenSize size{.rows = *rc::gen::inRange<std::int64_t>(0, 30),
                              .columns = *rc::gen::inRange<std::int64_t>(0, 90)};
        const Prompter prompter(text.utf8(), size);
        const auto tokens = static_cast<int>(prompter.reading().script().tokens().size());
        const double position = *rc::gen::inRange(-2, 4 * tokens + 2) / 4.0;
        const ScreenPicture picture = prompter.at(position);
        RC_ASSERT(!picture.misplaced());
        for (const ScreenSpan& span : picture.spans()) {
            for (const char byte : span.text)
                RC_ASSERT(static_cast<unsigned char>(byte) >= 0x20 && byte != 0x7F);
        }
    });
}

TEST(ScreenLayout, ATakeHasItsBarAboveTheStatusAndLeavesTheEyeRow) {
    const Prompter prompter(sixLines, low);
    struct Case {
        PrompterCore::ControllerStatus status;
        const char* label;
        SpanStyle style;
    };
    using Status = PrompterCore::ControllerStatus;
    for (const auto& [status, label, style] :
         {Case{Status::ready(), "Ready", SpanStyle::takeNeutral},
          Case{Status::preparing(), "Getting speech ready", SpanStyle::takeWaiting},
          Case{Status::recording(5), "Recording \u00B7 00:05", SpanStyle::takeRecording},
          Case{Status::countingDown(3), "Recording in 3", SpanStyle::takeRecording},
          Case{Status::practising(), "Practising", SpanStyle::takePractising}}) {
        SCOPED_TRACE(label);
        const ScreenView view{.reading = prompter.reading(),
                              .frame = prompter.frameAt(4),
                              .take = TakeDisplay{.status = status}};
        const ScreenPicture picture(ScreenLayout::spansOf(view, low), low);
        EXPECT_EQ(picture.rowOf(label), 11);
        EXPECT_EQ(picture.styleOf(label), style);
        EXPECT_EQ(picture.rowOf("five six"), prompter.eye());
        EXPECT_EQ(picture.rowOf("listening"), 12);
        EXPECT_EQ(picture.misplaced(), std::nullopt);
    }
}

TEST(ScreenLayout, ThePanelKeepsTheLineJustReadAndShowsTheProgress) {
    const Prompter prompter(sixLines, low);
    ScreenView view{.reading = prompter.reading(), .frame = prompter.frameAt(6), .panel = true};
    const ScreenPicture picture(ScreenLayout::spansOf(view, low), low);
    EXPECT_EQ(picture.row(0), "   five six");
    EXPECT_EQ(picture.row(1), "\u25B6  seven eight");
    EXPECT_EQ(picture.row(2), "   nine ten");
    EXPECT_EQ(picture.styleOf("five six"), SpanStyle::read);
    EXPECT_EQ(picture.styleOf("seven"), SpanStyle::read);
    EXPECT_EQ(picture.styleOf("eight"), SpanStyle::reading);
    EXPECT_EQ(picture.styleOf("nine ten"), SpanStyle::ahead);
    std::string bar = "   ";
    for (int i = 0; i < 36; ++i)
        bar += i < 21 ? "\u2588" : "\u2591";  // 7 of 12 tokens
    EXPECT_EQ(picture.row(11), bar);
    EXPECT_EQ(picture.misplaced(), std::nullopt);

    view.frame = {.cursor = -1};
    const ScreenPicture before(ScreenLayout::spansOf(view, low), low);
    EXPECT_EQ(before.row(0), "\u25B6  one two");
    EXPECT_EQ(before.styleOf("one two"), SpanStyle::reading);
}

TEST(ScreenLayout, ThePanelAndTheBarLieOnTheScreenWhateverTheTextAndTheSize) {
    PrompterCore::Tests::forAll([](const Text& text) {
        const ScreenSize size{.rows = *rc::gen::inRange<std::int64_t>(0, 30),
                              .columns = *rc::gen::inRange<std::int64_t>(0, 90)};
        const Prompter prompter(text.utf8(), size);
        const auto tokens = static_cast<int>(prompter.reading().script().tokens().size());
        const ScreenView view{.reading = prompter.reading(),
                              .frame = {.cursor = *rc::gen::inRange<std::int64_t>(-1, tokens + 1)},
                              .take = TakeDisplay{},
                              .panel = *rc::gen::arbitrary<bool>()};
        RC_ASSERT(!ScreenPicture(ScreenLayout::spansOf(view, size), size).misplaced());
    });
}

TEST(ScreenLayout, TheEyeRowShowsTheLineBeingReadWhereverItIs) {
    const Prompter prompter(sixLines, tall);
    for (int step = 0; step < 12 * 16; ++step) {
        const double position = step / 16.0;
        SCOPED_TRACE(position);
        const ScreenPicture picture = prompter.at(position);
        const std::string shown = picture.row(prompter.eye());
        EXPECT_EQ(shown.substr(0, 6), "\u25B6\u258E") << shown;
    }
}

}  // namespace
}  // namespace Varnelle
