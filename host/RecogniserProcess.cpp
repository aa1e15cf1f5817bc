#include "host/RecogniserProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/Failures.h"

namespace Varnelle {

namespace {

using Kind = RecogniserMessage::Kind;

constexpr int unavailable = 69;            // the exit status of a recogniser that says why
constexpr std::int64_t startAttempts = 3;  // of processes that end before they are ready
constexpr std::int64_t endsAllowed = 3;    // of processes, with less than `calm` between them
constexpr std::int64_t calm = 10 * recogniserRate;  // samples
constexpr std::size_t pieceSize = recogniserRate;   // samples of one question
constexpr std::chrono::milliseconds waitingStep{100};

// In steps, so that hours of sleep between two of them count as one.
bool canWithin(short event, int descriptor, std::chrono::milliseconds time) {
    for (; time.count() > 0; time -= waitingStep) {
        pollfd waited{.fd = descriptor, .events = event, .revents = 0};
        const auto step = std::min(waitingStep, time);
        if (poll(&waited, 1, static_cast<int>(step.count())) > 0) return true;
    }
    return false;
}

bool sendAll(int socket, std::string_view bytes, std::chrono::milliseconds time) {
    while (!bytes.empty()) {
        const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        } else if (errno == EAGAIN) {
            if (!canWithin(POLLOUT, socket, time)) return false;
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

// More of what the other side sends; false at its end.
bool receive(int socket, MessageReader& reader) {
    std::array<char, 1 << 16> buffer;
    while (true) {
        const ssize_t got = recv(socket, buffer.data(), buffer.size(), 0);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        reader.append({buffer.data(), static_cast<std::size_t>(got)});
        return true;
    }
}

// The other process, once it stands on its own: questions in, answers out, to the end of them.
void serve(int socket, const RecogniserFactory& factory) {
    constexpr std::chrono::hours ever{24 * 365};  // our program reads or is gone
    const auto recogniser = factory();
    MessageReader reader;
    if (!sendAll(socket, bytesOf({Kind::ready, {}}), ever)) return;
    while (receive(socket, reader)) {
        while (const auto question = reader.next()) {
            const auto samples = samplesFromBytes(question->content);
            if (!samples) return;
            const auto updates =
                question->kind == Kind::finish ? recogniser->finish() : recogniser->hear(*samples);
            if (!sendAll(socket, bytesOf({Kind::words, bytesOfUpdates(updates)}), ever)) return;
        }
    }
}

// Nothing of our program's is left to the copy of it but memory: no file, no terminal, no signal
// that a user sends to all processes of the terminal; and it never outlives our program.
int standAlone(int socket, int errors, pid_t program) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != program) _exit(0);
    for (const int signal : {SIGINT, SIGTERM, SIGQUIT, SIGHUP}) {
        static_cast<void>(::signal(signal, SIG_IGN));
    }
    const int nothing = open("/dev/null", O_RDWR);
    dup2(nothing, STDIN_FILENO);
    dup2(nothing, STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
    constexpr int only = STDERR_FILENO + 1;
    dup2(socket, only);
    close_range(only + 1, ~0U, 0);
    return only;
}

[[noreturn]] void runRecogniser(int socket, int errors, pid_t program,
                                const RecogniserFactory& factory) {
    try {
        serve(standAlone(socket, errors, program), factory);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "varnelle: %s\n", failure.what());
        _exit(unavailable);
    }
    _exit(0);
}

}  // namespace

// Why a process is of no more use.
class RecogniserProcess::Broken : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A process that is there, ended and reaped at the end of its life: it has nothing to lose.
class RecogniserProcess::Process {
public:
    explicit Process(const RecogniserFactory& factory) {
        std::array<int, 2> sockets{-1, -1};
        std::array<int, 2> errors{-1, -1};
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0)
            throw Unavailable("the system gives the recogniser no connection");
        socket_ = sockets[0];
        if (pipe2(errors.data(), O_CLOEXEC | O_NONBLOCK) == 0) {
            const pid_t program = getpid();
            id_ = fork();
            if (id_ == 0) runRecogniser(sockets[1], errors[1], program, factory);
        }
        errors_ = errors[0];
        close(sockets[1]);
        if (errors[1] >= 0) close(errors[1]);
        if (id_ > 0) return;
        closeAll();
        throw Unavailable("the system gives the recogniser no process");
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() {
        static_cast<void>(end());
        closeAll();
    }

    pid_t id() const { return id_; }

    // Throws Broken when there is none in time.
    RecogniserMessage answer(Kind kind, std::chrono::milliseconds patience) {
        while (true) {
            if (auto message = reader_.next()) {
                if (message->kind != kind) throw Broken("answered nonsense");
                return *std::move(message);
            }
            if (reader_.isBroken()) throw Broken("answered nonsense");
            if (!canWithin(POLLIN, socket_, patience)) throw Broken("did not answer");
            if (!receive(socket_, reader_)) throw Broken("ended unexpectedly");
        }
    }

    RecogniserMessage ask(const RecogniserMessage& question, std::chrono::milliseconds patience) {
        // A process that has ended is noticed by the answer that does not come.
        static_cast<void>(sendAll(socket_, bytesOf(question), patience));
        return answer(Kind::words, patience);
    }

    // Ends it; what it said at its end, when it said why.
    std::optional<std::string> end() {
        if (id_ <= 0) return std::nullopt;
        kill(id_, SIGKILL);
        int status = 0;
        while (waitpid(id_, &status, 0) < 0 && errno == EINTR) {
        }
        id_ = -1;
        if (!WIFEXITED(status) || WEXITSTATUS(status) != unavailable) return std::nullopt;
        std::array<char, 4096> said;
        const ssize_t size = read(errors_, said.data(), said.size());
        std::string sentence(said.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
        sentence.resize(std::min(sentence.find('\n'), sentence.size()));
        if (constexpr std::string_view us = "varnelle: "; sentence.starts_with(us))
            sentence.erase(0, us.size());
        return sentence.empty() ? std::nullopt : std::optional(sentence);
    }

private:
    void closeAll() {
        close(socket_);
        if (errors_ >= 0) close(errors_);
    }

    pid_t id_ = -1;
    int socket_ = -1;
    int errors_ = -1;
    MessageReader reader_;
};

RecogniserProcess::RecogniserProcess(RecogniserFactory factory,
                                     std::function<void(const std::string&)> complain,
                                     const RecogniserPatience& patience)
    : factory_(std::move(factory)), complain_(std::move(complain)), patience_(patience) {
    start();
}

RecogniserProcess::~RecogniserProcess() = default;

std::optional<int> RecogniserProcess::processId() const noexcept {
    return process_ ? std::optional(process_->id()) : std::nullopt;
}

void RecogniserProcess::start() {
    process_.reset();
    samplesBefore_ = samplesHeard_;
    wordsBefore_ = words_;
    std::string why;
    for (std::int64_t attempt = 0; attempt < startAttempts; ++attempt) {
        auto process = std::make_unique<Process>(factory_);
        try {
            static_cast<void>(process->answer(Kind::ready, patience_.start));
            process_ = std::move(process);
            return;
        } catch (const Broken& broken) {
            why = broken.what();
            if (const auto sentence = process->end()) throw Unavailable(*sentence);
        }
    }
    throw Unavailable("the recogniser cannot be started: it " + why + " each time");
}

// Throws Broken when the answer makes no sense.
std::vector<WordsUpdate> RecogniserProcess::ask(const RecogniserMessage& question) {
    const RecogniserMessage answer = process_->ask(question, patience_.answer);
    auto updates = updatesFromBytes(answer.content);
    if (!updates) throw Broken("answered nonsense");
    const double start = recogniserSeconds(samplesBefore_);
    const double heard = recogniserSeconds(samplesHeard_ - samplesBefore_) + 1e-6;
    std::int64_t words = words_;
    for (WordsUpdate& update : *updates) {
        if (update.keep > words - wordsBefore_ || update.time > heard)
            throw Broken("answered nonsense");
        update.time += start;
        update.keep += wordsBefore_;
        for (HeardWord& word : update.words) {
            word.start += start;
            word.end += start;
        }
        words = update.keep + static_cast<std::int64_t>(update.words.size());
    }
    words_ = words;
    return *std::move(updates);
}

WordsUpdate RecogniserProcess::settled() const {
    return {.time = recogniserSeconds(samplesHeard_), .keep = words_, .words = {}, .final = true};
}

// Counts ends that come soon after one another.
void RecogniserProcess::noteEnd() {
    ends_ = samplesHeard_ - lastEnd_ < calm ? ends_ + 1 : 1;
    lastEnd_ = samplesHeard_;
    if (ends_ > endsAllowed)
        throw Unavailable("the recogniser ends again and again; it is given up");
}

std::vector<WordsUpdate> RecogniserProcess::hear(std::span<const float> samples) {
    std::vector<WordsUpdate> updates;
    while (process_ && !samples.empty()) {
        const auto piece = samples.first(std::min(samples.size(), pieceSize));
        samples = samples.subspan(piece.size());
        samplesHeard_ += static_cast<std::int64_t>(piece.size());
        try {
            auto more = ask({Kind::hear, bytesOfSamples(piece)});
            std::move(more.begin(), more.end(), std::back_inserter(updates));
        } catch (const Broken& broken) {
            noteEnd();
            updates.push_back(settled());
            complain_(fmt::format("the recogniser {} at {:.1f} seconds; another one goes on",
                                  broken.what(), recogniserSeconds(samplesHeard_)));
            start();
        }
    }
    return updates;
}

std::vector<WordsUpdate> RecogniserProcess::finish() {
    if (!process_) return {};
    std::vector<WordsUpdate> updates;
    try {
        updates = ask({Kind::finish, {}});
    } catch (const Broken& broken) {
        complain_(fmt::format("the recogniser {} at the end of the sound", broken.what()));
        updates.push_back(settled());
    }
    process_.reset();
    return updates;
}

}  // namespace Varnelle
