#include "tests/cli/CommandRun.h"
#include "tests/support/ProjectBuilder.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

namespace shotweaver::test {
namespace {

TEST(CommandLine, helpExplainsTheProgramAndEveryVerb) {
    const struct {
        std::vector<std::string> arguments;
        std::vector<std::string> texts;
    } rows[] = {
        {{}, {"inspect", "generate", "export", "--version", "exit status 2"}},
        {{"inspect"}, {"PROJECT", "--json", "\nExamples:\n  shotweaver inspect "}},
        {{"generate"},
         {"PROJECT", "--main-camera A", "--other-cameras A,B,..", "--audio A",
          "--main-share PERCENT", "--main-range MIN-MAX", "--other-range MIN-MAX", "--double-main",
          "--frequency A=W", "--return-time A=SECONDS", "--opening A=SECONDS",
          "--closing A=SECONDS", "--section A,START,END[,NAME]", "--settings FILE", "--seed N",
          "--json", "--output DIR", "\nExamples:\n  shotweaver generate "}},
        {{"export"}, {"PROJECT", "REVISION", "--output DIR", "\nExamples:\n  shotweaver "}},
    };
    for (const auto& row : rows) {
        for (const char* flag : {"--help", "-h"}) {
            std::vector<std::string> arguments = row.arguments;
            arguments.emplace_back(flag);
            const Outcome help = run(arguments);
            EXPECT_EQ(help.status, 0);
            EXPECT_EQ(help.err, "");
            for (const std::string& text : row.texts)
                EXPECT_NE(help.out.find(text), std::string::npos) << text << " in\n" << help.out;
            for (const char* notOffered : {"--open ", "--preset", "presets"})
                EXPECT_EQ(help.out.find(notOffered), std::string::npos) << notOffered;
        }
    }
}

TEST(CommandLine, theVersionIsOneLine) {
    const Outcome version = run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.err, "");
    EXPECT_EQ(version.out.find("shotweaver "), 0U);
    EXPECT_EQ(version.out.find('\n'), version.out.size() - 1);
}

TEST(CommandLine, wrongUsageIsNamedAndFollowedByTheUsage) {
    const std::string program = "Usage: shotweaver VERB PROJECT [OPTIONS]\n"
                                "\"shotweaver --help\" explains more.\n";
    const std::string generate = wrongUsage("generate", "").err.substr(13);
    const std::string exportUsage = "Usage: shotweaver export PROJECT REVISION --output DIR\n"
                                    "\"shotweaver export --help\" explains more.\n";
    const struct {
        std::vector<std::string> arguments;
        const char* named; // in the first line
        std::string usage;
    } rows[] = {
        {{}, "required", program},
        {{"bogus"}, "bogus", program},
        {{"presets"}, "presets", program},
        {{"Inspect", "a.fcpxml"}, "Inspect", program},
        {{"--bogus"}, "--bogus", program},
        {{"inspect"}, "PROJECT", wrongUsage("inspect", "").err.substr(13)},
        {{"inspect", "a.fcpxml", "more"}, "more", wrongUsage("inspect", "").err.substr(13)},
        {{"inspect", "a.fcpxml", "--json=x"}, "--json", wrongUsage("inspect", "").err.substr(13)},
        {{"inspect", "a.fcpxml", "--seed", "1"},
         "--seed",
         wrongUsage("inspect", "").err.substr(13)},
        {{"generate", "a.fcpxml", "--open"}, "--open", generate},
        {{"generate", "a.fcpxml", "--preset", "Sunday"}, "--preset", generate},
        {{"generate", "a.fcpxml", "--seed"}, "--seed", generate},
        {{"generate", "a.fcpxml", "--seed", "1", "--seed", "2"}, "--seed", generate},
        {{"generate", "a.fcpxml", "--frequency", "A=1", "B=2"}, "B=2", generate},
        {{"generate", "a.fcpxml", "-seed", "1"}, "-seed", generate},
        {{"export", "a.fcpxml", "--output", "out"}, "REVISION", exportUsage},
        {{"export", "a.fcpxml", "edit.json"}, "--output", exportUsage},
    };
    for (const auto& row : rows) {
        const Outcome outcome = run(row.arguments);
        const std::string line = firstLine(outcome.err);
        EXPECT_EQ(outcome.status, 2) << row.named;
        EXPECT_EQ(outcome.out, "") << row.named;
        EXPECT_EQ(line.find("shotweaver: "), 0U) << line;
        EXPECT_NE(line.find(row.named), std::string::npos) << row.named << " in " << line;
        EXPECT_EQ(outcome.err.substr(line.size()), "\n" + row.usage) << row.named;
    }
}

TEST(CommandLine, aStandardOutputThatTakesNothingIsAFailure) {
    const TestFolder folder;
    const std::string project = folder.write("p.fcpxml", ProjectBuilder().xml());
    const std::string edit = folder.write("edit.json", run({"generate", project, "--json"}).out);
    const Outcome expected = failure("The standard output could not be written.");
    EXPECT_EQ(runWithFullOutput({"--help"}), expected);
    EXPECT_EQ(runWithFullOutput({"generate", "--help"}), expected);
    EXPECT_EQ(runWithFullOutput({"--version"}), expected);
    EXPECT_EQ(runWithFullOutput({"inspect", project}), expected);
    EXPECT_EQ(runWithFullOutput({"inspect", project, "--json"}), expected);
    EXPECT_EQ(runWithFullOutput({"generate", project}), expected);
    EXPECT_EQ(runWithFullOutput({"generate", project, "--json"}), expected);

    // The files were written all the same; with --json their paths are on the standard error.
    EXPECT_EQ(runWithFullOutput({"export", project, edit, "--output", folder.path()}), expected);
    const std::string second = folder.path("Sunday Shotweaver 2");
    EXPECT_EQ(runWithFullOutput({"generate", project, "--json", "--output", folder.path()}),
              (Outcome{1, "", second + ".fcpxml\n" + second + ".settings.txt\n" + expected.err}));
}

} // namespace
} // namespace shotweaver::test
