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

#include <exception>
#include <new>
#include <optional>
#include <ostream>

namespace shotweaver {

namespace {

constexpr int success = 0;
constexpr int failure = 1;
constexpr int wrongUsage = 2;

constexpr const char* projectHelp =
    "What Final Cut Pro exported: a .fcpxml file, a .fcpxmld bundle, or - for FCPXML on the "
    "standard input";

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

constexpr const char* inspectFooter =
    R"(
Each angle is a row: its identifier (which every flag of generate takes), its name and
cameras, and where it has picture and sound: "█" throughout, "▒" partly, "·" not at all.
Warnings tell what would stop an export later.

Examples:
  shotweaver inspect "Sunday.fcpxml"
  shotweaver inspect "Sunday.fcpxmld" --json)";

constexpr const char* generateFooter =
    R"(
A is an angle: its identifier, or its name when no other angle has the same one.
Settings start as a fresh import leaves them: the first camera is the main camera, all
others are included, at 70 percent for the main camera. --preset comes next, then
--settings, then the other flags.

Examples:
  shotweaver generate "Sunday.fcpxml"
  shotweaver generate "Sunday.fcpxml" --main-camera Wide --main-share 60 --output out
  shotweaver generate "Sunday.fcpxml" --frequency Pulpit=8 --return-time Band=120
  shotweaver generate "Sunday.fcpxml" --opening Wide=20 --closing Wide=15
  shotweaver generate "Sunday.fcpxml" --section "Pulpit,01:05:30;00,01:07:10;00,Prayer"
  shotweaver generate "Sunday.fcpxml" --preset "Sunday sermon" --output out --open
  shotweaver generate "Sunday.fcpxml" --seed 7 --json > edit.json)";

constexpr const char* exportFooter =
    R"(
REVISION is what "generate --json" printed, perhaps edited by hand. Its cuts are exported
as they are. Existing files are never replaced: a second export takes the name with " 2".

Examples:
  shotweaver generate "Sunday.fcpxml" --json > edit.json
  shotweaver export "Sunday.fcpxml" edit.json --output out
  shotweaver generate "Sunday.fcpxml" --json | shotweaver export "Sunday.fcpxml" - --output out)";

constexpr const char* presetsFooter =
    R"(
One name a line. "generate --preset NAME" applies one; letters of either case will do.

Examples:
  shotweaver presets
  shotweaver generate "Sunday.fcpxml" --preset "Sunday sermon" --output out)";

constexpr const char* openHelp =
    "Hand the XML to Final Cut Pro afterwards; the files stay when that fails";

/// An empty folder is most likely a variable of the shell that was never set.
std::string isNotEmpty(const std::string& text) {
    return text.empty() ? "the folder is empty" : "";
}

/// Values are read as text; what they have to be is for the verbs to say.
CLI::Option* addText(CLI::App& verb, const std::string& name, std::optional<std::string>& value,
                     const std::string& help, const std::string& form) {
    return verb
        .add_option_function<std::string>(
            name, [&value](const std::string& text) { value = text; }, help)
        ->type_name(form);
}

CLI::Option* addTexts(CLI::App& verb, const std::string& name, std::vector<std::string>& values,
                      const std::string& help, const std::string& form) {
    return verb.add_option(name, values, help)->type_name(form)->allow_extra_args(false);
}

CLI::Option* addProject(CLI::App& verb, std::string& project) {
    return verb.add_option("PROJECT", project, projectHelp)->required()->type_name("");
}

/// The program's grammar with the options that it fills.
class Grammar {
  public:
    Grammar() {
        app_.set_version_flag("--version", "shotweaver " SHOTWEAVER_VERSION);
        app_.set_help_flag("-h,--help", "Print this help");
        app_.footer(programFooter);
        app_.require_subcommand(1);
        addInspect();
        addGenerate();
        addExport();
        addPresets();
    }

    CLI::App& app() { return app_; }

    CommandResult run(const CommandStreams& streams) const {
        if (inspect_->parsed()) return runInspect(inspectOptions_, streams.in);
        if (generate_->parsed())
            return runGenerate(generateOptions_, streams.in, streams.environment,
                               *streams.workspace);
        if (export_->parsed()) return runExport(exportOptions_, streams.in, *streams.workspace);
        return runPresets(presetsOptions_, streams.environment);
    }

    bool hasVerb() const { return !app_.get_subcommands().empty(); }

    /// The usage of the verb that was asked for, in two lines.
    std::string usage() const {
        const auto verbs = app_.get_subcommands();
        const std::string verb = verbs.empty() ? "" : " " + verbs.front()->get_name();
        std::string arguments = " VERB PROJECT [OPTIONS]";
        if (verb == " export")
            arguments = " PROJECT REVISION --output DIR [--open]";
        else if (verb == " presets")
            arguments = " [--json]";
        else if (!verb.empty())
            arguments = " PROJECT [OPTIONS]";
        return fmt::format("Usage: shotweaver{}{}\n\"shotweaver{} --help\" explains more.\n", verb,
                           arguments, verb);
    }

  private:
    void addInspect() {
        inspect_ = app_.add_subcommand("inspect", "Show what a project holds");
        addProject(*inspect_, inspectOptions_.project);
        inspect_->add_flag("--json", inspectOptions_.json, "Print one JSON object");
        inspect_->footer(inspectFooter);
    }

    void addGenerate();

    void addExport() {
        export_ = app_.add_subcommand("export", "Export an edit that generate --json printed");
        addProject(*export_, exportOptions_.project);
        export_
            ->add_option("REVISION", exportOptions_.revision,
                         "The edit's JSON file, or - for the standard input")
            ->required()
            ->type_name("");
        export_->add_option("--output", exportOptions_.output.path, "Folder for the two files")
            ->required()
            ->check(isNotEmpty)
            ->type_name("DIR");
        export_->add_flag("--open", exportOptions_.output.open, openHelp);
        export_->footer(exportFooter);
    }

    void addPresets() {
        presets_ = app_.add_subcommand("presets", "List the presets saved in the panel");
        presets_->add_flag("--json", presetsOptions_.json, "Print the stored JSON array");
        presets_->footer(presetsFooter);
    }

    CLI::App app_{programHelp, "shotweaver"};
    CLI::App* inspect_ = nullptr;
    CLI::App* generate_ = nullptr;
    CLI::App* export_ = nullptr;
    CLI::App* presets_ = nullptr;
    InspectOptions inspectOptions_;
    GenerateOptions generateOptions_;
    ExportOptions exportOptions_;
    PresetsOptions presetsOptions_;
};

void Grammar::addGenerate() {
    generate_ = app_.add_subcommand("generate", "Make a rough edit");
    CLI::App& verb = *generate_;
    GenerateOptions& options = generateOptions_;
    SettingsFlags& flags = options.flags;
    addProject(verb, options.project);

    addText(verb, "--main-camera", flags.mainCamera,
            "The main camera; the former one becomes an additional camera", "A")
        ->group("Cameras and audio");
    addText(verb, "--other-cameras", flags.otherCameras, "Exactly these additional cameras",
            "A,B,..")
        ->group("Cameras and audio");
    addText(verb, "--audio", flags.audio, "The angle that is heard throughout", "A")
        ->group("Cameras and audio");
    addTexts(verb, "--frequency", flags.frequencies,
             "How often a camera is chosen, 1 to 10 (5); repeatable", "A=W")
        ->group("Cameras and audio");
    addTexts(verb, "--return-time", flags.returnTimes,
             "Shortest wait before a camera comes back, 0 to 600 (0); repeatable", "A=SECONDS")
        ->group("Cameras and audio");

    addText(verb, "--main-share", flags.mainShare,
            "Target screen time of the main camera, 10 to 90 (70)", "PERCENT")
        ->group("Balance and pacing");
    addText(verb, "--main-range", flags.mainRange,
            "Shot lengths of the main camera in seconds, 1 to 120 (10-25)", "MIN-MAX")
        ->group("Balance and pacing");
    addText(verb, "--other-range", flags.otherRange,
            "Shot lengths of the other cameras in seconds, 1 to 120 (4-8)", "MIN-MAX")
        ->group("Balance and pacing");
    verb.add_flag("--double-main", flags.doubleMain,
                  "Hold one in four main camera shots twice as long")
        ->group("Balance and pacing");

    addText(verb, "--opening", flags.opening, "First shot and its length, 1 to 120", "A=SECONDS")
        ->group("Fixed shots");
    addText(verb, "--closing", flags.closing, "Last shot and its length, 1 to 120", "A=SECONDS")
        ->group("Fixed shots");
    addTexts(verb, "--section", flags.sections,
             "Hold a camera between two timecodes of the project; repeatable", "A,START,END[,NAME]")
        ->group("Fixed shots");

    addText(verb, "--preset", options.preset, "Apply a preset saved in the panel", "NAME");
    addText(verb, "--settings", options.settingsFile,
            "A JSON object of settings, as in what --json prints; every key is optional", "FILE");
    addText(verb, "--seed", options.seed, "Draw from this seed, to get the same shots again", "N");
    verb.add_flag("--json", options.json, "Print the edit as one JSON object");
    addText(verb, "--output", options.output,
            "Also export: the FCPXML and its settings record, into this folder", "DIR")
        ->check(isNotEmpty);
    verb.add_flag("--open", options.open, openHelp);
    verb.footer(generateFooter);
}

/// A message in one line, as the contract of the last line wants it.
void printFailure(std::ostream& err, const std::string& message) {
    err << "shotweaver: " << oneLine(message) << '\n' << std::flush;
}

int report(const CommandResult& result, const CommandStreams& streams) {
    const bool namesFilesInOutput = !result.isJson && !result.failure;
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

int parseAndRun(Grammar& grammar, const std::vector<std::string>& arguments,
                const CommandStreams& streams) {
    try {
        // The parser takes its arguments from the back.
        grammar.app().parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::Success& request) {
        CommandResult help;
        const bool isVersion = dynamic_cast<const CLI::CallForVersion*>(&request) != nullptr;
        help.output = isVersion ? std::string(request.what()) + "\n" : grammar.app().help();
        return report(help, streams);
    } catch (const CLI::ExtrasError&) {
        throw UsageError(
            fmt::format("Not expected here: {}", fmt::join(grammar.app().remaining(true), " ")));
    } catch (const CLI::ParseError& error) {
        if (grammar.hasVerb()) throw UsageError(error.what());
        throw UsageError(
            arguments.empty()
                ? "Say what to do: inspect, generate, export or presets."
                : fmt::format("There is no verb \"{}\": inspect, generate, export or presets.",
                              arguments.front()));
    }
    return report(grammar.run(streams), streams);
}

} // namespace

int runCommandLine(const std::vector<std::string>& arguments, const CommandStreams& streams) {
    Grammar grammar;
    try {
        return parseAndRun(grammar, arguments, streams);
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
