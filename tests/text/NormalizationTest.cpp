#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/Printing.h"
#include "tests/text/CodePoints.h"

namespace PrompterCore {
namespace {

struct Row {
    std::string line;
    Text c1, c2, c3, c4, c5;  // source, NFC, NFD, NFKC, NFKD
};

Text textOf(const std::string& hexCodePoints) {
    std::istringstream stream(hexCodePoints);
    std::string bytes;
    for (std::uint32_t c = 0; stream >> std::hex >> c;)
        bytes += Tests::utf8Of(c);
    return bytes;
}

std::vector<Row> rows() {
    std::ifstream stream(NORMALIZATION_TEST);
    std::vector<Row> result;
    for (std::string line; std::getline(stream, line);) {
        if (line.empty() || line[0] == '#' || line[0] == '@') continue;
        std::istringstream fields(line);
        std::string columns[5];
        for (std::string& column : columns)
            std::getline(fields, column, ';');
        result.push_back({line, textOf(columns[0]), textOf(columns[1]), textOf(columns[2]),
                          textOf(columns[3]), textOf(columns[4])});
    }
    return result;
}

TEST(Normalization, EveryRowOfUnicodesTestHolds) {
    const std::vector<Row> all = rows();
    ASSERT_GT(all.size(), 18000u);
    const std::hash<Text> hash;
    for (const auto& [line, c1, c2, c3, c4, c5] : all) {
        SCOPED_TRACE(line);
        for (const Text* text : {&c1, &c2, &c3})
            EXPECT_EQ(text->composed().utf8(), c2.utf8());
        for (const Text* text : {&c4, &c5})
            EXPECT_EQ(text->composed().utf8(), c4.utf8());
        for (const Text* text : {&c2, &c3}) {
            EXPECT_TRUE(c1 == *text);
            EXPECT_TRUE((c1 <=> *text) == 0);
            EXPECT_EQ(hash(c1), hash(*text));
        }
        EXPECT_TRUE(c4 == c5);
        EXPECT_EQ(hash(c4), hash(c5));
        EXPECT_EQ(c1 == c4, c2.utf8() == c4.utf8());
        EXPECT_EQ((c1 <=> c5) < 0, c2.utf8() < c4.utf8());
        if (HasFailure()) break;
    }
}

TEST(Normalization, WhatTheTestDoesNotListIsItsOwnComposedForm) {
    std::set<std::string> listed;
    for (const Row& row : rows())
        listed.insert(row.c1.utf8());
    Tests::forEachCodePoint([&listed](char32_t c) {
        const std::string bytes = Tests::utf8Of(c);
        if (!listed.contains(bytes) && Text(bytes).composed().utf8() != bytes)
            ADD_FAILURE() << std::hex << static_cast<unsigned>(c);
    });
}

}  // namespace
}  // namespace PrompterCore
