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

SoundListener::SoundListener(SoundFile sound, std::unique_ptr<Recogniser> recogniser,
                             std::string name)
    : sound_(std::move(sound)), recogniser_(std::move(recogniser)), name_(std::move(name)) {}

double SoundListener::endTime() const { return static_cast<double>(samplesHeard_) / sampleRate; }

std::vector<Heard> SoundListener::until(double time) {
    std::vector<Heard> heard;
    const auto append = [&](std::vector<WordsUpdate> updates) {
        std::move(updates.begin(), updates.end(), std::back_inserter(heard));
    };
    while (!ended_ && static_cast<double>(samplesHeard_ + static_cast<std::int64_t>(blockSize)) <=
                          time * sampleRate) {
        const std::vector<float> block = sound_.next(blockSize);
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

std::optional<std::string> SoundListener::trouble() const {
    if (!sound_.endedEarly()) return std::nullopt;
    return name_ + ": the sound breaks off after " + std::to_string(std::lround(endTime())) +
           " seconds, before the end that the file announces";
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
