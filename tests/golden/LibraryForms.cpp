#include "PrompterCore/library/OpenSections.h"
#include "tests/golden/Forms.h"

namespace PrompterCore::Tests {

namespace {

std::string stored(std::set<Text> ids) {
    OpenSections sections;
    sections.ids = std::move(ids);
    return sections.stored().utf8() + '\n';
}

std::string openSectionsReadAndWritten(const std::string& file) {
    std::string lines;
    for (const std::string& line : linesOf(file))
        lines += OpenSections::fromStored(Text(line), {"not used: something is stored"})
                     .stored()
                     .utf8() +
                 '\n';
    return lines;
}

}  // namespace

std::vector<Form> libraryForms() {
    return {{"open-sections.txt",
             stored({}) + stored({"scripts"}) +
                 stored({"b", "a", "Z", " a", "a b", "\u00E9", "z", "\U0001F3A5", "10", "9"}),
             openSectionsReadAndWritten}};
}

}  // namespace PrompterCore::Tests
