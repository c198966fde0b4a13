#include "engine/export/SettingsRecord.h"

#include "engine/generation/CameraUsage.h"
#include "platform/Dates.h"
#include "platform/NumberText.h"

#include <fmt/format.h>

#include <iterator>

namespace shotweaver {

namespace {

class RecordWriter {
  public:
    RecordWriter(const Project& project, const EditRevision& revision, const KeptShots& kept)
        : project_(project), engine_(project.engine), revision_(revision),
          settings_(revision.settings), kept_(keptCuts(revision.cuts, kept)) {}

    std::string write() {
        writeHead();
        writeSettings();
        writeCameras();
        writeFixedParts();
        writeKeptShots();
        writeUsage();
        writeCuts();
        return std::move(text_);
    }

  private:
    void writeHead();
    void writeSettings();
    void writeCameras();
    void writeFixedParts();
    void writeKeptShots();
    void writeUsage();
    void writeCuts();

    template <class... Values>
    void line(fmt::format_string<Values...> format, Values&&... values) {
        fmt::format_to(std::back_inserter(text_), format, std::forward<Values>(values)...);
        text_ += '\n';
    }

    std::string roleOf(std::string_view angle) const {
        if (angle == settings_.mainCamera) return "main";
        return settings_.otherCameras.contains(angle) ? "included" : "excluded from random cuts";
    }

    std::string bookendText(const Bookend& shot) const {
        if (!shot.isEnabled) return "Off";
        return fmt::format("{}, {} seconds", project_.name(shot.camera),
                           shortestDecimal(shot.seconds));
    }

    const Project& project_;
    const CutEngine& engine_;
    const EditRevision& revision_;
    const EditSettings& settings_;
    std::vector<Cut> kept_;
    std::string text_;
};

void RecordWriter::writeHead() {
    line("Shotweaver export settings");
    line("Project: {}", project_.summary.name);
    line("Edit ID: {}", revision_.id.text());
    line("Generated: {}", iso8601(revision_.created));
    line("Frame duration: {}/{} seconds", engine_.frameDuration.numerator,
         engine_.frameDuration.denominator);
    line("Project start: {}", engine_.timecode(0));
    line("Project duration: {} seconds", shortestDecimal(engine_.seconds(engine_.length)));
}

void RecordWriter::writeSettings() {
    line("Main camera: {}", project_.name(settings_.mainCamera));
    line("Target main screen time: {}%", shortestDecimal(settings_.mainShare));
    line("Main shot range: {} to {} seconds", shortestDecimal(settings_.mainMinimum),
         shortestDecimal(settings_.mainMaximum));
    line("Other shot range: {} to {} seconds", shortestDecimal(settings_.otherMinimum),
         shortestDecimal(settings_.otherMaximum));
    line("Randomly double main holds: {}", settings_.doubleMain ? "On (25% chance)" : "Off");
    if (settings_.varyOthers) line("Vary additional cameras: On");
    if (settings_.cutAtMarkers) line("Cut at markers: {}", project_.markers.cutPoints.size());
    if (settings_.followMarkers) line("Follow named markers: {}", project_.markers.notes.size());
    if (!settings_.cutTimes.empty()) line("Cut at times: {}", settings_.cutTimes.size());
    line("Continuous audio: {}", project_.name(settings_.audio));
    line("");
}

void RecordWriter::writeCameras() {
    line("Camera settings:");
    for (const ImportedAngle& angle : project_.videoAngles) {
        line("{}: {}, frequency {}, minimum return {} seconds after previous hold ends", angle.name,
             roleOf(angle.id),
             shortestDecimal(numberFor(settings_.frequencies, angle.id, defaultFrequency)),
             shortestDecimal(numberFor(settings_.returnTimes, angle.id, defaultReturnTime)));
    }
    line("");
}

void RecordWriter::writeFixedParts() {
    line("Opening: {}", bookendText(settings_.opening));
    line("Closing: {}", bookendText(settings_.closing));
    line("Fixed shots override minimum return times.");
    line("");
    line("Fixed sections:");
    for (const SectionDraft& section : settings_.sections)
        line("{}: {} to {}, {}", section.name, section.start, section.end,
             project_.name(section.camera));
    if (settings_.sections.empty()) line("None");
    line("");
}

void RecordWriter::writeKeptShots() {
    if (kept_.empty()) return;
    line("Kept shots:");
    for (const Cut& cut : kept_)
        line("{} | {}", engine_.timecode(cut.start), project_.name(cut.angle));
    line("");
}

void RecordWriter::writeUsage() {
    const CameraUsageMap usage = cameraUsage(revision_.cuts);
    line("Actual camera usage:");
    for (const ImportedAngle& angle : project_.videoAngles) {
        const CameraUsage used = usageOf(usage, angle.id);
        const double share =
            static_cast<double>(used.frames) / static_cast<double>(engine_.length) * 100;
        line("{}: {} seconds, {}%, {} shots", angle.name,
             fixedDecimal(engine_.seconds(used.frames), 2), fixedDecimal(share, 1), used.shots);
    }
    line("");
}

void RecordWriter::writeCuts() {
    line("Cut list (start timecode | camera | duration in seconds):");
    for (const Cut& cut : revision_.cuts)
        line("{} | {} | {}", engine_.timecode(cut.start), project_.name(cut.angle),
             shortestDecimal(engine_.seconds(cut.duration)));
}

} // namespace

std::string settingsRecordText(const Project& project, const EditRevision& revision,
                               const KeptShots& kept) {
    return RecordWriter(project, revision, kept).write();
}

} // namespace shotweaver
