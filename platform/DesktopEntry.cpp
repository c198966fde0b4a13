#include "platform/DesktopEntry.h"

#include "platform/FileURL.h"
#include "platform/Files.h"
#include "platform/PlatformError.h"
#include "platform/Programs.h"
#include "platform/Text.h"

#include <map>
#include <utility>

namespace shotweaver {

namespace {

using Values = std::map<std::string_view, std::string_view>;

/// The first group "Desktop Entry", its values as they stand in the file. Comments and names in
/// other languages ("Name[de]") are keys that nobody asks for.
Values entryValues(std::string_view text) {
    Values values;
    bool inGroup = false;
    for (const std::string_view whole : split(text, '\n')) {
        const std::string_view line = trimmed(whole);
        if (line.starts_with('[')) {
            if (inGroup) break;
            inGroup = line == "[Desktop Entry]";
        }
        const std::size_t equals = line.find('=');
        if (inGroup && equals != std::string_view::npos)
            values.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
    return values;
}

std::string unescaped(std::string_view value) {
    constexpr std::string_view escapes = "sntr\\";
    constexpr std::string_view meanings = " \n\t\r\\";
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const std::size_t escape = value[i] == '\\' && i + 1 < value.size()
                                       ? escapes.find(value[i + 1])
                                       : std::string_view::npos;
        text += escape == std::string_view::npos ? value[i] : meanings[escape];
        if (escape != std::string_view::npos) ++i;
    }
    return text;
}

/// Where "applications" is looked for, in order.
std::vector<std::string> dataFolders(const Environment& environment) {
    std::string home = environment("XDG_DATA_HOME").value_or("");
    if (!home.starts_with('/'))
        home = pathInFolder(environment("HOME").value_or(""), ".local/share");
    std::string others = environment("XDG_DATA_DIRS").value_or("");
    if (others.empty()) others = "/usr/local/share:/usr/share";

    std::vector<std::string> folders{home};
    for (const std::string_view folder : split(others, ':'))
        folders.emplace_back(folder);
    std::erase_if(folders, [](const std::string& folder) { return !folder.starts_with('/'); });
    return folders;
}

std::optional<DesktopEntry> readEntry(FileCalls& calls, const std::string& path) {
    try {
        return parseDesktopEntry(readFile(calls, path), path);
    } catch (const PlatformError&) {
        return std::nullopt;
    }
}

/// The arguments of a command, quotes resolved; nothing when a quotation does not end. Quotes count
/// in the middle of an argument too: not every entry keeps to whole arguments.
std::optional<std::vector<std::string>> unquoted(std::string_view exec) {
    constexpr std::string_view escapable = "\"`$\\";
    std::vector<std::string> arguments;
    bool inArgument = false;
    bool quoted = false;
    for (std::size_t i = 0; i < exec.size(); ++i) {
        if (exec[i] == ' ' && !quoted) {
            inArgument = false;
            continue;
        }
        if (!std::exchange(inArgument, true)) arguments.emplace_back();
        if (exec[i] == '"') {
            quoted = !quoted;
            continue;
        }
        const bool escaped = quoted && exec[i] == '\\' && i + 1 < exec.size() &&
                             escapable.find(exec[i + 1]) != std::string_view::npos;
        if (escaped) ++i;
        arguments.back() += exec[i];
    }
    if (quoted) return std::nullopt;
    return arguments;
}

/// Replaces the field codes in an entry's arguments for one file.
class FieldCodes {
  public:
    FieldCodes(const DesktopEntry& entry, const std::string& file) : entry_(entry), file_(file) {}

    /// True once a code for files was replaced.
    bool filePlaced() const { return filePlaced_; }

    /// What becomes of an argument; nothing when it has an unknown code. Codes that stand for
    /// nothing leave no argument behind, an argument that was empty stays.
    std::optional<std::vector<std::string>> replaced(std::string_view argument) {
        using Arguments = std::vector<std::string>;
        if (argument == "%i")
            return entry_.icon.empty() ? Arguments{} : Arguments{"--icon", entry_.icon};
        std::string text;
        for (std::size_t i = 0; i < argument.size(); ++i) {
            if (argument[i] != '%') {
                text += argument[i];
                continue;
            }
            const char code = ++i < argument.size() ? argument[i] : '\0';
            const std::optional<std::string> value = valueOf(code);
            if (!value) return std::nullopt;
            text += *value;
        }
        return text.empty() && !argument.empty() ? Arguments{} : Arguments{text};
    }

  private:
    std::optional<std::string> valueOf(char code) {
        switch (code) {
        case '%':
            return "%";
        case 'f':
        case 'F':
            return place(file_);
        case 'u':
        case 'U':
            return place(fileURL(file_));
        case 'c':
            return entry_.name;
        case 'k':
            return entry_.path;
        case 'd':
        case 'D':
        case 'n':
        case 'N':
        case 'v':
        case 'm':
            return ""; // deprecated
        default:
            return std::nullopt;
        }
    }

    /// A command may hold one code for files: any further one stands for nothing.
    std::string place(std::string file) {
        return std::exchange(filePlaced_, true) ? "" : std::move(file);
    }

    const DesktopEntry& entry_;
    const std::string& file_;
    bool filePlaced_ = false;
};

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text, std::string path) {
    const Values values = entryValues(text);
    const auto value = [&](std::string_view key) {
        const auto found = values.find(key);
        return found == values.end() ? std::string() : unescaped(found->second);
    };
    DesktopEntry entry{std::move(path), value("Name"),    value("Icon"),
                       value("Exec"),   value("TryExec"), value("Path")};
    if (value("Type") != "Application" || value("Hidden") == "true" || entry.exec.empty())
        return std::nullopt;
    return entry;
}

std::optional<DesktopEntry> findDesktopEntry(FileCalls& calls, const Environment& environment,
                                             const std::string& fileName) {
    for (const std::string& folder : dataFolders(environment)) {
        const std::string path = pathInFolder(pathInFolder(folder, "applications"), fileName);
        if (calls.probe(path) != 0) continue;
        std::optional<DesktopEntry> entry = readEntry(calls, path);
        if (!entry || entry->tryExec.empty() || findProgram(entry->tryExec, environment))
            return entry;
        return std::nullopt;
    }
    return std::nullopt;
}

std::optional<std::vector<std::string>> openCommand(const DesktopEntry& entry,
                                                    const std::string& file) {
    const std::optional<std::vector<std::string>> arguments = unquoted(entry.exec);
    if (!arguments) return std::nullopt;
    std::vector<std::string> command;
    FieldCodes codes(entry, file);
    for (const std::string& argument : *arguments) {
        std::optional<std::vector<std::string>> replaced = codes.replaced(argument);
        if (!replaced) return std::nullopt;
        command.insert(command.end(), replaced->begin(), replaced->end());
    }
    if (command.empty()) return std::nullopt;
    if (!codes.filePlaced()) command.push_back(file);
    return command;
}

} // namespace shotweaver
