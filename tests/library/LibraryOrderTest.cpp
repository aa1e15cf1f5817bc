#include <algorithm>
#include <string>
#include <vector>

#include "PrompterCore/library/LibraryOrder.h"
#include "PrompterCore/text/Folding.h"
#include "tests/library/Items.h"
#include "tests/support/Generators.h"
#include "tests/support/Printing.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::folder;
using Tests::script;
using Items = std::vector<ScriptItem>;

TEST(LibraryOrder, PutsFoldersFirstAndNamesWithoutCase) {
    EXPECT_EQ(LibraryOrder::sorted({folder("b"), script("A"), folder("a")}),
              (Items{folder("a"), folder("b"), script("A")}));
}

TEST(LibraryOrder, GoesByIdWhereNamesDifferOnlyByCase) {
    const ScriptItem upper{"x/notes", "Notes", ScriptItem::Kind::script, {}};
    const ScriptItem lower{"x/Notes", "notes", ScriptItem::Kind::script, {}};
    EXPECT_EQ(LibraryOrder::sorted({upper, lower}), (Items{lower, upper}));
    EXPECT_EQ(LibraryOrder::sorted({lower, upper}), (Items{lower, upper}));
}

TEST(LibraryOrder, NumbersAreNotReadAsNumbers) {
    EXPECT_EQ(LibraryOrder::sorted({script("2"), script("10")}),
              (Items{script("10"), script("2")}));
}

TEST(LibraryOrder, CaseIsFoldedBeyondAscii) {
    struct Case {
        const char* what;
        Text first, second;
    };
    const Case cases[] = {
        {"accents", "\u00C9a", "\u00E9b"},
        {"decomposed beside composed", "E\u0301a", "\u00E9b"},
        {"Greek sigmas", "\u03A3\u03B1", "\u03C3\u03B2"},
        {"sharp s is two letters", "Strassa", "STRA\u00DFE"},
        {"empty first", "", "a"},
    };
    for (const auto& [what, first, second] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(LibraryOrder::sorted({script(second), script(first)}),
                  (Items{script(first), script(second)}));
    }
}

TEST(LibraryOrder, AlikeItemsStayAsTheyStood) {
    const ScriptItem first{"a", "a", ScriptItem::Kind::folder, {}};
    const ScriptItem second{"a", "a", ScriptItem::Kind::folder, Items{}};
    EXPECT_EQ(LibraryOrder::sorted({first, second}), (Items{first, second}));
    EXPECT_EQ(LibraryOrder::sorted({second, first}), (Items{second, first}));
}

TEST(LibraryOrder, ChildrenKeepTheirOrder) {
    const ScriptItem whole = folder("a", {script("z"), script("b")});
    EXPECT_EQ(LibraryOrder::sorted({whole}), Items{whole});
    EXPECT_EQ(LibraryOrder::sorted({}), Items{});
}

TEST(LibraryOrder, AgreesWithFoldingBothNamesInEveryComparison) {
    Tests::forAll([](const std::vector<Text>& names) {
        Items items;
        for (std::size_t i = 0; i < names.size(); ++i)
            items.push_back({Text(std::to_string(i % 3)),
                             names[i],
                             i % 4 == 0 ? ScriptItem::Kind::folder : ScriptItem::Kind::script,
                             {}});
        Items plain = items;
        std::ranges::stable_sort(plain, [](const ScriptItem& a, const ScriptItem& b) {
            if (a.isFolder() != b.isFolder()) return a.isFolder();
            const Text left = caseFolded(a.name);
            const Text right = caseFolded(b.name);
            return left != right ? left < right : a.id < b.id;
        });
        RC_ASSERT(LibraryOrder::sorted(items) == plain);
    });
}

}  // namespace
}  // namespace PrompterCore
