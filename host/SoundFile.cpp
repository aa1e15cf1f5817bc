#include "host/SoundFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>
#include <utility>

#include <samplerate.h>
#include <sndfile.h>

#include "host/Failures.h"
#include "host/InputFile.h"
#include "host/Recogniser.h"
#include "host/TextFile.h"

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

class SoundFile::Reader {
public:
    explicit Reader(const std::string& name) {
        open(name);
        if (file_ == nullptr) {
            std::string why = sf_strerror(nullptr);
            if (why.ends_with('.')) why.pop_back();
            throw BadData(shownName(name) + ": no sound file that can be read (" + why + ")");
        }
        ratio_ = static_cast<double>(sampleRate) / info_.samplerate;
        int error = 0;
        if (info_.channels > 0 && src_is_valid_ratio(ratio_) != 0)
            converter_ =
                src_callback_new(&Reader::supply, SRC_SINC_MEDIUM_QUALITY, 1, &error, this);
        if (converter_ == nullptr) {
            sf_close(file_);
            throw BadData(shownName(name) + ": a sound of " + std::to_string(info_.samplerate) +
                          " samples a second cannot be converted");
        }
        endedEarly_ = claimsMoreThanItHolds(file_);
    }

    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    ~Reader() {
        src_delete(converter_);
        sf_close(file_);
    }

    std::vector<float> next(std::size_t count) {
        std::vector<float> samples(count);
        std::size_t have = 0;
        while (have < count) {
            const long got =
                ratio_ == 1 ? mono(samples.data() + have, count - have)
                            : src_callback_read(converter_, ratio_, static_cast<long>(count - have),
                                                samples.data() + have);
            if (got <= 0) break;
            have += static_cast<std::size_t>(got);
        }
        samples.resize(have);
        return samples;
    }

    double duration() const {
        return static_cast<double>(info_.frames) / static_cast<double>(info_.samplerate);
    }

    bool endedEarly() const { return endedEarly_ || (ended_ && framesRead_ < info_.frames); }

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

    // Up to `count` samples of the file's own rate, channels averaged; 0 at the end.
    long mono(float* target, std::size_t count) {
        const auto channels = static_cast<std::size_t>(info_.channels);
        interleaved_.resize(count * channels);
        const sf_count_t got =
            sf_readf_float(file_, interleaved_.data(), static_cast<sf_count_t>(count));
        if (got <= 0) {
            ended_ = true;
            return 0;
        }
        framesRead_ += got;
        for (std::size_t i = 0; i < static_cast<std::size_t>(got); ++i) {
            float sum = 0;
            for (std::size_t c = 0; c < channels; ++c) {
                sum += interleaved_[i * channels + c];
            }
            const float sample = sum / static_cast<float>(channels);
            target[i] = std::isfinite(sample) ? sample : 0.0F;
        }
        return static_cast<long>(got);
    }

    static long supply(void* self, float** data) {
        Reader& reader = *static_cast<Reader*>(self);
        *data = reader.unconverted_.data();
        return reader.mono(reader.unconverted_.data(), reader.unconverted_.size());
    }

    std::optional<InputFile> input_;
    Memory memory_;
    SF_INFO info_{};
    SNDFILE* file_ = nullptr;
    SRC_STATE* converter_ = nullptr;
    double ratio_ = 1;
    std::vector<float> interleaved_;
    std::array<float, 4096> unconverted_{};
    sf_count_t framesRead_ = 0;
    bool ended_ = false;
    bool endedEarly_ = false;
};

SoundFile::SoundFile(const std::string& name) : reader_(std::make_unique<Reader>(name)) {}
SoundFile::SoundFile(SoundFile&&) noexcept = default;
SoundFile& SoundFile::operator=(SoundFile&&) noexcept = default;
SoundFile::~SoundFile() = default;

std::vector<float> SoundFile::next(std::size_t count) { return reader_->next(count); }
double SoundFile::duration() const { return reader_->duration(); }
bool SoundFile::endedEarly() const { return reader_->endedEarly(); }

}  // namespace Varnelle
