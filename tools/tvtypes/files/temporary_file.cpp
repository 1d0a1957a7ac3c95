#include "files/temporary_file.h"

#include <fmt/format.h>

#include <array>
#include <atomic>
#include <cassert>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace tvtool::files {

namespace {

/// Signals that end a process unless it handles them, and that others send to it.
constexpr std::array endingSignals{SIGHUP, SIGINT, SIGPIPE, SIGQUIT, SIGTERM, SIGXCPU};

constexpr int noFolder = -1;

/// The temporary file. The handler reads the name only while there is a folder.
std::atomic<int> pendingFolder{noFolder};
std::array<char, 48> pendingName{};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may use it");

/// The actions that the handler has replaced, in the order of the signals.
std::array<struct sigaction, endingSignals.size()> replacedActions;

sigset_t endingSet() {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : endingSignals) {
        sigaddset(&set, signal);
    }
    return set;
}

extern "C" void removeAndEnd(int signal) {
    removeTemporaryFile();
    // SA_RESETHAND has restored the default action; the signal is delivered after the return.
    static_cast<void>(std::raise(signal));
}

bool hasDefaultAction(const struct sigaction& action) {
    return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_DFL;
}

void handleSignals() {
    struct sigaction handler {};
    handler.sa_handler = removeAndEnd;
    handler.sa_flags = static_cast<int>(SA_RESETHAND);
    handler.sa_mask = endingSet();
    for (std::size_t i = 0; i < endingSignals.size(); ++i) {
        sigaction(endingSignals[i], nullptr, &replacedActions[i]);
        if (hasDefaultAction(replacedActions[i])) {
            sigaction(endingSignals[i], &handler, nullptr);
        }
    }
}

void restoreSignals() {
    for (std::size_t i = 0; i < endingSignals.size(); ++i) {
        if (hasDefaultAction(replacedActions[i])) {
            sigaction(endingSignals[i], &replacedActions[i], nullptr);
        }
    }
}

/// Defers the ending signals during its life.
class DeferredSignals {
  public:
    DeferredSignals() {
        const sigset_t set = endingSet();
        pthread_sigmask(SIG_BLOCK, &set, &before_);
    }
    ~DeferredSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    DeferredSignals(const DeferredSignals&) = delete;
    DeferredSignals& operator=(const DeferredSignals&) = delete;

  private:
    sigset_t before_{};
};

/// Creates a file with an unused name, which it stores in pendingName, and returns its descriptor.
int create(int folder) {
    // Files of this name exist if a process with the same id was killed.
    constexpr int mostAttempts = 100;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const auto name = fmt::format_to_n(pendingName.data(), pendingName.size() - 1,
                                           ".tvtypes-{}-{}.part", getpid(), attempt);
        *name.out = '\0';
        const int descriptor =
            openat(folder, pendingName.data(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST) {
            return descriptor;
        }
    }
    return -1;
}

[[noreturn]] void throwSystemError() { throw std::system_error(errno, std::generic_category()); }

} // namespace

void removeTemporaryFile() noexcept {
    if (const int folder = pendingFolder.load(); folder != noFolder) {
        unlinkat(folder, pendingName.data(), 0);
    }
}

TemporaryFile::TemporaryFile(int folder) {
    assert(pendingFolder == noFolder);
    // A signal between the creation and the registration would leave the file.
    const DeferredSignals deferred;
    descriptor_ = create(folder);
    if (descriptor_ < 0) {
        throwSystemError();
    }
    pendingFolder = folder;
    handleSignals();
}

TemporaryFile::~TemporaryFile() {
    if (pendingFolder != noFolder) {
        removeTemporaryFile();
        pendingFolder = noFolder;
        restoreSignals();
    }
}

void TemporaryFile::rename(const std::string& name) {
    if (renameat(pendingFolder, pendingName.data(), pendingFolder, name.c_str()) != 0) {
        throwSystemError();
    }
    pendingFolder = noFolder;
    restoreSignals();
}

} // namespace tvtool::files
