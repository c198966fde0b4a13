#include "cli/CommandLine.h"

#include "cli/Command.h"
#include "cli/ExportCommand.h"
#include "cli/GenerateCommand.h"
#include "cli/InspectCommand.h"
#include "cli/PresetsCommand.h"
#include "cli/TextTable.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <exception>
#include <new>
#include <optional>
#include <ostream>
#include <vector>

namespace shotweaver {

namespace {

constexpr int success = 0;
constexpr int failure = 1;
constexpr int wrongUsage = 2;

constexpr const char* programHelp =
    R"(Makes a rough edit of a multicam recording: a first pass that switches between
the cameras by chance, inside rules that you set.

In Final Cut Pro, put one uncut multicam clip into a project and choose
File > Export XML. Then:

  shotweaver inspect "Sunday.fcpxml"                what is in it, and where each camera recorded
  shotweaver generate "Sunday.fcpxml" --output out  a rough edit, ready to import
)";

constexpr const char* programFooter =
    R"(
"shotweaver VERB --help" explains a verb, with examples.
A failure prints one line that begins with "shotweaver:" and ends with exit status 1;
wrong usage ends with exit status 2.)";

/// The program's grammar with its verbs.
class Grammar {
  public:
    Grammar() {
        program_.set_version_flag("--version", "shotweaver " SHOTWEAVER_VERSION);
        program_.set_help_flag("-h,--help", "Print this help");
        program_.footer(programFooter);
        program_.require_subcommand(1);
        for (const auto add : {addInspect, addGenerate, addExport, addPresets})
            verbs_.push_back(add(program_));
    }

    CLI::App& program() { return program_; }

    /// The verb that was asked for; null when none was.
    const Verb* chosen() const {
        const std::vector<CLI::App*> parsed = program_.get_subcommands();
        if (parsed.empty()) return nullptr;
        return &*std::find_if(verbs_.begin(), verbs_.end(),
                              [&](const Verb& verb) { return verb.grammar == parsed.front(); });
    }

    /// The usage of the verb that was asked for, in two lines.
    std::string usage() const {
        const Verb* const verb = chosen();
        const std::string name = verb ? " " + verb->grammar->get_name() : "";
        return fmt::format("Usage: shotweaver{} {}\n\"shotweaver{} --help\" explains more.\n", name,
                           verb ? verb->arguments : "VERB PROJECT [OPTIONS]", name);
    }

    /// "inspect, generate, export or presets"
    std::string names() const {
        std::string names;
        for (const Verb& verb : verbs_) {
            const bool isLast = &verb == &verbs_.back();
            if (!names.empty()) names += isLast ? " or " : ", ";
            names += verb.grammar->get_name();
        }
        return names;
    }

  private:
    CLI::App program_{programHelp, "shotweaver"};
    std::vector<Verb> verbs_;
};

/// A message in one line, as the contract of the last line wants it.
void printFailure(std::ostream& err, const std::string& message) {
    err << "shotweaver: " << oneLine(message) << '\n' << std::flush;
}

int report(const CommandResult& result, const CommandStreams& streams) {
    const bool namesFilesInOutput = !result.isData && !result.failure;
    streams.out << result.output;
    if (namesFilesInOutput) streams.out << result.files;
    streams.out << std::flush;
    streams.err << result.notes;
    // Files that were written are named in any case.
    if (!namesFilesInOutput || !streams.out) streams.err << result.files;
    streams.err << std::flush;
    if (result.failure) {
        printFailure(streams.err, *result.failure);
        return failure;
    }
    if (!streams.out) {
        printFailure(streams.err, "The standard output could not be written.");
        return failure;
    }
    return success;
}

/// Gives the help or the version when they were asked for. Throws `UsageError`.
std::optional<CommandResult> parse(Grammar& grammar, const std::vector<std::string>& arguments) {
    try {
        // The parser takes its arguments from the back.
        grammar.program().parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return std::nullopt;
    } catch (const CLI::Success& request) {
        CommandResult help;
        const bool isVersion = dynamic_cast<const CLI::CallForVersion*>(&request) != nullptr;
        help.output = isVersion ? std::string(request.what()) + "\n" : grammar.program().help();
        return help;
    } catch (const CLI::ExtrasError&) {
        throw UsageError(fmt::format("Not expected here: {}",
                                     fmt::join(grammar.program().remaining(true), " ")));
    } catch (const CLI::ParseError& error) {
        if (grammar.chosen()) throw UsageError(error.what());
        throw UsageError(arguments.empty() ? fmt::format("Say what to do: {}.", grammar.names())
                                           : fmt::format("There is no verb \"{}\": {}.",
                                                         arguments.front(), grammar.names()));
    }
}

} // namespace

int runCommandLine(const std::vector<std::string>& arguments, const CommandStreams& streams) {
    Grammar grammar;
    try {
        if (const auto help = parse(grammar, arguments)) return report(*help, streams);
        const CommandContext context{streams.in, streams.environment, systemFileCalls(),
                                     *streams.workspace};
        return report(grammar.chosen()->run(context), streams);
    } catch (const UsageError& error) {
        printFailure(streams.err, error.what());
        streams.err << grammar.usage() << std::flush;
        return wrongUsage;
    } catch (const std::bad_alloc&) {
        printFailure(streams.err, "There is not enough memory for this project.");
        return failure;
    } catch (const std::exception& error) {
        printFailure(streams.err, error.what());
        return failure;
    }
}

} // namespace shotweaver
