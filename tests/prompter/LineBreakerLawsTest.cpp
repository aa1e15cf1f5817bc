// The line breaker against a plain one, and what holds for the lines of every script.

#include <string>
#include <utility>
#include <vector>

#include "tests/prompter/Lines.h"
#include "tests/reference/PlainLineBreaker.h"
#include "tests/reference/PlainPrompter.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::linesOf;
using Lines = std::vector<PromptLine>;

struct Layout {
    Lines lines;
    std::vector<std::string> measured;

    friend bool operator==(const Layout&, const Layout&) = default;
};

template <class LinesFor>
Layout layoutBy(LinesFor linesFor) {
    Layout layout;
    layout.lines = linesFor([&layout](std::string_view text) {
        layout.measured.emplace_back(text);
        return Tests::codePointsOf(text);
    });
    return layout;
}

Layout ours(const Script& script, double width) {
    return layoutBy([&](auto measure) {
        return LineBreaker{.width = width, .measure = measure}.linesFor(script);
    });
}

Layout plain(const Script& script, double width) {
    return layoutBy([&](auto measure) { return Plain::linesFor(script, width, measure); });
}

// Words of the script's own kinds, often indented, often with headings and blank lines between.
rc::Gen<Text> scriptText() {
    return Tests::textOver({"word", " ", "\n", "\n\n", "# Title\n", "\n# Title", "a", "don't", "12",
                            "\u2014", "\t", "    ", "\r\n", "\u3000", "e\u0301",
                            "\U0001F1E9\U0001F1EA", "\n\n\n# ", "..."});
}

rc::Gen<double> columnWidth() {
    return rc::gen::map(rc::gen::inRange(0, 40), [](int width) { return width / 2.0; });
}

TEST(LineBreaker, DoesWhatThePlainOneDoesOnEverySmallText) {
    const std::vector<std::string> alphabet = {"a",  " ",      "\n", "\t",         "#", "# ",
                                               "\r", "\u0301", "-",  "\U0001F1E9", "1"};
    std::vector<std::string> texts = {""};
    for (std::size_t from = 0, length = 0; length < 4; ++length) {
        const std::size_t to = texts.size();
        for (; from < to; ++from) {
            for (const std::string& piece : alphabet)
                texts.push_back(texts[from] + piece);
        }
    }
    for (const std::string& text : texts) {
        const Script script{Text(text)};
        for (const double width : {2.0, 5.0}) {
            if (ours(script, width) != plain(script, width)) {
                ADD_FAILURE() << Text(text) << " at width " << width;
                return;
            }
        }
    }
}

// Whole words as pieces reach what single characters do not: several words on indented lines.
TEST(LineBreaker, DoesWhatThePlainOneDoesOnEveryRowOfWords) {
    const std::vector<std::string> alphabet = {"ab ", "c ", "\n", "\n# T\n", "  "};
    std::vector<std::string> texts = {""};
    for (std::size_t from = 0, length = 0; length < 7; ++length) {
        const std::size_t to = texts.size();
        for (; from < to; ++from) {
            for (const std::string& piece : alphabet)
                texts.push_back(texts[from] + piece);
        }
    }
    for (const std::string& text : texts) {
        const Script script{Text(text)};
        if (ours(script, 5) != plain(script, 5)) {
            ADD_FAILURE() << Text(text);
            return;
        }
    }
}

TEST(LineBreaker, DoesWhatThePlainOneDoesOnLargerTexts) {
    const auto law = [](const Text& text) {
        const Script script(text);
        const double width = *columnWidth();
        const Layout expected = plain(script, width);
        const Layout found = ours(script, width);
        RC_ASSERT(found.lines == expected.lines);
        RC_ASSERT(found.measured == expected.measured);
    };
    Tests::forAll([&] { law(*scriptText()); }, 1000);
    Tests::forAll(law, 500);
}

TEST(LineBreaker, WordsAndTokensOfTheLinesTileTheScripts) {
    Tests::forAll(
        [] {
            const Script script(*scriptText());
            std::int64_t word = 0, token = 0;
            for (const PromptLine& line : linesOf(script, *columnWidth())) {
                RC_ASSERT(line.wordRange.lower() == word);
                RC_ASSERT(line.tokenRange.lower() == token);
                RC_ASSERT(line.isBlank() == line.text.isEmpty());
                RC_ASSERT(!line.isBlank() || (line.tokenRange.isEmpty() && line.indent == 0));
                RC_ASSERT(line.isBlank() || !line.heading.has_value());
                word = line.wordRange.upper();
                token = line.tokenRange.upper();
            }
            RC_ASSERT(word == signedCount(script.words().size()));
            RC_ASSERT(token == signedCount(script.tokens().size()));
        },
        1000);
}

TEST(LineBreaker, LineFitsUnlessItIsOneWord) {
    Tests::forAll(
        [] {
            const Script script(*scriptText());
            const double width = *columnWidth();
            for (const PromptLine& line : linesOf(script, width)) {
                const double shown =
                    static_cast<double>(line.indent) + Tests::codePointsOf(line.text.utf8());
                RC_ASSERT(line.wordRange.count() <= 1 || shown <= width);
            }
        },
        500);
}

TEST(LineBreaker, HeadingsStandInOrderEachOnALine) {
    Tests::forAll(
        [] {
            const Script script(*scriptText());
            std::vector<Text> titles, shown;
            for (const ScriptHeading& heading : script.headings())
                titles.push_back(heading.title);
            for (const PromptLine& line : linesOf(script, *columnWidth()))
                if (line.heading) shown.push_back(*line.heading);
            RC_ASSERT(shown == titles);
        },
        500);
}

TEST(LineBreaker, FindsTheLineThatAScanFinds) {
    Tests::forAll(
        [] {
            const Script script(*scriptText());
            const Lines lines = linesOf(script, *columnWidth());
            for (std::int64_t token = -2; token < signedCount(script.tokens().size()) + 2; ++token)
                RC_ASSERT(LineBreaker::lineContaining(token, lines) ==
                          Plain::lineContaining(token, lines));
        },
        500);
}

TEST(LineBreaker, LineIndexRisesWithThePositionFromTheTopToTheEnd) {
    Tests::forAll(
        [] {
            const Script script(*scriptText());
            const Lines lines = linesOf(script, *columnWidth());
            const auto tokens = static_cast<double>(script.tokens().size());
            double before = 0;
            for (double position = -1; position <= tokens + 1; position += 0.125) {
                const double index = LineBreaker::lineIndexFor(position, lines);
                RC_ASSERT(index == Plain::lineIndexFor(position, lines));
                RC_ASSERT(before <= index);
                RC_ASSERT(index <= static_cast<double>(lines.size()));
                before = index;
            }
        },
        500);
}

TEST(LineBreaker, LineStandsAtItsIndexWhenItsFirstTokenIsReached) {
    Tests::forAll(
        [] {
            const Lines lines = linesOf(*scriptText(), *columnWidth());
            for (std::size_t i = 0; i < lines.size(); ++i) {
                if (lines[i].tokenRange.isEmpty()) continue;
                const auto first = static_cast<double>(lines[i].tokenRange.lower());
                RC_ASSERT(LineBreaker::lineIndexFor(first, lines) == static_cast<double>(i));
            }
        },
        500);
}

}  // namespace
}  // namespace PrompterCore
