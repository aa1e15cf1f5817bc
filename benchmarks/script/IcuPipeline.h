#pragma once

// The work of building a script as one would lay it out with the Unicode library's own services: a
// break iterator over the whole text, compatibility decomposition, lower-casing, then letters and
// digits collected up to each white space. It makes no headings, numbers or contractions.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace PrompterCore {

struct IcuPipelineResult {
    std::vector<std::int32_t> boundaries;  ///< UTF-16 offsets of the characters, 0 included
    std::vector<std::string> words;        ///< letters and digits only, lower case
};

IcuPipelineResult icuPipeline(std::string_view utf8);

}  // namespace PrompterCore
