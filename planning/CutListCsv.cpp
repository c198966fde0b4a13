#include "planning/CutListCsv.h"

#include "engine/AngleNames.h"
#include "engine/FinalCutImportError.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <optional>

namespace shotweaver {

namespace {

using Row = std::vector<std::string>;

[[noreturn]] void refuse(const std::string& sentence) {
    throw FinalCutImportError::invalid(sentence);
}

/// The video angles by identifier, else by name, else by the label that lists show.
class CameraNames {
  public:
    explicit CameraNames(const Project& project)
        : project_(project), names_(project.videoAngles), labels_(labelled(project)) {}

    std::optional<std::string> idOf(std::string_view text) const {
        if (project_.isVideoAngle(text)) return std::string(text);
        if (auto named = names_.idOf(text)) return named;
        return names_.isRepeated(text) ? std::nullopt : labels_.idOf(text);
    }
    bool isRepeated(std::string_view text) const {
        return names_.isRepeated(text) || labels_.isRepeated(text);
    }
    /// The label, or the identifier where the label would be read as another camera or as none.
    std::string textFor(const std::string& angle) const {
        const std::string label = project_.label(angle);
        return idOf(label) == angle ? label : angle;
    }

  private:
    static std::vector<ImportedAngle> labelled(const Project& project) {
        std::vector<ImportedAngle> angles = project.videoAngles;
        for (ImportedAngle& angle : angles)
            angle.name = project.label(angle.id);
        return angles;
    }

    const Project& project_;
    AngleNames names_;
    AngleNames labels_;
};

std::string quoted(const std::string& field) {
    if (field.find_first_of(",;\"\r\n") == std::string::npos) return field;
    std::string text = "\"";
    for (const char c : field)
        text += c == '"' ? std::string("\"\"") : std::string(1, c);
    return text + '"';
}

/// Takes text apart into rows of fields. Blank lines are passed over, also those that a spreadsheet
/// fills with separators.
std::vector<Row> rowsOf(std::string_view text, char separator) {
    std::vector<Row> rows;
    Row row;
    std::string field;
    const auto endRow = [&] {
        row.push_back(std::exchange(field, {}));
        const bool isBlank = std::all_of(
            row.begin(), row.end(), [](const std::string& each) { return trimmed(each).empty(); });
        if (!isBlank) rows.push_back(row);
        row.clear();
    };
    bool isQuoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const bool isDoubled = isQuoted && text.substr(at, 2) == "\"\"";
        if (c == '"' && !isDoubled && (isQuoted || field.empty()))
            isQuoted = !isQuoted;
        else if (c == separator && !isQuoted)
            row.push_back(std::exchange(field, {}));
        else if ((c == '\r' || c == '\n') && !isQuoted)
            endRow();
        else
            field += c;
        if (isDoubled) ++at;
    }
    endRow();
    return rows;
}

/// The rows below a header, by its columns.
class Table {
  public:
    Table(std::string_view text, char separator) : rows_(rowsOf(text, separator)) {
        if (rows_.empty()) return;
        for (const std::string& title : rows_.front())
            columns_.push_back(normalizedName(title));
    }

    bool has(std::string_view title) const { return column(title) < columns_.size(); }
    std::size_t size() const { return rows_.empty() ? 0 : rows_.size() - 1; }
    /// Empty where the row or the table has no such field.
    std::string_view field(std::size_t row, std::string_view title) const {
        const Row& fields = rows_[row + 1];
        const std::size_t at = column(title);
        return at < fields.size() ? trimmed(fields[at]) : std::string_view();
    }

  private:
    std::size_t column(std::string_view title) const {
        return static_cast<std::size_t>(std::find(columns_.begin(), columns_.end(), title) -
                                        columns_.begin());
    }

    std::vector<Row> rows_;
    std::vector<std::string> columns_;
};

constexpr const char* startColumn = "start";
constexpr const char* endColumn = "end";
constexpr const char* cameraColumn = "camera";
constexpr const char* keptColumn = "kept";

Table tableOf(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text.starts_with(mark)) text.remove_prefix(mark.size());
    if (!isUTF8(text)) refuse("The cut list is not in UTF-8. Save it as CSV in UTF-8.");
    for (const char separator : {',', ';'})
        if (Table table(text, separator); table.has(startColumn) && table.has(cameraColumn))
            return table;
    refuse("The cut list needs a header with the columns Start and Camera.");
}

/// Makes shots of the rows, one after the other.
class CutListReader {
  public:
    CutListReader(Table table, const Project& project, const UUIDMaker& makeUUID)
        : table_(std::move(table)), engine_(project.engine), names_(project), makeUUID_(makeUUID) {}

    CsvCutList read() {
        if (table_.size() == 0) refuse("The cut list has no shots.");
        for (row_ = 0; row_ < table_.size(); ++row_)
            readShot();
        endLastAt(engine_.length);
        return std::move(list_);
    }

  private:
    [[noreturn]] void refuseShot(const std::string& rest) const {
        refuse(fmt::format("Shot {} of the cut list {}", row_ + 1, rest));
    }

    void readShot();
    void endLastAt(std::int64_t frame);
    void readKept(const UUID& id);
    std::int64_t frameIn(std::string_view title) const;
    std::string angle() const;

    const Table table_;
    const CutEngine& engine_;
    CameraNames names_;
    const UUIDMaker& makeUUID_;
    std::size_t row_ = 0;
    std::optional<std::int64_t> statedEnd_; // of the shot before
    CsvCutList list_;
};

void CutListReader::readShot() {
    const std::int64_t frame = frameIn(startColumn);
    if (row_ == 0 && frame != 0)
        refuseShot(fmt::format("has to begin with the project, at {}.", engine_.timecode(0)));
    if (row_ > 0 && frame <= list_.cuts.back().start)
        refuseShot("does not begin after the one before.");
    if (frame >= engine_.length) refuseShot("does not begin inside the project.");
    const Cut cut{makeUUID_(), angle(), frame, 0};
    if (row_ > 0) endLastAt(frame);
    list_.cuts.push_back(cut);
    statedEnd_.reset();
    if (!table_.field(row_, endColumn).empty()) statedEnd_ = frameIn(endColumn);
    readKept(cut.id);
}

/// Ends the shot before.
void CutListReader::endLastAt(std::int64_t frame) {
    if (statedEnd_ && *statedEnd_ != frame)
        refuse(fmt::format("Shot {} of the cut list has to end where the next begins, at {}.", row_,
                           engine_.timecode(frame)));
    list_.cuts.back().duration = frame - list_.cuts.back().start;
}

std::int64_t CutListReader::frameIn(std::string_view title) const {
    const std::string_view timecode = table_.field(row_, title);
    try {
        return engine_.frameForTimecode(timecode);
    } catch (const FinalCutImportError& error) {
        refuseShot(fmt::format("has “{}” for a time. {}", timecode, error.what()));
    }
}

std::string CutListReader::angle() const {
    const std::string_view name = table_.field(row_, cameraColumn);
    if (auto angle = names_.idOf(name)) return *angle;
    if (names_.isRepeated(name))
        refuseShot(fmt::format("is of “{}”, which several cameras are named. Give the camera's "
                               "identifier, which inspect prints.",
                               name));
    refuseShot(fmt::format("is of “{}”, which no camera with picture is named.", name));
}

void CutListReader::readKept(const UUID& id) {
    const std::string_view mark = table_.field(row_, keptColumn);
    if (mark.empty()) return;
    if (normalizedName(mark) != "yes")
        refuseShot(fmt::format("has “{}” for Kept. Write yes, or nothing.", mark));
    list_.kept.insert(id);
}

} // namespace

std::string cutListCsv(const std::vector<Cut>& cuts, const Project& project, const KeptShots& kept,
                       const std::vector<std::vector<std::string>>& reasons) {
    const CutEngine& engine = project.engine;
    const CameraNames names(project);
    std::string csv = "Start,End,Camera,Seconds,Kept,Why\r\n";
    for (std::size_t row = 0; row < cuts.size(); ++row) {
        const Cut& cut = cuts[row];
        csv += fmt::format(
            "{},{},{},{},{},{}\r\n", engine.timecode(cut.start),
            engine.timecode(cut.start + cut.duration), quoted(names.textFor(cut.angle)),
            shortestDecimal(engine.seconds(cut.duration)), kept.contains(cut.id) ? "yes" : "",
            quoted(fmt::format("{}", fmt::join(reasons[row], " "))));
    }
    return csv;
}

CsvCutList readCutListCsv(std::string_view text, const Project& project,
                          const UUIDMaker& makeUUID) {
    return CutListReader(tableOf(text), project, makeUUID).read();
}

} // namespace shotweaver
