#include "apps/varnelle/ShowDiff.h"

#include <string_view>

#include <fmt/format.h>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Separator.h"
#include "apps/varnelle/Json.h"

namespace Varnelle {

namespace {

using PrompterCore::DiffLine;
using PrompterCore::DiffOperation;
using PrompterCore::DiffSegment;
using PrompterCore::LineChange;
using PrompterCore::Text;

constexpr std::string_view plain = "\x1b[0m";
constexpr std::string_view faint = "\x1b[2m";
constexpr std::string_view reverse = "\x1b[7m";

std::string_view colourOf(LineChange change) {
    switch (change) {
        case LineChange::added: return "\x1b[32m";
        case LineChange::removed: return "\x1b[31m";
        case LineChange::context: break;
    }
    return "";
}

// A segment's text as it is shown between `before` and `after`; the space that follows every
// segment of an edited line stays outside.
std::string between(std::string_view before, const DiffSegment& segment, std::string_view after) {
    std::string_view text = segment.text.utf8();
    const std::string_view space = text.ends_with(' ') ? " " : "";
    text.remove_suffix(space.size());
    return fmt::format("{}{}{}{}", before, shown(text), after, space);
}

std::string bracketed(const DiffSegment& segment) {
    switch (segment.operation) {
        case DiffOperation::insert: return between("{+", segment, "+}");
        case DiffOperation::delete_: return between("[-", segment, "-]");
        case DiffOperation::equal: break;
    }
    return between("", segment, "");
}

std::string coloured(const DiffSegment& segment, std::string_view colour) {
    if (segment.operation == DiffOperation::equal) return between("", segment, "");
    return between(reverse, segment, fmt::format("{}{}", plain, colour));
}

std::string lineAsShown(const DiffLine& line, const DiffStyle& style) {
    std::string text(marker(line.change));
    const std::string_view colour = colourOf(line.change);
    for (const DiffSegment& segment : line.segments) {
        text += style.marks == DiffMarks::colours ? coloured(segment, colour) : bracketed(segment);
    }
    return style.marks == DiffMarks::colours && !colour.empty()
               ? fmt::format("{}{}{}", colour, text, plain)
               : text;
}

std::string noteAsShown(std::string_view note, const DiffStyle& style) {
    return style.marks == DiffMarks::colours ? fmt::format("{}... {}{}", faint, note, plain)
                                             : fmt::format("... {}", note);
}

// Whether line `i` is one that was edited, and the edit shows in no word.
bool keepsItsWords(const std::vector<DiffLine>& lines, std::size_t i) {
    if (i == 0 || lines[i].change != LineChange::added ||
        lines[i - 1].change != LineChange::removed)
        return false;
    return lines[i - 1].text() == lines[i].text() || (lines[i - 1].isBlank() && lines[i].isBlank());
}

// Which lines are near enough to a changed one.
std::vector<bool> nearChanges(const std::vector<DiffLine>& lines, std::int64_t context) {
    std::vector<bool> near(lines.size(), false);
    const auto mark = [&](auto index, auto last, auto step) {
        std::int64_t left = 0;
        for (; index != last; index += step) {
            const auto i = static_cast<std::size_t>(index);
            if (lines[i].change != LineChange::context) left = context + 1;
            if (left > 0) {
                near[i] = true;
                --left;
            }
        }
    };
    const std::int64_t count = PrompterCore::signedCount(lines.size());
    mark(std::int64_t{0}, count, 1);
    mark(count - 1, std::int64_t{-1}, -1);
    return near;
}

Json segmentsAsJson(const std::vector<DiffSegment>& segments) {
    Json list = Json::array();
    for (const DiffSegment& segment : segments) {
        list.push_back({{"text", segment.text.utf8()}, {"operation", caseName(segment.operation)}});
    }
    return list;
}

std::string summaryAsShown(const std::vector<DiffLine>& lines) {
    const PrompterCore::DiffSummary summary = PrompterCore::LineDiff::summary(lines);
    return fmt::format("{} added{}{} removed", summary.added, PrompterCore::separator,
                       summary.removed);
}

}  // namespace

std::string lineDiffAsShown(const std::vector<DiffLine>& lines, const DiffStyle& style) {
    std::string text;
    const auto add = [&text](const std::string& line) { text.append(line).push_back('\n'); };
    const std::vector<bool> near =
        style.context ? nearChanges(lines, *style.context) : std::vector<bool>(lines.size(), true);
    for (std::size_t i = 0; i < lines.size();) {
        if (near[i]) {
            add(lineAsShown(lines[i], style));
            if (keepsItsWords(lines, i)) add(noteAsShown("only white space differs", style));
            ++i;
            continue;
        }
        std::int64_t skipped = 0;
        for (; i < lines.size() && !near[i]; ++i)
            ++skipped;
        add(noteAsShown(fmt::format("{} unchanged line{}", skipped, skipped == 1 ? "" : "s"),
                        style));
    }
    if (!style.note.empty()) add(noteAsShown(style.note, style));
    add(summaryAsShown(lines));
    return text;
}

std::string wordDiffAsShown(const std::vector<DiffSegment>& segments, const DiffStyle& style) {
    std::string text;
    for (const DiffSegment& segment : segments) {
        if (!text.empty()) text += ' ';
        if (style.marks == DiffMarks::brackets) {
            text += bracketed(segment);
        } else {
            const std::string_view colour =
                segment.operation == DiffOperation::insert    ? colourOf(LineChange::added)
                : segment.operation == DiffOperation::delete_ ? colourOf(LineChange::removed)
                                                              : "";
            const std::string words = shown(segment.text.utf8());
            text += colour.empty() ? words : fmt::format("{}{}{}", colour, words, plain);
        }
    }
    if (!text.empty()) text += '\n';
    return text;
}

void writeLineDiffJson(const std::vector<DiffLine>& lines, Output& output) {
    output.write("{\"lines\":[");
    const char* between = "";
    for (const DiffLine& line : lines) {
        const Json record = {{"id", line.id},
                             {"change", caseName(line.change)},
                             {"text", line.text().utf8()},
                             {"segments", segmentsAsJson(line.segments)}};
        output.write(between + record.dump());
        between = ",";
    }
    const PrompterCore::DiffSummary summary = PrompterCore::LineDiff::summary(lines);
    const Json end = {{"added", summary.added}, {"removed", summary.removed}};
    output.line(fmt::format("],\"summary\":{}}}", end.dump()));
    output.flush();
}

void writeWordDiffJson(const std::vector<DiffSegment>& segments, Output& output) {
    output.line(Json{{"segments", segmentsAsJson(segments)}}.dump());
    output.flush();
}

}  // namespace Varnelle
