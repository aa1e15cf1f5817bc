#include <concepts>
#include <set>

#include "PrompterCore/library/OpenSections.h"
#include "tests/support/Generators.h"
#include "tests/support/Printing.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Ids = std::set<Text>;

static_assert(std::copyable<OpenSections> && std::equality_comparable<OpenSections>);

TEST(OpenSections, TakesTheDefaultsOnlyWhereNothingIsStored) {
    EXPECT_EQ(OpenSections::fromStored({}, {"a"}).ids, Ids{"a"});
    EXPECT_EQ(OpenSections::fromStored("", {"a"}).ids, Ids{});
    EXPECT_EQ(OpenSections::fromStored("b,,a,", {"z"}).ids, (Ids{"a", "b"}));
    EXPECT_EQ(OpenSections::fromStored(" a , b", {}).ids, (Ids{" a ", " b"}));
}

TEST(OpenSections, StoresTheIdsInOrder) {
    EXPECT_EQ(OpenSections::fromStored("b,,a,", {}).stored(), "a,b");
    EXPECT_EQ(OpenSections::fromStored("", {}).stored(), "");
    EXPECT_EQ(OpenSections::fromStored("\u00E9,z,Z,e\u0301", {}).stored(), "Z,z,\u00E9");
}

TEST(OpenSections, TogglesAndKnowsWhatIsOpen) {
    OpenSections sections{.ids = {"a"}};
    sections.toggle("b");
    EXPECT_TRUE(sections.contains("b"));
    EXPECT_FALSE(sections.contains("c"));
    sections.toggle("a");
    EXPECT_EQ(sections.stored(), "b");
}

TEST(OpenSections, TogglingTwiceIsNothing) {
    Tests::forAll([](const Text& stored, const Text& id) {
        const OpenSections before = OpenSections::fromStored(stored, {});
        OpenSections sections = before;
        sections.toggle(id);
        RC_ASSERT(sections != before);
        sections.toggle(id);
        RC_ASSERT(sections == before);
    });
}

TEST(OpenSections, WhatIsStoredReadsBack) {
    Tests::forAll([] {
        // No id begins with a mark, which would combine with the comma before it.
        const Text stored =
            *Tests::textOver({",", "a", "b", " ", "/", "\u00E9", "e\u0301", "\r\n"});
        const OpenSections sections = OpenSections::fromStored(stored, {});
        RC_ASSERT(OpenSections::fromStored(sections.stored(), {"default"}) == sections);
    });
}

}  // namespace
}  // namespace PrompterCore
