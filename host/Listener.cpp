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
#include "host/WordsFile.h"

namespace Varnelle {

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
                             std::function<void(const std::string&)> complain)
    : name_(shownName(name)), complain_(std::move(complain)), input_(name) {}

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
    if (isEnd_ && !partial_.empty()) takeLine(std::exchange(partial_, {}));
}

void WordsListener::takeLine(std::string_view line) {
    ++lineNumber_;
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.find_first_not_of(" \t") == std::string_view::npos) return;
    auto read = wordsFromLine(line);
    if (const auto* broken = std::get_if<BrokenLine>(&read)) {
        ++brokenLines_;
        complain_(name_ + ":" + std::to_string(lineNumber_) + ": " + broken->why);
        return;
    }
    WordsUpdate& update = std::get<WordsUpdate>(read);
    update.time = std::max(update.time, lastTime_);  // time never goes back
    lastTime_ = update.time;
    updates_.push_back(std::move(update));
}

}  // namespace Varnelle
