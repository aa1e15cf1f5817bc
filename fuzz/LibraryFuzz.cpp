// The laws of the library's names, paths, sections and comparisons, on arbitrary texts.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "PrompterCore/library/LCS.h"
#include "PrompterCore/library/LibraryNaming.h"
#include "PrompterCore/library/LibraryTree.h"
#include "PrompterCore/library/LineDiff.h"
#include "PrompterCore/library/OpenSections.h"
#include "PrompterCore/library/WordDiff.h"
#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Folding.h"
#include "PrompterCore/text/Trims.h"
#include "fuzz/Bytes.h"
#include "tests/reference/PlainLCS.h"

namespace PrompterCore {
namespace {

constexpr std::size_t longestText = 200;

std::vector<Text> characters(const Text& text) {
    std::vector<Text> result;
    for (const Character character : Characters(text))
        result.emplace_back(character.utf8());
    return result;
}

void namesAreSafeAndUnique(const Text& name, const Text& other) {
    const Text safe = LibraryNaming::sanitize(name);
    const Characters kept(safe);
    require(!safe.isEmpty(), "a name is never empty");
    require(kept.count() <= LibraryNaming::longestName, "a name is not too long");
    require(trimmedOfBlanks(safe.utf8()) == safe.utf8(), "a name has no blanks around it");
    require(
        std::none_of(kept.begin(), kept.end(), [](Character c) { return c.is('/') || c.is(':'); }),
        "a name holds nothing forbidden");
    const std::vector<Text> taken{other, safe};
    for (const Text& free :
         {LibraryNaming::unique(name, taken), LibraryNaming::copyNameOf(name, taken)})
        for (const Text& each : taken)
            require(lowercased(free) != lowercased(each), "a unique name is free");
}

void parentsAreAncestors(const Text& id) {
    const std::optional<Text> parent = LibraryTree::parentIDOf(id);
    if (!parent) return;
    const Text child(parent->utf8() + "/x");
    require(LibraryTree::isDescendant(child, *parent), "a child lies below its parent");
    require(LibraryTree::parentIDOf(child) == parent, "a child's parent is its parent");
    require(!LibraryTree::isDescendant(*parent, child), "and not the other way round");
}

void togglingTwiceIsNothing(const Text& stored, const Text& id) {
    const OpenSections before = OpenSections::fromStored(stored, {});
    OpenSections sections = before;
    sections.toggle(id);
    require(sections.contains(id) != before.contains(id), "toggling opens or closes");
    sections.toggle(id);
    require(sections == before, "toggling twice is nothing");
}

// A search finds a text by itself and by any text that it is made of.
void aSearchFindsTheWhole(const Text& name, const Text& query) {
    const std::vector<ScriptItem> items{{.id = "a", .name = name, .children = {}}};
    const auto finds = [&](const Text& wanted) {
        return !LibraryTree::filtered(items, wanted, Locale::fixed()).empty();
    };
    require(finds(Text(trimmedOfBlanks(name.utf8()))), "a name is found by itself");
    require(!finds(query) || finds(Text(trimmedOfBlanks(query.utf8()))), "blanks do not count");
}

void comparisonsAgreeWithThePlainOne(const Text& before, const Text& after) {
    const auto steps = LCS::diff(characters(before), characters(after));
    require(steps == Reference::tabledDiff(characters(before), characters(after)),
            "the steps are those of the plain table");
    std::int64_t next = 0;
    for (const DiffLine& line : LineDiff::between(before, after))
        require(line.id == next++ && !line.segments.empty(), "lines are counted, and hold a text");
    const auto segments = WordDiff::between(before, after);
    for (std::size_t i = 1; i < segments.size(); ++i)
        require(segments[i - 1].operation != segments[i].operation, "equal neighbours are one");
}

}  // namespace
}  // namespace PrompterCore

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace PrompterCore;
    Bytes bytes({data, size});
    const Text first(bytes.textUpToFF(longestText));
    const Text second(bytes.textUpToFF(longestText));
    namesAreSafeAndUnique(first, second);
    parentsAreAncestors(first);
    togglingTwiceIsNothing(first, second);
    aSearchFindsTheWhole(first, second);
    comparisonsAgreeWithThePlainOne(first, second);
    return 0;
}
