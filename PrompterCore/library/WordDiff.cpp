#include "PrompterCore/library/WordDiff.h"

#include <string>
#include <string_view>
#include <utility>

#include "PrompterCore/library/LCS.h"
#include "PrompterCore/text/Characters.h"

namespace PrompterCore::WordDiff {

namespace {

// Parts of the text that `characters` are of.
std::vector<WellFormed> words(const Characters& characters) {
    std::vector<WellFormed> result;
    const std::int64_t count = characters.count();
    std::int64_t start = 0;
    for (std::int64_t i = 0; i <= count; ++i) {
        if (i < count && !characters[i].isWhiteSpace()) continue;
        if (i > start) {
            result.push_back({characters.slice(CharacterRange(start, i))});
        }
        start = i + 1;
    }
    return result;
}

// One stretch of words with the same operation, before it is a text.
struct Run {
    std::string words;
    DiffOperation operation;
};

}  // namespace

std::vector<DiffSegment> between(const Text& before, const Text& after) {
    const Characters old(before);
    const Characters fresh(after);
    std::vector<Run> runs;
    for (const auto& [word, operation] : LCS::diff(words(old), words(fresh))) {
        if (runs.empty() || runs.back().operation != operation) {
            runs.push_back({std::string(word.bytes), operation});
        } else {
            runs.back().words.append(" ").append(word.bytes);
        }
    }
    std::vector<DiffSegment> segments;
    segments.reserve(runs.size());
    for (Run& run : runs) {
        segments.push_back({Text(std::move(run.words)), run.operation});
    }
    return segments;
}

}  // namespace PrompterCore::WordDiff
