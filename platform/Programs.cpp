#include "platform/Programs.h"

#include "platform/Files.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <array>
#include <cassert>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // not every system's header declares it

namespace shotweaver {

namespace {

[[noreturn]] void fail(std::string_view what, const std::string& program, int reason) {
    throw PlatformError(fmt::format("“{}” could not be {}: {}.", program, what,
                                    std::generic_category().message(reason)));
}

/// Repeats a call while a signal interrupts it.
template <class Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// An open descriptor, closed on every way out.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    /// Negative once it is closed.
    int number() const { return number_; }
    bool isOpen() const { return number_ >= 0; }

    void close() {
        if (isOpen()) ::close(std::exchange(number_, -1));
    }

  private:
    int number_;
};

struct Pipe {
    Descriptor reading;
    Descriptor writing;
};

/// Its descriptors are closed in every program that is started, and their numbers are clear of the
/// standard three: where those are closed in this process, they are the first to be given out.
Pipe openPipe(const std::string& program) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) fail("started", program, errno);
    const Descriptor reading(ends[0]);
    const Descriptor writing(ends[1]);
    const auto clear = [&](const Descriptor& end) {
        const int number = ::fcntl(end.number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        if (number < 0) fail("started", program, errno);
        return number;
    };
    return {Descriptor(clear(reading)), Descriptor(clear(writing))};
}

/// How a program is started: without standard input, and without the signals that are ignored or
/// blocked here, which it would inherit.
class Launch {
  public:
    Launch() {
        ::posix_spawnattr_init(&attributes_);
        ::posix_spawn_file_actions_init(&actions_);
        sigset_t signals;
        sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        sigaddset(&signals, SIGPIPE);
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
        connectToNothing(STDIN_FILENO);
    }
    Launch(const Launch&) = delete;
    Launch& operator=(const Launch&) = delete;
    ~Launch() {
        ::posix_spawn_file_actions_destroy(&actions_);
        ::posix_spawnattr_destroy(&attributes_);
    }

    void connectToNothing(int standard) {
        note(::posix_spawn_file_actions_addopen(&actions_, standard, "/dev/null", O_RDWR, 0));
    }
    void connect(int standard, const Descriptor& with) {
        note(::posix_spawn_file_actions_adddup2(&actions_, with.number(), standard));
    }
    void changeFolder(const std::string& folder) {
        note(::posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()));
    }
    void leaveSession() { flags_ |= POSIX_SPAWN_SETSID; }

    /// Returns once the program runs, that is once its image was loaded.
    pid_t start(std::vector<std::string> command) {
        assert(!command.empty());
        std::vector<char*> arguments;
        arguments.reserve(command.size() + 1);
        for (std::string& argument : command)
            arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        note(::posix_spawnattr_setflags(&attributes_, static_cast<short>(flags_)));
        pid_t process = -1;
        if (reason_ == 0)
            note(::posix_spawn(&process, arguments[0], &actions_, &attributes_, arguments.data(),
                               environ));
        if (reason_ != 0) fail("started", command.front(), reason_);
        return process;
    }

  private:
    void note(int reason) {
        if (reason_ == 0) reason_ = reason;
    }

    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t actions_{};
    int flags_ = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    int reason_ = 0; // why it cannot be started
};

/// What waitpid says of a process's end; nothing when this process leaves its children to the
/// system.
std::optional<int> waitFor(pid_t process) {
    int status = 0;
    if (uninterrupted([&] { return ::waitpid(process, &status, 0); }) < 0) return std::nullopt;
    return status;
}

/// A process that is waited for on every way out.
struct Child {
    Child() = default;
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        if (process >= 0) waitFor(process);
    }

    pid_t process = -1;
};

/// Moves what is there already; closes the pipe at its end.
void drain(Descriptor& from, std::string& into) {
    std::array<char, 1U << 14U> block; // NOLINT: only what was read is used
    const auto count =
        uninterrupted([&] { return ::read(from.number(), block.data(), block.size()); });
    if (count > 0)
        into.append(block.data(), static_cast<std::size_t>(count));
    else
        from.close();
}

/// Reads both to their ends at once: a program that fills the one waits for its reader.
void readBoth(Descriptor& output, Descriptor& errors, ProgramResult& result,
              const std::string& program) {
    while (output.isOpen() || errors.isOpen()) {
        // poll leaves out a closed one's negative number
        std::array<pollfd, 2> ready{{{output.number(), POLLIN, 0}, {errors.number(), POLLIN, 0}}};
        if (uninterrupted([&] { return ::poll(ready.data(), ready.size(), -1); }) < 0)
            fail("read", program, errno);
        if (ready[0].revents != 0) drain(output, result.output);
        if (ready[1].revents != 0) drain(errors, result.errors);
    }
}

bool isExecutableFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           ::access(path.c_str(), X_OK) == 0;
}

} // namespace

std::optional<std::string> findProgram(const std::string& name, const Environment& environment) {
    if (name.starts_with('/')) return isExecutableFile(name) ? std::optional(name) : std::nullopt;
    if (name.empty() || name.find('/') != std::string::npos) return std::nullopt;
    const std::string path = environment("PATH").value_or("");
    for (const std::string_view folder : split(path, ':')) {
        // What is found relative to this process's folder would not be there from another one.
        if (!folder.starts_with('/')) continue;
        std::string program = pathInFolder(std::string(folder), name);
        if (isExecutableFile(program)) return program;
    }
    return std::nullopt;
}

void startProgram(const std::vector<std::string>& command, const std::string& folder) {
    Launch launch;
    launch.connectToNothing(STDOUT_FILENO);
    if (!folder.empty()) launch.changeFolder(folder);
    launch.leaveSession();
    const pid_t process = launch.start(command);
    // Its end may come any time: without a thread that waits for it, a zombie stays behind.
    std::thread([process] { waitFor(process); }).detach();
}

ProgramResult runProgram(const std::vector<std::string>& command) {
    const std::string& program = command.front();
    Child child; // before the pipes: it is waited for once nobody reads what it writes
    Pipe output = openPipe(program);
    Pipe errors = openPipe(program);
    Launch launch;
    launch.connect(STDOUT_FILENO, output.writing);
    launch.connect(STDERR_FILENO, errors.writing);
    child.process = launch.start(command);
    output.writing.close();
    errors.writing.close();

    ProgramResult result;
    readBoth(output.reading, errors.reading, result, program);
    const std::optional<int> status = waitFor(std::exchange(child.process, -1));
    if (!status) fail("waited for", program, errno);
    result.status = WIFSIGNALED(*status) ? 128 + WTERMSIG(*status) : WEXITSTATUS(*status);
    return result;
}

} // namespace shotweaver
