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

constexpr int mostUnrecognised = 20;  // lines that are not empty, after which it is hopeless

bool isBlank(std::string_view line) {
    return line.find_first_not_of(" \t") == std::string_view::npos;
}

std::string knownFormats() {
    std::string names;
    for (const WordsFormat format : PrompterCore::allCases<WordsFormat>) {
        names.append(names.empty() ? "" : ", ").append(PrompterCore::rawValue(format));
    }
    return names;
}

}  // namespace

SoundListener::SoundListener(std::unique_ptr<SoundSource> sound,
                             std::unique_ptr<Recogniser> recogniser)
    : sound_(std::move(sound)),
      resampler_(sound_->sampleRate(), recogniserRate),
      recogniser_(std::move(recogniser)),
      isLive_(sound_->waitingFor().has_value()) {}

double SoundListener::endTime() const { return recogniserSeconds(samplesHeard_); }

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

bool SoundListener::passOver(double /*seconds*/) {
    if (isLive_ && !soundEnded_) {
        read();
        pending_.clear();
    }
    return false;
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

void WordsListener::readWhatIsThere(double upTo) {
    while (!isEnd_ && (updates_.empty() || updates_.back().time <= upTo)) {
        pollfd readable{.fd = input_.descriptor(), .events = POLLIN, .revents = 0};
        isWaiting_ = poll(&readable, 1, 0) == 0;
        if (isWaiting_) break;
        read();
    }
}

// Words that were recorded and then piped in are not passed over: they are there before their time.
bool WordsListener::passOver(double seconds) {
    if (!isPassedOver_) isPassedOver_ = !input_.isSeekable() && !isEnd_ && updates_.empty();
    if (!*isPassedOver_) return false;
    passedOver_ += seconds;
    readWhatIsThere(now_);
    return true;
}

std::vector<Heard> WordsListener::until(double time) {
    now_ = time;
    isPassedOver_.reset();
    readWhatIsThere(time);
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
    unrecognised_ += line;
    unrecognised_ += '\n';
    if (isBlank(line)) return;
    const bool isAll = ++unrecognisedCount_ >= mostUnrecognised;
    recognise(isAll);
}

// Finds out the format from the lines so far, which may be all there are to judge by. Complaints
// about each line of something else would help nobody.
void WordsListener::recognise(bool isAll) {
    const auto format = recognisedFormat(unrecognised_);
    if (!format && !isAll) return;
    if (!format && unrecognisedCount_ > 0)
        throw BadData(name_ + ": this begins like no form of recognised words that is known (" +
                      knownFormats() + "); --format says which one it is");
    begin(format.value_or(WordsFormat::jsonLines));
    const std::string lines = std::exchange(unrecognised_, {});
    for (std::size_t from = 0, to = 0; from < lines.size(); from = to + 1) {
        to = lines.find('\n', from);
        take(reader_->take(std::string_view(lines).substr(from, to - from)));
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
        if (!input_.isSeekable()) putOnOurClock(update);
        update.time = std::max(update.time, lastTime_);  // time never goes back
        lastTime_ = update.time;
        updates_.push_back(std::move(update));
    }
}

void WordsListener::putOnOurClock(WordsUpdate& update) {
    const auto takesTime = [](const HeardWord& word) { return word.start < word.end; };
    const double time = update.time - passedOver_;
    if (std::ranges::any_of(update.words, takesTime)) {
        const double late = std::max(now_ - time, 0.0);
        behind_ = std::min(behind_.value_or(late), late);
    }
    const double shift = behind_.value_or(0) - passedOver_;
    update.time += shift;
    for (HeardWord& word : update.words) {
        const bool isSaidNow = !takesTime(word) && update.time <= now_;
        word.start = isSaidNow ? now_ : std::max(word.start + shift, 0.0);
        word.end = isSaidNow ? now_ : std::max(word.end + shift, 0.0);
    }
}

}  // namespace Varnelle
