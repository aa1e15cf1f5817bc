#include <concepts>
#include <cstdint>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "PrompterCore/library/LibraryTree.h"
#include "tests/library/Items.h"
#include "tests/support/Generators.h"
#include "tests/support/Printing.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::chain;
using Tests::folder;
using Tests::script;
using Items = std::vector<ScriptItem>;
using Texts = std::vector<Text>;

static_assert(std::copyable<ScriptItem> && std::equality_comparable<ScriptItem>);

const Locale english = Locale::fromIdentifier("en").value();

const Items library = {
    folder("Talks",
           {folder("Talks/2024", {script("Talks/2024/Keynote"), script("Talks/2024/Demo")}),
            script("Talks/Intro")}),
    folder("Empty"),
    script("Notes"),
};

TEST(ScriptItem, DoesWhatItsManualShows) {
    const ScriptItem item{
        .id = "Talks",
        .name = "Talks",
        .kind = ScriptItem::Kind::folder,
        .children = {
            {{.id = "Talks/Keynote", .name = "Keynote", .kind = ScriptItem::Kind::script}}}};
    EXPECT_TRUE(item.isFolder());
    ASSERT_EQ(item.children->size(), 1U);
    EXPECT_FALSE(item.children->front().isFolder());
    EXPECT_EQ(item.children->front().children, std::nullopt) << "left out, they are absent";
}

TEST(LibraryTree, FindsTheFirstItemDepthFirst) {
    EXPECT_EQ(LibraryTree::find("Talks/2024/Demo", library), script("Talks/2024/Demo"));
    EXPECT_EQ(LibraryTree::find("Talks", library), library[0]);
    EXPECT_EQ(LibraryTree::find("Talk", library), std::nullopt);
    const ScriptItem deep{"x", "deep", ScriptItem::Kind::script, {}};
    const ScriptItem late{"x", "late", ScriptItem::Kind::script, {}};
    EXPECT_EQ(LibraryTree::find("x", {folder("a", {deep}), late}), deep);
    EXPECT_EQ(LibraryTree::find("cafe\u0301", {script("caf\u00E9")}), script("caf\u00E9"));
}

TEST(LibraryTree, TheParentIsThePathWithoutItsLastComponent) {
    struct Case {
        Text id;
        std::optional<Text> parent;
    };
    const Case cases[] = {
        {"Talks/2024/Keynote", "Talks/2024"},
        {"a/b/c", "a/b"},
        {"Keynote", {}},
        {"a", {}},
        {"/a/", {}},
        {"a//b", "a"},
        {"//a///b//c/", "a/b"},
        {"", {}},
        {"///", {}},
        {"caf\u00E9/x", "cafe\u0301"},
        {"a\u2215b/c", "a\u2215b"},
    };
    for (const auto& [id, parent] : cases) {
        SCOPED_TRACE(id.utf8());
        EXPECT_EQ(LibraryTree::parentIDOf(id), parent);
    }
}

TEST(LibraryTree, ADescendantsPathGoesThroughItsAncestor) {
    struct Case {
        Text id, ancestor;
        bool isBelow;
    };
    const Case cases[] = {
        {"a/b", "a", true},     {"ab/c", "a", false},
        {"a", "a", false},      {"a/b/c", "a", true},
        {"a/b/c", "a/b", true}, {"a/", "a", true},
        {"a", "a/b", false},    {"cafe\u0301/b", "caf\u00E9", true},
        {"A/b", "a", false},
    };
    for (const auto& [id, ancestor, isBelow] : cases) {
        SCOPED_TRACE(id.utf8() + " below " + ancestor.utf8());
        EXPECT_EQ(LibraryTree::isDescendant(id, ancestor), isBelow);
    }
}

TEST(LibraryTree, AncestorsAreThoseThatExistOutermostFirst) {
    EXPECT_EQ(LibraryTree::ancestorsOf("Talks/2024/Keynote", library),
              (Items{library[0], library[0].children->at(0)}));
    EXPECT_EQ(LibraryTree::ancestorsOf("a/b/c", {folder("a")}), Items{folder("a")});
    EXPECT_EQ(LibraryTree::ancestorsOf("Notes", library), Items{});
    EXPECT_EQ(LibraryTree::ancestorsOf("nowhere/at/all", library), Items{});
}

TEST(LibraryTree, SomethingNewGoesIntoTheSelectedFolderOrBesideTheSelectedScript) {
    struct Case {
        std::optional<Text> selected, folder;
    };
    const Case cases[] = {
        {{}, {}},
        {"nowhere", {}},
        {"Talks/2024", "Talks/2024"},
        {"Talks/2024/Demo", "Talks/2024"},
        {"Notes", {}},
    };
    for (const auto& [selected, folder] : cases)
        EXPECT_EQ(LibraryTree::insertionFolderFor(selected, library), folder);
}

TEST(LibraryTree, OpensTheRememberedScriptOrTheFirst) {
    const auto first = script("Talks/2024/Keynote");
    EXPECT_EQ(LibraryTree::scriptToOpen("Notes", library), script("Notes"));
    EXPECT_EQ(LibraryTree::scriptToOpen("Talks", library), first);
    EXPECT_EQ(LibraryTree::scriptToOpen("gone", library), first);
    EXPECT_EQ(LibraryTree::scriptToOpen({}, library), first);
    EXPECT_EQ(LibraryTree::firstScript(library), first);
    EXPECT_EQ(LibraryTree::firstScript({folder("a"), folder("b", {folder("b/c")})}), std::nullopt);
    ScriptItem childless = folder("a");
    childless.children.reset();
    EXPECT_EQ(LibraryTree::firstScript({childless, script("z")}), script("z"));
}

TEST(LibraryTree, ASearchKeepsWhatMatchesAndWhatLeadsToIt) {
    const Items keynotes = {folder("Keynotes", {script("Keynotes/Intro")})};
    struct Case {
        const char* what;
        Items items;
        Text query;
        Items kept;
    };
    const Case cases[] = {
        {"blanks alone find everything", library, "  ", library},
        {"a tab is a blank", library, "\t", library},
        {"a matching folder keeps all inside", keynotes, "key", keynotes},
        {"a match below keeps its branch",
         library,
         " DEMO ",
         {folder("Talks", {folder("Talks/2024", {script("Talks/2024/Demo")})})}},
        {"ids do not count",
         {ScriptItem{"match", "other", ScriptItem::Kind::script, {}}},
         "match",
         {}},
        {"nothing", library, "zebra", {}},
        {"a letter is not found in an accented one", {script("caf\u00E9")}, "e", {}},
        {"composed finds decomposed", {script("cafe\u0301")}, "F\u00C9", {script("cafe\u0301")}},
        {"sharp s", {script("Stra\u00DFe")}, "STRASSE", {script("Stra\u00DFe")}},
        {"half a sharp s", {script("Ma\u00DF")}, "mas", {}},
    };
    for (const auto& [what, items, query, kept] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(LibraryTree::filtered(items, query, english), kept);
    }
}

TEST(LibraryTree, TheLetterIFollowsTheLocale) {
    const Locale turkish = Locale::fromIdentifier("tr_TR").value();
    const Items dotless = {script("KAPI")};
    EXPECT_EQ(LibraryTree::filtered(dotless, "kapi", english), dotless);
    EXPECT_EQ(LibraryTree::filtered(dotless, "kapi", turkish), Items{});
    EXPECT_EQ(LibraryTree::filtered(dotless, "kap\u0131", turkish), dotless);
}

TEST(LibraryTree, ListsFoldersAtEveryDepth) {
    EXPECT_EQ(LibraryTree::folderIDs(library), (Texts{"Talks", "Talks/2024", "Empty"}));
    ScriptItem odd = script("s");
    odd.children = Items{folder("s/f")};
    EXPECT_EQ(LibraryTree::folderIDs({odd}), Texts{});
}

TEST(LibraryTree, ShowsTheRowsOfOpenFolders) {
    EXPECT_EQ(LibraryTree::visibleIDs(library, {}), (Texts{"Talks", "Empty", "Notes"}));
    EXPECT_EQ(LibraryTree::visibleIDs(library, {"Talks"}),
              (Texts{"Talks", "Talks/2024", "Talks/Intro", "Empty", "Notes"}));
    EXPECT_EQ(LibraryTree::visibleIDs(library, {"Talks/2024"}), (Texts{"Talks", "Empty", "Notes"}));
    ScriptItem childless = folder("a");
    childless.children.reset();
    EXPECT_EQ(LibraryTree::visibleIDs({childless}, {"a"}), Texts{"a"});
}

TEST(LibraryTree, MovesRowByRowAndStaysAtTheEnds) {
    const std::set<Text> open = {"Talks"};
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    struct Case {
        const char* what;
        std::optional<Text> current;
        std::int64_t step;
        std::optional<Text> row;
    };
    const Case cases[] = {
        {"down", "Talks", 1, "Talks/2024"},
        {"up", "Notes", -1, "Empty"},
        {"below the last", "Notes", 1, "Notes"},
        {"far above the first", "Talks/Intro", -5, "Talks"},
        {"further than counts go", "Notes", most, "Notes"},
        {"and back", "Notes", least, "Talks"},
        {"inside a closed folder", "Talks/2024/Demo", 1, "Talks"},
        {"nothing selected", {}, 1, "Talks"},
        {"no step", "Empty", 0, "Empty"},
    };
    for (const auto& [what, current, step, row] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(LibraryTree::neighbourOf(current, step, library, open), row);
    }
}

TEST(LibraryTree, AnEmptyTreeAnswersNothing) {
    EXPECT_EQ(LibraryTree::find("a", {}), std::nullopt);
    EXPECT_EQ(LibraryTree::ancestorsOf("a/b", {}), Items{});
    EXPECT_EQ(LibraryTree::insertionFolderFor("a", {}), std::nullopt);
    EXPECT_EQ(LibraryTree::scriptToOpen("a", {}), std::nullopt);
    EXPECT_EQ(LibraryTree::firstScript({}), std::nullopt);
    EXPECT_EQ(LibraryTree::filtered({}, "a", english), Items{});
    EXPECT_EQ(LibraryTree::folderIDs({}), Texts{});
    EXPECT_EQ(LibraryTree::visibleIDs({}, {"a"}), Texts{});
    EXPECT_EQ(LibraryTree::neighbourOf("a", 1, {}, {}), std::nullopt);
}

TEST(LibraryTree, ATreeAThousandFoldersDeepIsWalked) {
    const Items items = {chain(1000)};
    const Texts folders = LibraryTree::folderIDs(items);
    ASSERT_EQ(folders.size(), 1000U);
    const Text innermost(folders.back().utf8() + "/s");
    EXPECT_EQ(LibraryTree::firstScript(items)->id, innermost);
    EXPECT_EQ(LibraryTree::find(innermost, items)->id, innermost);
    EXPECT_EQ(LibraryTree::insertionFolderFor(innermost, items), folders.back());
    const std::set<Text> open(folders.begin(), folders.end());
    EXPECT_EQ(LibraryTree::visibleIDs(items, open).size(), 1001U);
    EXPECT_EQ(LibraryTree::filtered(items, "S", english), items);
    const Items copy = items;
    EXPECT_EQ(copy, items);
}

TEST(LibraryTree, AHundredThousandItemsTakeOneWalk) {
    Items items;
    for (int f = 0; f < 100; ++f) {
        const std::string id = "folder " + std::to_string(f);
        Items scripts;
        for (int s = 0; s < 1000; ++s)
            scripts.push_back(script(Text(id + "/script " + std::to_string(s))));
        items.push_back(folder(Text(id), std::move(scripts)));
    }
    EXPECT_EQ(LibraryTree::filtered(items, "SCRIPT 999", english).size(), 100U);
    EXPECT_EQ(LibraryTree::ancestorsOf("folder 99/script 999", items).size(), 1U);
    const Texts folders = LibraryTree::folderIDs(items);
    EXPECT_EQ(LibraryTree::visibleIDs(items, {folders.begin(), folders.end()}).size(), 100100U);
}

TEST(LibraryTree, AParentIsAnAncestor) {
    Tests::forAll([](const Text& id) {
        const std::optional<Text> parent = LibraryTree::parentIDOf(id);
        if (!parent) return;
        RC_ASSERT(LibraryTree::isDescendant(Text(parent->utf8() + "/x"), *parent));
        RC_ASSERT(!LibraryTree::isDescendant(*parent, *parent));
        RC_ASSERT(LibraryTree::parentIDOf(Text(parent->utf8() + "/x")) == parent);
    });
}

}  // namespace
}  // namespace PrompterCore
