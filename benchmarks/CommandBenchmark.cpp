// Runs whole programs on large documents, turn and turn about, and prints wall time, processor time
// and peak memory of each beside those of xmllint, the yardstick of what reading such a file costs,
// and of another build of the command line where there is one.

#include "benchmarks/BenchmarkDocuments.h"
#include "benchmarks/Measuring.h"

#include <expat.h>
#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace shotweaver::benchmarks {
namespace {

constexpr int rounds = 5;
constexpr std::size_t tokenBytes = 64'000'000;

struct Program {
    std::string name;
    std::vector<std::string> arguments;
    std::vector<ProgramRun> runs;
};

/// The command lines that are measured: one, or two builds.
struct CommandLine {
    std::string name;
    std::string path;
};

double medianOf(const Program& program, double ProgramRun::*figure) {
    std::vector<double> values;
    for (const ProgramRun& run : program.runs)
        values.push_back(run.*figure);
    return median(std::move(values));
}

/// Runs all in turn and prints their medians, with the ratios to the first one's.
void compare(const std::string& title, std::vector<Program> programs) {
    for (int round = 0; round < rounds; ++round)
        for (Program& program : programs)
            program.runs.push_back(runProgram(program.arguments));
    fmt::print("{:<40} {:>8}   {:>8}   {:>7}\n", title, "wall", "CPU", "peak");
    for (const Program& program : programs) {
        constexpr std::array figures{&ProgramRun::seconds, &ProgramRun::cpuSeconds,
                                     &ProgramRun::megabytes};
        std::array<double, 3> medians{};
        std::string ratios;
        for (std::size_t i = 0; i < figures.size(); ++i) {
            medians[i] = medianOf(program, figures[i]);
            ratios += fmt::format(" {:>6.2f}", medians[i] / medianOf(programs.front(), figures[i]));
        }
        fmt::print("{:<40} {:>8.3f} s {:>8.3f} s {:>7.0f} MB {}\n", program.name, medians[0],
                   medians[1], medians[2], ratios);
    }
    fmt::print("\n");
}

std::string write(const TemporaryFolder& folder, const std::string& name,
                  const std::string& bytes) {
    const std::string path = (folder.path / name).string();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

Program xmllint(const std::string& document) {
    return {"xmllint --noout", {"xmllint", "--noout", "--huge", document}, {}};
}

Program inspect(const CommandLine& commandLine, const std::string& document) {
    return {commandLine.name + " inspect", {commandLine.path, "inspect", document}, {}};
}

void compareReading(const std::string& title, const std::vector<CommandLine>& commandLines,
                    const std::string& document) {
    std::vector<Program> programs{xmllint(document)};
    programs.push_back({"Expat with empty handlers", {ownProgram(), "--expat", document}, {}});
    for (const CommandLine& each : commandLines)
        programs.push_back(inspect(each, document));
    compare(title, std::move(programs));
}

void compareWriting(const std::string& title, const std::vector<CommandLine>& commandLines,
                    const std::string& document, const std::filesystem::path& folder) {
    std::vector<Program> programs{{"xmllint --format",
                                   {"xmllint", "--format", "--huge", "--output",
                                    (folder / "formatted.xml").string(), document},
                                   {}}};
    for (const CommandLine& each : commandLines)
        programs.push_back({each.name + " generate --output",
                            {each.path, "generate", document, "--output", folder.string()},
                            {}});
    compare(title, std::move(programs));
}

/// A token of twice the size should take twice the time.
void compareSizes(const std::string& title, const CommandLine& commandLine, Token token,
                  const TemporaryFolder& folder) {
    const std::string once = write(folder, "once.fcpxml", tokenDocument(token, tokenBytes));
    const std::string twice = write(folder, "twice.fcpxml", tokenDocument(token, 2 * tokenBytes));
    compare(title, {inspect(commandLine, once),
                    {"the same with twice the size", {commandLine.path, "inspect", twice}, {}}});
}

void run(const std::vector<CommandLine>& commandLines) {
    const TemporaryFolder folder;
    fmt::print("Whole programs, medians of {} rounds, and their ratios to the first\n\n", rounds);
    const std::string large = write(folder, "Large.fcpxml", largeDocument());
    const std::string title = fmt::format(
        "A document of {:.0f} MB", static_cast<double>(std::filesystem::file_size(large)) / 1e6);
    compareReading(title, commandLines, large);
    compareWriting(title, commandLines, large, folder.path);

    compareReading("1,000 clips in a compound clip, 10,000 times", {commandLines.front()},
                   write(folder, "Compound.fcpxml", compoundDocument(1'000, 10'000)));
    compareReading("An attribute of 64 MB", {commandLines.front()},
                   write(folder, "Attribute.fcpxml", tokenDocument(Token::attribute, tokenBytes)));
    compareSizes("An attribute of 64 MB", commandLines.front(), Token::attribute, folder);
    compareSizes("A comment of 64 MB", commandLines.front(), Token::comment, folder);
    compareSizes("An instruction of 64 MB", commandLines.front(), Token::instruction, folder);
}

/// What a parser costs that does nothing with what it finds.
void parseOnly(const std::string& path) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    XML_SetElementHandler(
        parser.get(), [](void*, const XML_Char*, const XML_Char**) {},
        [](void*, const XML_Char*) {});
    XML_SetCharacterDataHandler(parser.get(), [](void*, const XML_Char*, int) {});
    std::ifstream file(path, std::ios::binary);
    while (file) {
        constexpr int blockBytes = 1 << 16;
        void* const block = XML_GetBuffer(parser.get(), blockBytes);
        if (!block) throw std::runtime_error("out of memory");
        file.read(static_cast<char*>(block), blockBytes);
        const bool isLast = !file;
        if (XML_ParseBuffer(parser.get(), static_cast<int>(file.gcount()), isLast) != XML_STATUS_OK)
            throw std::runtime_error("the document does not parse");
    }
}

} // namespace
} // namespace shotweaver::benchmarks

int main(int argc, char** argv) {
    using namespace shotweaver::benchmarks;
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    try {
        if (arguments.size() == 2 && arguments[0] == "--expat")
            parseOnly(arguments[1]);
        else if (arguments.size() == 1)
            run({{"shotweaver", arguments[0]}});
        else if (arguments.size() == 2)
            run({{"shotweaver", arguments[0]}, {"the other", arguments[1]}});
        else
            throw std::runtime_error("Usage: command_benchmark SHOTWEAVER [ANOTHER BUILD OF IT]");
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
