// What the edits promise, on scripts of many shapes: titles are one trimmed line that begins with a
// letter, bodies hold no heading lines, and a line break is never a lone carriage return.

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "PrompterCore/script/ChapterEdits.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/text/Trims.h"
#include "tests/script/Built.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Strings = std::vector<std::string>;

// A chapter as its title and its trimmed body.
struct Part {
    std::string title, body;
    friend bool operator==(const Part&, const Part&) = default;
};
using Parts = std::vector<Part>;

std::ostream& operator<<(std::ostream& out, const Part& part) {
    return Tests::printRecord(out, "Part", "title", Text(part.title), "body", Text(part.body));
}

std::string slice(const Script& script, std::int64_t lower, std::int64_t upper) {
    return std::string(
        trimmedOfWhiteSpace(script.characters().slice(CharacterRange(lower, upper))));
}

Parts partsOf(const Script& script) {
    Parts parts;
    for (const ScriptChapter& chapter : ScriptChapters::chaptersOf(script)) {
        const CharacterRange heading =
            script.headings()[static_cast<std::size_t>(chapter.index)].sourceRange;
        parts.push_back(
            {chapter.title.utf8(), slice(script, heading.upper(), chapter.sourceRange.upper())});
    }
    return parts;
}

Script applied(const TextEdit& edit, const Script& script) {
    return Script(edit.appliedTo(script.text()));
}

rc::Gen<std::string> title() {
    return rc::gen::element<std::string>("Intro", "A", "\u00C9t\u00E9", "e\u0301 # x",
                                         "\u65E5\u672C \U0001F1E9\U0001F1EA", "B  1");
}

rc::Gen<std::string> body() {
    return rc::gen::map(rc::gen::container<Strings>(rc::gen::element<std::string>(
                            "a", "word ", "\n", "\r\n", "\u2028", " ", "\t", "42",
                            "\U0001F44D\U0001F3FD", "-", "\n  in")),
                        [](const Strings& pieces) {
                            std::string text;
                            for (const std::string& piece : pieces)
                                text += piece;
                            return text;
                        });
}

Script anyScript(int fewestChapters) {
    std::string text = *body();
    const auto chapters = *rc::gen::inRange(fewestChapters, 5);
    for (int i = 0; i < chapters; ++i) {
        if (!text.empty()) text += *rc::gen::element<std::string>("\n", "\r\n", "\n\n\n");
        text += *rc::gen::element<std::string>("", "  ", "\t");
        text += "# " + *title() + *rc::gen::element<std::string>("\n", " \r\n", "\n\n");
        text += *body();
    }
    return Script(Text(text));
}

template <class Law>
void forAllScripts(int fewestChapters, const Law& law) {
    Tests::forAll([&] { law(anyScript(fewestChapters)); }, 400);
}

std::string selected(const TextEdit& edit, const Script& after) {
    return std::string(after.characters().slice(edit.selection.value()));
}

TEST(ChapterEditsLaws, AnInsertedHeadingIsOneMoreAndItsTitleIsSelected) {
    forAllScripts(0, [](const Script& script) {
        const auto position = *rc::gen::inRange<std::int64_t>(-1, script.characters().count() + 2);
        for (const ScriptHeading& heading : script.headings())
            RC_PRE(position <= heading.sourceRange.lower() ||
                   position >= heading.sourceRange.upper());
        const std::string name = *title();
        const TextEdit edit = ChapterEdits::insertHeading(Text(name), position, script);
        const Script after = applied(edit, script);
        RC_ASSERT(selected(edit, after) == name);
        Strings titles = Tests::titles(script);
        std::size_t before = 0;
        while (before < titles.size() &&
               script.headings()[before].sourceRange.lower() < edit.range.lower())
            ++before;
        titles.insert(titles.begin() + static_cast<std::ptrdiff_t>(before), name);
        RC_ASSERT(Tests::titles(after) == titles);
    });
}

TEST(ChapterEditsLaws, AnAddedChapterStandsWhereItWasAskedFor) {
    forAllScripts(0, [](const Script& script) {
        const Part added{*title(), *body()};
        Parts parts = partsOf(script);
        const auto at = *rc::gen::inRange<std::int64_t>(0, signedCount(parts.size()) + 1);
        const bool atEnd = at == signedCount(parts.size());
        const auto edit = ChapterEdits::add(Text(added.title), Text(added.body),
                                            atEnd ? std::nullopt : std::optional(at), script);
        RC_ASSERT(edit.has_value());
        parts.insert(parts.begin() + at,
                     {added.title, std::string(trimmedOfWhiteSpace(added.body))});
        RC_ASSERT(partsOf(applied(*edit, script)) == parts);
    });
}

TEST(ChapterEditsLaws, EachChapterIsRenamedReplacedAndRemovedByItself) {
    forAllScripts(1, [](const Script& script) {
        const Parts parts = partsOf(script);
        const auto at = *rc::gen::inRange<std::int64_t>(0, signedCount(parts.size()));
        const auto index = static_cast<std::size_t>(at);

        const std::string name = *title();
        const auto renamed = ChapterEdits::rename(at, Text(name), script);
        Parts expected = parts;
        expected[index].title = name;
        const Script after = applied(renamed.value(), script);
        RC_ASSERT(partsOf(after) == expected);
        RC_ASSERT(selected(*renamed, after) == name);

        const std::string text = *body();
        expected = parts;
        expected[index].body = trimmedOfWhiteSpace(text);
        RC_ASSERT(partsOf(applied(ChapterEdits::replaceTextOf(at, Text(text), script).value(),
                                  script)) == expected);

        expected = parts;
        expected.erase(expected.begin() + at);
        constexpr bool keepingText = true;
        RC_ASSERT(partsOf(applied(ChapterEdits::remove(at, !keepingText, script).value(),
                                  script)) == expected);
        const Script joined =
            applied(ChapterEdits::remove(at, keepingText, script).value(), script);
        Strings titles = Tests::titles(script);
        titles.erase(titles.begin() + at);
        RC_ASSERT(Tests::titles(joined) == titles);
        RC_ASSERT(Tests::wordTexts(joined) == Tests::wordTexts(script));
    });
}

TEST(ChapterEditsLaws, MovingThereAndBackRestoresTheOrder) {
    forAllScripts(2, [](const Script& script) {
        Parts parts = partsOf(script);
        const auto count = signedCount(parts.size());
        const auto from = *rc::gen::inRange<std::int64_t>(0, count);
        const auto to = *rc::gen::distinctFrom(rc::gen::inRange<std::int64_t>(0, count), from);
        const auto edit = ChapterEdits::move(from, to, script);
        RC_ASSERT(edit.has_value());
        const Script there = applied(*edit, script);
        const Script back = applied(ChapterEdits::move(to, from, there).value(), there);
        RC_ASSERT(partsOf(back) == parts);
        const Part moved = parts[static_cast<std::size_t>(from)];
        parts.erase(parts.begin() + from);
        parts.insert(parts.begin() + to, moved);
        RC_ASSERT(partsOf(there) == parts);
        // What stands before the first chapter stays as it is.
        RC_ASSERT(there.headings()[0].sourceRange.lower() ==
                  script.headings()[0].sourceRange.lower());
        // From then on the chapters are spaced alike, and moving changes nothing else.
        RC_ASSERT(applied(ChapterEdits::move(from, to, back).value(), back).text().utf8() ==
                  there.text().utf8());
    });
}

TEST(ChapterEditsLaws, EveryEditLiesWithinTheScriptItWasMadeFrom) {
    Tests::forAll([](const Text& before, const Text& anyTitle, const Text& anyBody) {
        const Text text(before.utf8() + "\n# A\n" + anyBody.utf8() + "\n\t# B" + before.utf8());
        const Script script(text);
        const auto chapter = *rc::gen::inRange<std::int64_t>(-1, 3);
        const auto other = *rc::gen::inRange<std::int64_t>(-1, 3);
        const bool keepingText = *rc::gen::arbitrary<bool>();
        const std::optional<TextEdit> edits[] = {
            ChapterEdits::insertHeading(anyTitle, chapter * 3, script),
            ChapterEdits::add(anyTitle, anyBody, std::nullopt, script),
            ChapterEdits::add(anyTitle, anyBody, chapter, script),
            ChapterEdits::rename(chapter, anyTitle, script),
            ChapterEdits::replaceTextOf(chapter, anyBody, script),
            ChapterEdits::remove(chapter, keepingText, script),
            ChapterEdits::move(chapter, other, script),
        };
        for (const std::optional<TextEdit>& edit : edits)
            if (edit) static_cast<void>(edit->appliedTo(text));
    });
}

}  // namespace
}  // namespace PrompterCore
