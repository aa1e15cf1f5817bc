#pragma once

// The prompter's lookups and moves over lists written out in full: every text line, every paragraph
// start, every token by a scan.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "PrompterCore/prompter/PromptLine.h"
#include "PrompterCore/script/Script.h"

namespace PrompterCore::Plain {

using Lines = std::vector<PromptLine>;
using MaybeIndex = std::optional<std::int64_t>;

/// Of lines in token order.
inline MaybeIndex lineContaining(std::int64_t token, const Lines& lines) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const TokenRange range = lines[i].tokenRange;
        if (range.lower() <= token && token < range.upper()) return static_cast<std::int64_t>(i);
    }
    return std::nullopt;
}

/// Of a script's own lines: from the text line that holds the position, in proportion, to the next
/// line with words; what lies between the two is crossed together with the first.
inline double lineIndexFor(double position, const Lines& lines) {
    std::vector<std::size_t> texts;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!lines[i].isBlank()) texts.push_back(i);
    }
    for (std::size_t t = 0; t < texts.size(); ++t) {
        const TokenRange range = lines[texts[t]].tokenRange;
        if (static_cast<double>(range.upper()) <= std::max(position, 0.0)) continue;
        const std::size_t next = t + 1 < texts.size() ? texts[t + 1] : lines.size();
        const double part = (std::max(position, 0.0) - static_cast<double>(range.lower())) /
                            static_cast<double>(range.upper() - range.lower());
        return static_cast<double>(texts[t]) + part * static_cast<double>(next - texts[t]);
    }
    return texts.empty() ? 0 : static_cast<double>(lines.size());
}

inline std::int64_t clampedSum(std::int64_t place, std::int64_t step, std::size_t count) {
    // Any step beyond the count leads to an end as well.
    const auto bound = static_cast<std::int64_t>(count) + 1;
    return std::clamp(place + std::clamp(step, -bound, bound), std::int64_t{0}, bound - 2);
}

/// Of lines in token order.
inline MaybeIndex lineStart(std::int64_t step, std::int64_t cursor, const Lines& lines) {
    std::vector<std::size_t> texts;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!lines[i].tokenRange.isEmpty()) texts.push_back(i);
    }
    if (texts.empty() || step == 0) return std::nullopt;
    const MaybeIndex line = lineContaining(std::max<std::int64_t>(cursor, 0), lines);
    const std::size_t current = line ? static_cast<std::size_t>(*line) : texts[0];
    std::int64_t place = 0;
    for (std::size_t t = 0; t < texts.size(); ++t) {
        if (texts[t] <= current) place = static_cast<std::int64_t>(t);
    }
    const std::int64_t target = clampedSum(place, step, texts.size());
    if (target == place) return std::nullopt;
    return lines[texts[static_cast<std::size_t>(target)]].tokenRange.lower();
}

inline MaybeIndex paragraphStart(std::int64_t step, std::int64_t cursor, const Lines& lines) {
    std::vector<std::int64_t> starts;
    bool started = false;  // the paragraph that the line is in has given its start
    for (const PromptLine& line : lines) {
        if (line.isBlank()) {
            started = false;
        } else if (!started && !line.tokenRange.isEmpty()) {
            starts.push_back(line.tokenRange.lower());
            started = true;
        }
    }
    if (starts.empty() || step == 0) return std::nullopt;
    const std::int64_t token = std::max<std::int64_t>(cursor, 0);
    std::size_t place = 0;
    for (std::size_t i = 0; i < starts.size(); ++i) {
        if (starts[i] <= token) place = i;
    }
    const std::int64_t own = step < 0 && starts[place] < token ? 1 : 0;
    const std::int64_t target =
        clampedSum(static_cast<std::int64_t>(place) + own, step, starts.size());
    const std::int64_t start = starts[static_cast<std::size_t>(target)];
    return start == token ? MaybeIndex{} : MaybeIndex{start};
}

/// Where a cursor stands, as paragraph, line, line count, paragraph line, paragraph line count, and
/// the share of the words read. `lines` are in token order.
struct PlainProgress {
    std::int64_t paragraph = 1, line = 1, lineCount = 0, paragraphLine = 1, paragraphLineCount = 1;
    double fraction = 0;
};

inline PlainProgress progress(const Script& script, std::int64_t cursor, const Lines& lines) {
    PlainProgress progress;
    std::int64_t index = 0;
    bool found = false;
    for (const ScriptWord& word : script.words()) {
        if (index++ == 0 || word.breaksBefore >= 1) ++progress.lineCount;
        if (found || !word.tokenRange.contains(cursor)) continue;
        found = true;
        progress.line = progress.lineCount;
        progress.fraction = static_cast<double>(index) / static_cast<double>(script.words().size());
    }
    progress.lineCount = std::max<std::int64_t>(progress.lineCount, 1);

    struct Block {
        std::int64_t from, to;
    };
    std::vector<Block> blocks;
    for (std::int64_t i = 0; i < static_cast<std::int64_t>(lines.size()); ++i) {
        if (lines[static_cast<std::size_t>(i)].isBlank()) continue;
        if (blocks.empty() || blocks.back().to < i) blocks.push_back({i, i});
        blocks.back().to = i + 1;
    }
    if (blocks.empty()) return progress;
    const std::int64_t shown =
        lineContaining(std::max<std::int64_t>(cursor, 0), lines).value_or(blocks.front().from);
    std::size_t b = 0;
    while (b + 1 < blocks.size() && blocks[b].to <= shown)
        ++b;
    progress.paragraph = static_cast<std::int64_t>(b) + 1;
    progress.paragraphLine = std::max(shown, blocks[b].from) - blocks[b].from + 1;
    progress.paragraphLineCount = blocks[b].to - blocks[b].from;
    return progress;
}

}  // namespace PrompterCore::Plain
