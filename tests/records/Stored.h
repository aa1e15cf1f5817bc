#pragma once

// Types that are stored, as the library's are.

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "PrompterCore/records/Record.h"
#include "PrompterCore/support/Enumeration.h"
#include "tests/support/Printing.h"

namespace PrompterCore {

namespace Tests {

struct Mark {
    Text title;
    double seconds = 0;

    static Mark fromRecord(const Record& record) {
        return {record.required<Text>("title"), record.required<double>("seconds")};
    }
    Record toRecord() const { return Record().with("title", title).with("seconds", seconds); }

    friend bool operator==(const Mark&, const Mark&) = default;
};

enum class Style { plain, fancy };
enum class Turn { none, quarter };

struct Preset {
    Text name;
    Style style = Style::plain;
    Turn turn = Turn::none;
    std::vector<Mark> marks;
    std::optional<Mark> last = std::nullopt;
    std::optional<bool> loud = std::nullopt;

    static Preset fromRecord(const Record& record);
    Record toRecord() const;

    friend bool operator==(const Preset&, const Preset&) = default;
};

inline std::ostream& operator<<(std::ostream& out, const Mark& mark) { return out << toJson(mark); }
inline std::ostream& operator<<(std::ostream& out, const Preset& preset) {
    return out << toJson(preset);
}

}  // namespace Tests

template <>
struct Enumeration<Tests::Style> {
    struct Row {
        Tests::Style value;
        std::string_view caseName, rawValue;
    };
    static constexpr Row rows[] = {{Tests::Style::plain, "plain", "plain"},
                                   {Tests::Style::fancy, "fancy", "fancy"}};
};

template <>
struct Enumeration<Tests::Turn> {
    struct Row {
        Tests::Turn value;
        std::string_view caseName;
        std::int64_t rawValue;
    };
    static constexpr Row rows[] = {{Tests::Turn::none, "none", 0},
                                   {Tests::Turn::quarter, "quarter", 90}};
};

namespace Tests {

inline Preset Preset::fromRecord(const Record& record) {
    return {.name = record.required<Text>("name"),
            .style = record.required<Style>("style"),
            .turn = record.required<Turn>("turn"),
            .marks = record.required<std::vector<Mark>>("marks"),
            .last = record.optional<Mark>("last"),
            .loud = record.optional<bool>("loud")};
}

inline Record Preset::toRecord() const {
    return Record()
        .with("name", name)
        .with("style", style)
        .with("turn", turn)
        .with("marks", marks)
        .with("last", last)
        .with("loud", loud);
}

}  // namespace Tests

}  // namespace PrompterCore
