#include "host/SoundFileSource.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>
#include <utility>

#include <sndfile.h>

#include "host/Failures.h"
#include "host/InputFile.h"
#include "host/Recogniser.h"
#include "host/Resampler.h"

namespace Varnelle {

namespace {

// A sound that came through a pipe, as the sound library's virtual file.
struct Memory {
    std::string bytes;
    sf_count_t at = 0;

    sf_count_t size() const { return static_cast<sf_count_t>(bytes.size()); }
};

SF_VIRTUAL_IO memoryFile() {
    SF_VIRTUAL_IO io{};
    io.get_filelen = [](void* user) { return static_cast<Memory*>(user)->size(); };
    io.tell = [](void* user) { return static_cast<Memory*>(user)->at; };
    io.seek = [](sf_count_t offset, int whence, void* user) {
        Memory& memory = *static_cast<Memory*>(user);
        const sf_count_t base = whence == SEEK_SET   ? 0
                                : whence == SEEK_CUR ? memory.at
                                                     : memory.size();
        memory.at = std::clamp<sf_count_t>(base + offset, 0, memory.size());
        return memory.at;
    };
    io.read = [](void* target, sf_count_t count, void* user) {
        Memory& memory = *static_cast<Memory*>(user);
        const sf_count_t got = std::clamp<sf_count_t>(count, 0, memory.size() - memory.at);
        std::memcpy(target, memory.bytes.data() + memory.at, static_cast<std::size_t>(got));
        memory.at += got;
        return got;
    };
    return io;
}

// A WAV file that was cut off opens as if it had been made that short; only the library's log of
// the header still says what the file claims to hold: "data : 2001600 (should be 499956)". Writers
// into a pipe, who cannot know the length, claim the largest number there is or none.
bool claimsMoreThanItHolds(SNDFILE* file) {
    std::array<char, 4096> log{};
    sf_command(file, SFC_GET_LOG_INFO, log.data(), static_cast<int>(log.size()) - 1);
    const char* const line = std::strstr(log.data(), "\ndata : ");
    unsigned long long claimed = 0;
    unsigned long long held = 0;
    return line != nullptr &&
           std::sscanf(line, "\ndata : %llu (should be %llu)", &claimed, &held) == 2 &&
           claimed > held && claimed < 0x7FFFF000;
}

}  // namespace

class SoundFileSource::Reader {
public:
    explicit Reader(const std::string& name) : name_(shownName(name)) {
        open(name);
        if (file_ == nullptr) {
            std::string why = sf_strerror(nullptr);
            if (why.ends_with('.')) why.pop_back();
            throw BadData(name_ + ": no sound file that can be read (" + why +
                          "); WAV, FLAC and Ogg files can be");
        }
        if (info_.channels <= 0 || !Resampler::converts(info_.samplerate, recogniserRate)) {
            sf_close(file_);
            throw BadData(name_ + ": a sound of " + std::to_string(info_.samplerate) +
                          " samples a second cannot be converted");
        }
        endedEarly_ = claimsMoreThanItHolds(file_);
    }

    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() { sf_close(file_); }

    double sampleRate() const { return info_.samplerate; }

    std::vector<float> read() {
        const auto channels = static_cast<std::size_t>(info_.channels);
        interleaved_.resize(blockSize * channels);
        const sf_count_t got = sf_readf_float(file_, interleaved_.data(), blockSize);
        framesRead_ += std::max<sf_count_t>(got, 0);
        ended_ = got < static_cast<sf_count_t>(blockSize);
        std::vector<float> samples(static_cast<std::size_t>(std::max<sf_count_t>(got, 0)));
        for (std::size_t i = 0; i < samples.size(); ++i) {
            float sum = 0;
            for (std::size_t c = 0; c < channels; ++c) {
                sum += interleaved_[i * channels + c];
            }
            const float sample = sum / static_cast<float>(channels);
            samples[i] = std::isfinite(sample) ? sample : 0.0F;
        }
        return samples;
    }

    bool hasEnded() const { return ended_; }

    std::optional<std::string> trouble() const {
        if (!ended_ || (!endedEarly_ && framesRead_ >= info_.frames)) return std::nullopt;
        return name_ + ": the sound breaks off after " +
               std::to_string(std::lround(static_cast<double>(framesRead_) / info_.samplerate)) +
               " seconds, before the end that the file announces";
    }

    double duration() const {
        return static_cast<double>(info_.frames) / static_cast<double>(info_.samplerate);
    }

private:
    // In a pipe the sound library cannot go back: what comes through one is read to its end first.
    void open(const std::string& name) {
        input_.emplace(name);
        if (name != "-" && input_->isSeekable()) {
            file_ = sf_open_fd(input_->descriptor(), SFM_READ, &info_, SF_FALSE);
            return;
        }
        memory_.bytes = input_->rest();
        SF_VIRTUAL_IO io = memoryFile();
        file_ = sf_open_virtual(&io, SFM_READ, &info_, &memory_);
    }

    std::string name_;  // as messages show it
    std::optional<InputFile> input_;
    Memory memory_;
    SF_INFO info_{};
    SNDFILE* file_ = nullptr;
    std::vector<float> interleaved_;
    sf_count_t framesRead_ = 0;
    bool ended_ = false;
    bool endedEarly_ = false;
};

SoundFileSource::SoundFileSource(const std::string& name)
    : reader_(std::make_unique<Reader>(name)) {}
SoundFileSource::~SoundFileSource() = default;

double SoundFileSource::sampleRate() const { return reader_->sampleRate(); }
std::vector<float> SoundFileSource::read() { return reader_->read(); }
bool SoundFileSource::hasEnded() const { return reader_->hasEnded(); }
std::optional<std::string> SoundFileSource::trouble() const { return reader_->trouble(); }
double SoundFileSource::duration() const { return reader_->duration(); }

}  // namespace Varnelle
