#include "platform/DesktopApplications.h"

#include "platform/FileURL.h"
#include "platform/Files.h"
#include "platform/PlatformError.h"
#include "platform/Programs.h"
#include "platform/Text.h"

#include <fmt/format.h>
#include <glib.h>

#include <memory>
#include <utility>
#include <vector>

namespace shotweaver {

namespace {

/// How GLib wants back what it gave.
template <auto give>
struct GiveBack {
    template <class Value>
    void operator()(Value* value) const {
        give(value);
    }
};
using GLibText = std::unique_ptr<char, GiveBack<g_free>>;

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

class DesktopEntry {
  public:
    /// A file that cannot be read is an entry without values.
    explicit DesktopEntry(std::string path) : path_(std::move(path)), keys_(g_key_file_new()) {
        g_key_file_load_from_file(keys_.get(), path_.c_str(), G_KEY_FILE_NONE, nullptr);
    }

    /// Empty when the entry has none.
    std::string value(const char* key) const {
        const GLibText text(
            g_key_file_get_string(keys_.get(), G_KEY_FILE_DESKTOP_GROUP, key, nullptr));
        return text ? text.get() : "";
    }

    bool isApplication(const Environment& environment) const {
        const std::string tryExec = value(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
        return value(G_KEY_FILE_DESKTOP_KEY_TYPE) == G_KEY_FILE_DESKTOP_TYPE_APPLICATION &&
               value(G_KEY_FILE_DESKTOP_KEY_HIDDEN) != "true" &&
               !value(G_KEY_FILE_DESKTOP_KEY_EXEC).empty() &&
               (tryExec.empty() || findProgram(tryExec, environment));
    }

    /// The command that opens a file: the program's name and its arguments.
    std::vector<std::string> openCommand(const std::string& file) const {
        int count = 0;
        char** words = nullptr;
        if (!g_shell_parse_argv(commandLine(file).c_str(), &count, &words, nullptr))
            throw PlatformError(fmt::format("“{}” has no command that opens a file.", path_));
        const std::unique_ptr<char*, GiveBack<g_strfreev>> owner(words);
        return {words, words + count};
    }

  private:
    /// The command with its field codes replaced, still quoted; blank when there is none.
    std::string commandLine(const std::string& file) const {
        const std::string exec = value(G_KEY_FILE_DESKTOP_KEY_EXEC);
        std::string line;
        bool namesFile = false;
        for (std::size_t i = 0; i < exec.size(); ++i) {
            if (exec[i] != '%') {
                line += exec[i];
                continue;
            }
            const char code = ++i < exec.size() ? exec[i] : ' ';
            line += replacement(code, file);
            namesFile = namesFile || std::string_view("fFuU").find(code) != std::string_view::npos;
        }
        if (!namesFile && !trimmed(line).empty()) line += " " + quoted(file);
        return line;
    }

    /// What a field code stands for, quoted.
    std::string replacement(char code, const std::string& file) const {
        switch (code) {
        case '%':
            return "%";
        case 'f':
        case 'F':
            return quoted(file);
        case 'u':
        case 'U':
            return quoted(fileURL(file));
        case 'i': {
            const std::string icon = value(G_KEY_FILE_DESKTOP_KEY_ICON);
            return icon.empty() ? "" : "--icon " + quoted(icon);
        }
        case 'c':
            return quoted(value(G_KEY_FILE_DESKTOP_KEY_NAME));
        case 'k':
            return quoted(path_);
        default:
            return "";
        }
    }

    static std::string quoted(const std::string& text) {
        return GLibText(g_shell_quote(text.c_str())).get();
    }

    std::string path_;
    std::unique_ptr<GKeyFile, GiveBack<g_key_file_unref>> keys_;
};

} // namespace

std::optional<std::string> findDesktopEntry(const Environment& environment,
                                            const std::string& fileName) {
    for (const std::string& folder : dataFolders(environment)) {
        std::string path = pathInFolder(pathInFolder(folder, "applications"), fileName);
        if (!g_file_test(path.c_str(), G_FILE_TEST_EXISTS)) continue;
        if (!DesktopEntry(path).isApplication(environment)) return std::nullopt;
        return path;
    }
    return std::nullopt;
}

void openWithDesktopEntry(const std::string& entryPath, const std::string& file,
                          const Environment& environment) {
    const DesktopEntry entry(entryPath);
    std::vector<std::string> command = entry.openCommand(file);
    std::string& program = command.front();
    const std::optional<std::string> found = findProgram(program, environment);
    if (!found) throw PlatformError(fmt::format("“{}” could not be found.", program));
    program = *found;
    startProgram(command, entry.value(G_KEY_FILE_DESKTOP_KEY_PATH));
}

} // namespace shotweaver
