#pragma once

// Recognised words in the form that some program writes them, line by line.
//
//   std::unique_ptr<WordsReader> reader = wordsReader(WordsFormat::ctm, WordsArrival::live);
//   for (std::string_view line : lines) show(reader->take(line).updates);
//   show(reader->finish().updates);
//
// Units: seconds of the sound, rounded to milliseconds; confidences from 0 to 1.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/HeardWords.h"

namespace Varnelle {

/// What could not be used, in words that follow the line's number: "\"keep\" is missing".
struct BrokenPart {
    std::int64_t line = 0;  ///< counted from 1
    std::string why;

    friend bool operator==(const BrokenPart&, const BrokenPart&) = default;
};

/// What some lines brought.
struct WordsRead {
    std::vector<WordsUpdate> updates;
    std::vector<BrokenPart> broken;  ///< passed over

    friend bool operator==(const WordsRead&, const WordsRead&) = default;
};

/// Whether words come while they are said. What has no times can only be followed then.
enum class WordsArrival { recorded, live };

/// Reads one text from its beginning to its end. Never throws: what is broken is said.
class WordsReader {
public:
    WordsReader() = default;
    WordsReader(const WordsReader&) = delete;
    WordsReader& operator=(const WordsReader&) = delete;
    virtual ~WordsReader() = default;

    /// The next line, without its break.
    [[nodiscard]] WordsRead take(std::string_view line);
    /// The text has ended.
    [[nodiscard]] WordsRead finish();

protected:
    virtual void read(std::string_view line) = 0;
    virtual void end() {}

    std::int64_t lineNumber() const { return lineNumber_; }
    void say(WordsUpdate update) { read_.updates.push_back(std::move(update)); }
    void passOver(std::int64_t line, std::string why);
    /// `word` is the next one and stays; it is known when it has been said.
    void settle(HeardWord word);
    /// Words that stay.
    std::int64_t settled() const { return settled_; }
    void settleTo(std::int64_t count) { settled_ = count; }

private:
    WordsRead read_;
    std::int64_t lineNumber_ = 0;
    std::int64_t settled_ = 0;
};

}  // namespace Varnelle
