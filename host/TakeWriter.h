#pragma once

// The sound of one take on its way to an `.m4a` file, so that nothing of it is lost on the way.
//
// While it is recorded it stands in "NAME.unfinished.aac", which any player plays up to where it
// ends, and which nobody else writes to. When it is whole it becomes "NAME.m4a" in one step. No
// file is ever written over: where one called NAME stands already, NAME becomes "NAME 2".
//
//   TakeWriter take({.folder = "Takes", .name = "Talk 2025-03-05 at 14.07.09.m4a",
//                    .rate = 48000, .began = now});
//   take.write(samples);
//   const SavedTake saved = take.finish();     // saved.file, saved.seconds
//
// Units: samples are mono, full scale 1.0; rates are samples per second, durations seconds.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Varnelle {

/// What a take is to become.
struct TakeFile {
    std::filesystem::path folder;  ///< must exist
    std::string name;              ///< with its extension
    double rate = 0;               ///< samples/s of what is written
    std::chrono::system_clock::time_point began{};
};

/// What became of a take.
struct SavedTake {
    std::filesystem::path file;          ///< empty when there is none
    double seconds = 0;                  ///< of sound in it
    std::optional<std::string> trouble;  ///< why it is not all that it should be, in a sentence
};

class TakeWriter {
public:
    /// Begins the file. Throws CannotWrite when the folder takes none. Stops the program unless
    /// the rate can be converted to one that AAC has.
    explicit TakeWriter(const TakeFile& file);
    TakeWriter(TakeWriter&&) noexcept;
    TakeWriter& operator=(TakeWriter&&) noexcept;
    /// A take that was not finished stays as it is, for `recover`.
    ~TakeWriter();

    /// Takes the next samples. Those that are no numbers are silence. Throws CannotWrite when there
    /// is no room for them: the take ends there, nothing more is taken, `finish` saves what is.
    void write(std::span<const float> samples);
    /// Of sound that was taken.
    [[nodiscard]] double seconds() const noexcept;

    /// Saves the take under its name. Where it cannot become an `.m4a`, as on a full disk, it stays
    /// as it was recorded, as "NAME.aac", and `trouble` says so. Where it holds no sound, nothing
    /// is left of it and `seconds` is 0. Nothing is written after it.
    [[nodiscard]] SavedTake finish();
    /// Nobody wants it: nothing is left of it.
    void discard() noexcept;

    /// Saves the takes in `folder` that a program began and did not live to finish, all but the
    /// last instant of each. One that is still being recorded is left alone.
    [[nodiscard]] static std::vector<SavedTake> recover(const std::filesystem::path& folder);

private:
    class Recording;
    std::unique_ptr<Recording> recording_;  // null once it was finished or discarded
};

}  // namespace Varnelle
