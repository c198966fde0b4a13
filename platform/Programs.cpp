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
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

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

/// A descriptor of this process alone: closed on every way out and in every program that is
/// started.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
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

/// The same descriptor under a number clear of the standard three: a child replaces those, and
/// where they are closed in this process, they are the first to be given out.
Descriptor clearOfStandard(Descriptor descriptor, const std::string& program) {
    if (descriptor.number() > STDERR_FILENO) return descriptor;
    Descriptor clear(::fcntl(descriptor.number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    if (!clear.isOpen()) fail("started", program, errno);
    return clear;
}

struct Pipe {
    Descriptor reading;
    Descriptor writing;
};

Pipe openPipe(const std::string& program) {
    std::array<int, 2> ends{};
#if defined(__APPLE__)
    if (::pipe(ends.data()) != 0) fail("started", program, errno);
    for (const int end : ends)
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
#else
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) fail("started", program, errno);
#endif
    Pipe made{Descriptor(ends[0]), Descriptor(ends[1])};
    made.reading = clearOfStandard(std::move(made.reading), program);
    made.writing = clearOfStandard(std::move(made.writing), program);
    return made;
}

Descriptor openNothing(const std::string& program) {
    Descriptor nothing(uninterrupted([] { return ::open("/dev/null", O_RDWR | O_CLOEXEC); }));
    if (!nothing.isOpen()) fail("started", program, errno);
    return clearOfStandard(std::move(nothing), program);
}

/// What a child needs to become a program. All of it is made before the fork: the other threads are
/// gone in the child, perhaps with the allocator's lock, so it makes only async-signal-safe calls.
struct Launch {
    std::vector<char*> arguments; // ends with a null pointer
    const char* folder = "";      // empty: this process's
    int input = -1;
    int output = -1;
    int errors = -1; // negative: this process's
    int report = -1; // takes an error number
};

std::vector<char*> argumentPointers(const std::vector<std::string>& command) {
    assert(!command.empty());
    std::vector<char*> pointers;
    pointers.reserve(command.size() + 1);
    for (const std::string& argument : command)
        pointers.push_back(const_cast<char*>(argument.c_str())); // execv's type; it changes nothing
    pointers.push_back(nullptr);
    return pointers;
}

[[noreturn]] void reportAndExit(int report) {
    const int reason = errno;
    uninterrupted([&] { return ::write(report, &reason, sizeof reason); });
    ::_exit(127);
}

bool replace(int standard, int with) {
    return with < 0 || uninterrupted([&] { return ::dup2(with, standard); }) >= 0;
}

/// In a child.
[[noreturn]] void becomeProgram(const Launch& launch) {
    // A program inherits what is ignored and what is blocked here, and expects neither.
    std::signal(SIGPIPE, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    ::pthread_sigmask(SIG_SETMASK, &none, nullptr);

    if (replace(STDIN_FILENO, launch.input) && replace(STDOUT_FILENO, launch.output) &&
        replace(STDERR_FILENO, launch.errors) &&
        (*launch.folder == '\0' || ::chdir(launch.folder) == 0))
        ::execv(launch.arguments[0], launch.arguments.data());
    reportAndExit(launch.report);
}

/// In a child: hands over to a child of its own, which the system adopts and waits for.
[[noreturn]] void startDetached(const Launch& launch) {
    ::setsid();
    const pid_t program = ::fork();
    if (program == 0) becomeProgram(launch);
    if (program < 0) reportAndExit(launch.report);
    ::_exit(0);
}

/// The error number that kept a child from becoming the program; 0 when it has become it, which
/// closed the pipe.
int reportedReason(Pipe& report) {
    report.writing.close();
    int reason = 0;
    uninterrupted([&] { return ::read(report.reading.number(), &reason, sizeof reason); });
    return reason;
}

/// A child that is waited for on every way out.
class Child {
  public:
    Child() = default;
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() { wait(); }

    template <class Body>
    void start(const std::string& program, Body body) {
        process_ = ::fork();
        if (process_ == 0) body();
        if (process_ < 0) fail("started", program, errno);
    }

    /// What waitpid says of its end; nothing when this process leaves its children to the system.
    std::optional<int> wait() {
        const pid_t process = std::exchange(process_, -1);
        int status = 0;
        if (process < 0) return std::nullopt;
        if (uninterrupted([&] { return ::waitpid(process, &status, 0); }) < 0) return std::nullopt;
        return status;
    }

  private:
    pid_t process_ = -1;
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
    const std::string& program = command.front();
    Child middle;
    Pipe report = openPipe(program);
    const Descriptor nothing = openNothing(program);
    const Launch launch{.arguments = argumentPointers(command),
                        .folder = folder.c_str(),
                        .input = nothing.number(),
                        .output = nothing.number(),
                        .report = report.writing.number()};
    middle.start(program, [&] { startDetached(launch); });
    if (const int reason = reportedReason(report); reason != 0) fail("started", program, reason);
}

ProgramResult runProgram(const std::vector<std::string>& command) {
    const std::string& program = command.front();
    Child child; // before the pipes: it is waited for once nobody reads what it writes
    Pipe report = openPipe(program);
    Pipe output = openPipe(program);
    Pipe errors = openPipe(program);
    const Descriptor nothing = openNothing(program);
    const Launch launch{.arguments = argumentPointers(command),
                        .input = nothing.number(),
                        .output = output.writing.number(),
                        .errors = errors.writing.number(),
                        .report = report.writing.number()};
    child.start(program, [&] { becomeProgram(launch); });
    output.writing.close();
    errors.writing.close();
    if (const int reason = reportedReason(report); reason != 0) fail("started", program, reason);

    ProgramResult result;
    readBoth(output.reading, errors.reading, result, program);
    const std::optional<int> status = child.wait();
    if (!status) fail("waited for", program, errno);
    result.status = WIFSIGNALED(*status) ? 128 + WTERMSIG(*status) : WEXITSTATUS(*status);
    return result;
}

} // namespace shotweaver
