#pragma once

// What was wrong with a stored record.
//
//   try {
//       fromJson<ChapterMark>(R"({"title": "Intro"})");
//   } catch (const RecordFailure& failure) {
//       failure.path();   // "seconds"
//       failure.what();   // "seconds": missing
//   }

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace PrompterCore {

/// Thrown where a record cannot be read, or a number that is not finite was to be written.
class RecordFailure : public std::runtime_error {
public:
    /// What sort of failure; more is in problem().
    enum class Kind {
        malformed,   ///< no JSON, a key that stands twice, or nested too deep
        missingKey,  ///< a required key is not there
        mismatch,    ///< a value of another kind than the one required
        notFinite,   ///< a number that cannot be written
    };

    /// `problem` says what is wrong with the value at hand.
    RecordFailure(Kind kind, std::string problem);

    [[nodiscard]] Kind kind() const noexcept { return kind_; }  ///< what a caller decides by
    /// Where, from the outermost record: "presets[2].text.red". Empty for the whole.
    [[nodiscard]] const std::string& path() const noexcept { return path_; }
    /// What is wrong there, in words.
    [[nodiscard]] const std::string& problem() const noexcept { return problem_; }

    /// The same failure told from outside: of the value under `key`.
    [[nodiscard]] RecordFailure under(std::string_view key) const;
    /// The same for entry `index` of a list.
    [[nodiscard]] RecordFailure atEntry(std::size_t index) const;

private:
    RecordFailure(Kind kind, std::string path, std::string problem);
    [[nodiscard]] RecordFailure behind(std::string step) const;

    Kind kind_;
    std::string path_;
    std::string problem_;
};

}  // namespace PrompterCore
