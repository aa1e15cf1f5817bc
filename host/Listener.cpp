#include "host/Listener.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <utility>

#include <poll.h>
#include <unistd.h>

#include "PrompterCore/audio/AudioLevel.h"
#include "host/Failures.h"

namespace Varnelle {

namespace {

constexpr std::size_t mostUnrecognised = 20;  // lines, after which the format is what it may be

}  // namespace

SoundListener::SoundListener(std::unique_ptr<SoundSource> sound,
                             std::unique_ptr<Recogniser> recogniser)
    : sound_(std::move(sound)),
      resampler_(sound_->sampleRate(), recogniserRate),
      recogniser_(std::move(recogniser)),
      isLive_(sound_->waitingFor().has_value()) {}

double SoundListener::endTime() const {
    return static_cast<double>(samplesHeard_) / recogniserRate;
}

std::optional<int> SoundListener::waitingFor() const {
    return isWaiting_ ? sound_->waitingFor() : std::nullopt;
}

void SoundListener::read() {
    const std::vector<float> samples = sound_->read();
    soundEnded_ = sound_->hasEnded();
    isWaiting_ = samples.empty() && !soundEnded_;
    const auto append = [&](const std::vector<float>& more) {
        pending_.insert(pending_.end(), more.begin(), more.end());
    };
    append(resampler_.convert(samples));
    if (soundEnded_) append(resampler_.finish());
}

// True when a block can be heard, which is a short one at the end only.
bool SoundListener::hasBlock() {
    isWaiting_ = false;
    while (pending_.size() < blockSize && !soundEnded_) {
        read();
        if (isWaiting_) return false;
    }
    return true;
}

void SoundListener::passOver() {
    if (!isLive_ || soundEnded_) return;
    read();
    pending_.clear();
}

std::vector<Heard> SoundListener::until(double time) {
    if (isLive_ && !soundEnded_) {
        read();
        const double ahead =
            endTime() + static_cast<double>(pending_.size()) / recogniserRate - time;
        if (ahead > mostBehind) pending_.clear();
    }
    std::vector<Heard> heard;
    const auto append = [&](std::vector<WordsUpdate> updates) {
        std::move(updates.begin(), updates.end(), std::back_inserter(heard));
    };
    while (!ended_ &&
           static_cast<double>(samplesHeard_ + static_cast<std::int64_t>(blockSize)) <=
               time * recogniserRate &&
           hasBlock()) {
        const auto end =
            pending_.begin() + static_cast<std::ptrdiff_t>(std::min(blockSize, pending_.size()));
        const std::vector<float> block(pending_.begin(), end);
        pending_.erase(pending_.begin(), end);
        samplesHeard_ += static_cast<std::int64_t>(block.size());
        if (!block.empty()) {
            heard.emplace_back(SoundLevel{endTime(), PrompterCore::AudioLevel::meter(block)});
            append(recogniser_->hear(block));
        }
        if (block.size() < blockSize) {
            ended_ = true;
            append(recogniser_->finish());
        }
    }
    return heard;
}

WordsListener::WordsListener(const std::string& name,
                             std::function<void(const std::string&)> complain,
                             std::optional<WordsFormat> format)
    : name_(shownName(name)), complain_(std::move(complain)), input_(name) {
    if (format) begin(*format);
}

std::vector<Heard> WordsListener::until(double time) {
    while (!isEnd_ && (updates_.empty() || updates_.back().time <= time)) {
        pollfd readable{.fd = input_.descriptor(), .events = POLLIN, .revents = 0};
        isWaiting_ = poll(&readable, 1, 0) == 0;
        if (isWaiting_) break;
        read();
    }
    std::vector<Heard> heard;
    while (!updates_.empty() && updates_.front().time <= time) {
        heard.emplace_back(std::move(updates_.front()));
        updates_.pop_front();
    }
    return heard;
}

std::optional<int> WordsListener::waitingFor() const {
    if (!isWaiting_ || isEnd_) return std::nullopt;
    return input_.descriptor();
}

bool WordsListener::hasEnded() const { return isEnd_ && updates_.empty(); }

std::optional<std::string> WordsListener::trouble() const {
    if (brokenLines_ == 0) return std::nullopt;
    return name_ + ": " + std::to_string(brokenLines_) +
           (brokenLines_ == 1 ? " broken line was passed over" : " broken lines were passed over");
}

void WordsListener::read() {
    std::array<char, 1 << 14> buffer{};
    const ssize_t got = ::read(input_.descriptor(), buffer.data(), buffer.size());
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (got < 0) throw NoInput(name_ + ": " + std::strerror(errno));
    isEnd_ = got == 0;
    std::size_t to = partial_.size();  // nothing before ends a line
    if (!isEnd_) partial_.append(buffer.data(), static_cast<std::size_t>(got));
    std::size_t from = 0;
    for (; (to = partial_.find('\n', to)) != std::string::npos; from = ++to) {
        takeLine(std::string_view(partial_).substr(from, to - from));
    }
    partial_.erase(0, from);
    if (!isEnd_) return;
    if (!partial_.empty()) takeLine(std::exchange(partial_, {}));
    const bool isAll = true;
    if (!reader_) recognise(isAll);
    take(reader_->finish());
}

void WordsListener::takeLine(std::string_view line) {
    constexpr std::string_view mark = "\uFEFF";
    if (std::exchange(isBeginning_, false) && line.starts_with(mark))
        line.remove_prefix(mark.size());
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (reader_) return take(reader_->take(line));
    unrecognised_.emplace_back(line);
    const bool isAll = unrecognised_.size() >= mostUnrecognised;
    recognise(isAll);
}

// Finds out the format from the lines so far; when they are all there are to judge by, whatever
// they look like.
void WordsListener::recognise(bool isAll) {
    std::string beginning;
    for (const std::string& line : unrecognised_) {
        beginning += line + '\n';
    }
    const auto format = recognisedFormat(beginning);
    if (!format && !isAll) return;
    begin(format.value_or(WordsFormat::jsonLines));
    for (const std::string& line : std::exchange(unrecognised_, {})) {
        take(reader_->take(line));
    }
}

void WordsListener::begin(WordsFormat format) {
    reader_ =
        wordsReader(format, input_.isSeekable() ? WordsArrival::recorded : WordsArrival::live);
}

void WordsListener::take(WordsRead read) {
    for (const BrokenPart& broken : read.broken) {
        ++brokenLines_;
        complain_(name_ + ":" + std::to_string(broken.line) + ": " + broken.why);
    }
    for (WordsUpdate& update : read.updates) {
        update.time = std::max(update.time, lastTime_);  // time never goes back
        lastTime_ = update.time;
        updates_.push_back(std::move(update));
    }
}

}  // namespace Varnelle
