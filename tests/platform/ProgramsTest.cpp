#include "platform/Programs.h"

#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace shotweaver {
namespace {

using test::failureOf;
using test::TestFolder;

/// Leaves no descriptor and no child behind.
struct Programs : testing::Test {
    static int nextDescriptor() {
        const int next = dup(STDERR_FILENO);
        close(next);
        return next;
    }
    void TearDown() override {
        EXPECT_EQ(nextDescriptor(), before);
        siginfo_t ended;
        while (waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT) == 0) { // until all were waited for
        }
    }
    const int before = nextDescriptor();
    const TestFolder folder;
};

TEST_F(Programs, areFoundByAbsolutePathsAndAlongThePath) {
    std::filesystem::create_directories(folder.path("tool"));
    const std::string data = folder.write("data", "");
    const auto find = [&](const std::string& name) {
        const std::string path = std::filesystem::relative("/bin").string() + "::" + folder.path();
        const auto environment = [&](const char*) { return std::optional(path + ":/bin"); };
        return findProgram(name, environment).value_or("-");
    };
    EXPECT_EQ(find("sh"), "/bin/sh");
    EXPECT_EQ(find("/bin/sh"), "/bin/sh");
    for (const std::string& none : {data, folder.path("tool"), {}, {"data"}, {"tool"}, {"../sh"}})
        EXPECT_EQ(find(none), "-") << none;
}

TEST_F(Programs, startedOnesRunOnTheirOwn) {
    for (const char* fifo : {"said", "go"})
        ASSERT_EQ(mkfifo(folder.path(fifo).c_str(), 0600), 0);
    startProgram({"/bin/sh", "-c", R"(
                  [ /dev/stdin -ef /dev/null ] && [ /dev/stdout -ef /dev/null ] && nothing=nothing
                  printf '%s\n' $$ "$nothing" "$PWD" "$@" >"$0/said"
                  read -r line <"$0/go")",
                  folder.path(), "a b", "", "%f\"$HOME"},
                 "/usr");
    std::istringstream said(folder.read("said"));
    pid_t process = 0;
    said >> process;
    EXPECT_EQ(said.str(), fmt::format("{}\nnothing\n/usr\na b\n\n%f\"$HOME\n", process));
    EXPECT_NE(getsid(process), getsid(0));
    folder.write("go", "\n"); // until then it runs
}

TEST_F(Programs, ranOnesLeaveTheirStatusAndTheirTexts) {
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr); // not theirs to inherit, as what is ignored
    std::signal(SIGPIPE, SIG_IGN);
    const std::string some(150'000, '\0'); // more than a pipe holds
    const std::string go = folder.path("go");
    ASSERT_EQ(mkfifo(go.c_str(), 0600), 0);
    const std::string put = "head -c 150000 /dev/zero";
    const std::pair<std::string, ProgramResult> rows[] = {
        {"cat; echo out; echo err >&2; exit 255", {255, "out\n", "err\n"}},
        {"exec >&- 2>&-; kill -PIPE $$", {141, "", ""}},
        {"(exec >&- 2>&-; read -r line <" + go + ") & echo out",
         {0, "out\n", ""}}, // not waited for
        {put + " >&2; " + put + "; " + put + " >&2", {0, some, some + some}},
    };
    for (const auto& [script, expected] : rows) {
        const ProgramResult result = runProgram({"/bin/sh", "-c", script});
        EXPECT_EQ(result.status, expected.status) << script;
        EXPECT_TRUE(result.output == expected.output && result.errors == expected.errors) << script;
    }
    folder.write("go", "\n");
    std::signal(SIGPIPE, SIG_DFL);
    pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
}

TEST_F(Programs, thatCannotBeStartedSayWhy) {
    const std::string data = folder.write("data", "#!/bin/sh\n");
    const std::string why = "” could not be started: No such file or directory.";
    EXPECT_EQ(failureOf([] { startProgram({"/none", "x"}); }), "“/none" + why);
    EXPECT_EQ(failureOf([] { startProgram({"/bin/ls"}, "/none"); }), "“/bin/ls" + why);
    EXPECT_EQ(failureOf([&] { runProgram({data}); }),
              "“" + data + "” could not be started: Permission denied.");
}

} // namespace
} // namespace shotweaver
