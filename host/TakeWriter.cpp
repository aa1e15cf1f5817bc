#include "host/TakeWriter.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"
#include "PrompterCore/support/Rounding.h"
#include "host/AacEncoder.h"
#include "host/Failures.h"
#include "host/M4aFile.h"
#include "host/NewFile.h"
#include "host/Resampler.h"

namespace Varnelle {

namespace {

using std::filesystem::path;

constexpr std::string_view unfinishedEnding = ".unfinished.aac";
constexpr std::string_view unfinishedWholeEnding = ".unfinished.m4a";
constexpr double syncEvery = 5;  // seconds of sound that a power failure may cost

std::int64_t soundIn(const AacFrames& frames) {
    return std::max<std::int64_t>(frames.frames * AacEncoder::frameLength - AacEncoder::priming, 0);
}

// Makes the whole file from the frames in `source` and gives it the name.
path saveWhole(int source, const NewFileName& name, const M4aContent& content) {
    const path place = name.withEnding(unfinishedWholeEnding);
    static_cast<void>(unlink(place.c_str()));  // of a program that died over it
    const File target = createFile(place);
    Unfinished unfinished(place);
    writeM4a(source, target.descriptor(), content);
    target.sync();
    path saved = giveName(place, name, ".m4a");
    unfinished.finished();
    return saved;
}

// The frames become the take, or where that fails, are the take. Their own name goes. Without any
// sound there is none.
SavedTake save(int source, const path& unfinished, const NewFileName& name,
               std::optional<std::int64_t> samples, std::chrono::system_clock::time_point began) {
    SavedTake saved{.file = unfinished, .seconds = 0, .trouble = std::nullopt};
    try {
        const AacFrames frames = aacFramesIn(source);
        const std::int64_t count = std::min(samples.value_or(soundIn(frames)), soundIn(frames));
        if (count == 0) {
            static_cast<void>(unlink(unfinished.c_str()));
            saved.file.clear();
            return saved;
        }
        saved.seconds = static_cast<double>(count) / frames.rate;
        try {
            saved.file = saveWhole(source, name, {.samples = count, .made = began});
        } catch (const CannotWrite& failure) {
            saved.trouble = failure.what();
            saved.file = giveName(unfinished, name, ".aac");
            return saved;
        }
        static_cast<void>(unlink(unfinished.c_str()));
    } catch (const CannotWrite& failure) {
        saved.trouble = failure.what();
    }
    return saved;
}

}  // namespace

class TakeWriter::Recording {
public:
    explicit Recording(const TakeFile& file)
        : began_(file.began),
          inputRate_(file.rate),
          rate_(AacEncoder::rateFor(file.rate)),
          resampler_(file.rate, rate_),
          encoder_(rate_),
          name_(file.folder, path(file.name).stem().string()),
          file_(begin()) {}

    void write(std::span<const float> samples) {
        if (isFull_) return;
        finite_.assign(samples.begin(), samples.end());
        for (float& sample : finite_) {
            if (!std::isfinite(sample)) sample = 0;
        }
        append(encoder_.encode(resampler_.convert(finite_)));
        samplesTaken_ += PrompterCore::signedCount(samples.size());
        if (seconds() < syncedAt_ + syncEvery) return;
        file_.sync();
        syncedAt_ = seconds();
    }

    double seconds() const noexcept { return static_cast<double>(samplesTaken_) / inputRate_; }

    SavedTake finish() {
        std::optional<std::string> trouble;
        try {
            if (!isFull_) {
                append(encoder_.encode(resampler_.finish()) + encoder_.finish());
                file_.sync();
            }
        } catch (const CannotWrite& failure) {
            trouble = failure.what();
        }
        const std::int64_t samples = PrompterCore::roundedToNearest(seconds() * rate_);
        SavedTake saved = save(file_.descriptor(), unfinished(), name_, samples, began_);
        if (!saved.trouble) saved.trouble = trouble;
        return saved;
    }

    void discard() noexcept { static_cast<void>(unlink(unfinished_.c_str())); }

private:
    File begin() {
        // Whoever records at the same moment may take a name that was free until then.
        while (true) {
            name_.chooseFree();
            unfinished_ = name_.withEnding(unfinishedEnding);
            std::optional<File> file = createFileUnlessTaken(unfinished_);
            if (!file) {
                name_.next();
                continue;
            }
            // Whoever looks for unfinished takes at this moment may have it, and take it away as
            // empty.
            static_cast<void>(flock(file->descriptor(), LOCK_EX));
            if (access(unfinished_.c_str(), F_OK) == 0) return std::move(*file);
        }
    }

    const path& unfinished() const { return unfinished_; }

    void append(const std::string& frames) {
        try {
            file_.write(frames);
            length_ += static_cast<off_t>(frames.size());
        } catch (const CannotWrite&) {
            isFull_ = true;
            // Half a frame is of no use, and its room may be.
            static_cast<void>(ftruncate(file_.descriptor(), length_));
            throw;
        }
    }

    std::chrono::system_clock::time_point began_;
    double inputRate_;
    int rate_;  // of the file
    Resampler resampler_;
    AacEncoder encoder_;
    NewFileName name_;
    path unfinished_;
    File file_;
    std::vector<float> finite_;
    std::int64_t samplesTaken_ = 0;
    off_t length_ = 0;     // of the file
    double syncedAt_ = 0;  // seconds
    bool isFull_ = false;
};

TakeWriter::TakeWriter(const TakeFile& file) {
    PrompterCore::require(Resampler::converts(file.rate, AacEncoder::rateFor(file.rate)),
                          "a take's rate can be converted");
    recording_ = std::make_unique<Recording>(file);
}

TakeWriter::TakeWriter(TakeWriter&&) noexcept = default;
TakeWriter& TakeWriter::operator=(TakeWriter&&) noexcept = default;
TakeWriter::~TakeWriter() = default;

void TakeWriter::write(std::span<const float> samples) {
    PrompterCore::require(recording_ != nullptr, "the take is not finished yet");
    recording_->write(samples);
}

double TakeWriter::seconds() const noexcept {
    PrompterCore::require(recording_ != nullptr, "the take is not finished yet");
    return recording_->seconds();
}

SavedTake TakeWriter::finish() {
    PrompterCore::require(recording_ != nullptr, "the take is not finished yet");
    SavedTake saved = recording_->finish();
    recording_.reset();
    return saved;
}

void TakeWriter::discard() noexcept {
    if (recording_) recording_->discard();
    recording_.reset();
}

std::vector<SavedTake> TakeWriter::recover(const path& folder) {
    std::vector<path> unfinished;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().native().ends_with(unfinishedEnding)) unfinished.push_back(entry->path());
    }
    std::ranges::sort(unfinished);
    std::vector<SavedTake> saved;
    for (const path& file : unfinished) {
        std::optional<File> source = openFile(file);
        if (!source || flock(source->descriptor(), LOCK_EX | LOCK_NB) != 0) continue;
        struct stat status {};
        if (fstat(source->descriptor(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
        if (aacFramesIn(source->descriptor()).frames == 0) {
            if (status.st_size == 0) static_cast<void>(unlink(file.c_str()));
            continue;
        }
        std::string stem = file.filename().string();
        stem.resize(stem.size() - unfinishedEnding.size());
        const auto began = std::chrono::system_clock::from_time_t(status.st_mtime);
        SavedTake take = save(source->descriptor(), file, NewFileName(folder, stem), {}, began);
        if (!take.file.empty()) saved.push_back(std::move(take));
    }
    return saved;
}

}  // namespace Varnelle
