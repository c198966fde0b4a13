#include "engine/export/SettingsRecord.h"

#include "engine/generation/CameraUsage.h"
#include "platform/Dates.h"
#include "platform/NumberText.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace shotweaver {

namespace {

class RecordWriter {
  public:
    RecordWriter(const ImportedProject& imported, const CutEngine& engine,
                 const EditRevision& revision)
        : imported_(imported), engine_(engine), revision_(revision), settings_(revision.settings) {}

    std::string write() {
        writeHead();
        writeSettings();
        writeCameras();
        writeFixedParts();
        writeUsage();
        writeCuts();
        return std::move(text_);
    }

  private:
    void writeHead();
    void writeSettings();
    void writeCameras();
    void writeFixedParts();
    void writeUsage();
    void writeCuts();

    template <class... Values>
    void line(fmt::format_string<Values...> format, Values&&... values) {
        fmt::format_to(std::back_inserter(text_), format, std::forward<Values>(values)...);
        text_ += '\n';
    }

    std::string angleDisplayName(std::string_view id) const {
        const auto found = std::find_if(imported_.angles.begin(), imported_.angles.end(),
                                        [&](const ImportedAngle& angle) { return angle.id == id; });
        return found == imported_.angles.end() ? std::string(id) : found->name;
    }

    bool hasVideo(const ImportedAngle& angle) const {
        const auto found = engine_.coverage.find(angle.id);
        return found != engine_.coverage.end() && !found->second.empty();
    }

    std::string roleOf(std::string_view angle) const {
        if (angle == settings_.mainCamera) return "main";
        return settings_.otherCameras.contains(angle) ? "included" : "excluded from random cuts";
    }

    std::string bookend(bool isEnabled, std::string_view camera, double seconds) const {
        if (!isEnabled) return "Off";
        return fmt::format("{}, {} seconds", angleDisplayName(camera), shortestDecimal(seconds));
    }

    const ImportedProject& imported_;
    const CutEngine& engine_;
    const EditRevision& revision_;
    const EditSettings& settings_;
    std::string text_;
};

void RecordWriter::writeHead() {
    line("Shotweaver export settings");
    line("Project: {}", imported_.name);
    line("Edit ID: {}", revision_.id.text());
    line("Generated: {}", iso8601(revision_.created));
    line("Frame duration: {}/{} seconds", engine_.frameNumerator, engine_.frameDenominator);
    line("Project start: {}", engine_.timecode(0));
    line("Project duration: {} seconds", shortestDecimal(engine_.seconds(engine_.length)));
}

void RecordWriter::writeSettings() {
    line("Main camera: {}", angleDisplayName(settings_.mainCamera));
    line("Target main screen time: {}%", shortestDecimal(settings_.mainShare));
    line("Main shot range: {} to {} seconds", shortestDecimal(settings_.mainMinimum),
         shortestDecimal(settings_.mainMaximum));
    line("Other shot range: {} to {} seconds", shortestDecimal(settings_.otherMinimum),
         shortestDecimal(settings_.otherMaximum));
    line("Randomly double main holds: {}", settings_.doubleMain ? "On (25% chance)" : "Off");
    line("Continuous audio: {}", angleDisplayName(settings_.audio));
    line("");
}

void RecordWriter::writeCameras() {
    line("Camera settings:");
    for (const ImportedAngle& angle : imported_.angles) {
        if (!hasVideo(angle)) continue;
        line("{}: {}, frequency {}, minimum return {} seconds after previous hold ends", angle.name,
             roleOf(angle.id),
             shortestDecimal(numberFor(settings_.frequencies, angle.id, defaultFrequency)),
             shortestDecimal(numberFor(settings_.returnTimes, angle.id, defaultReturnTime)));
    }
    line("");
}

void RecordWriter::writeFixedParts() {
    line("Opening: {}",
         bookend(settings_.openingEnabled, settings_.openingCamera, settings_.openingSeconds));
    line("Closing: {}",
         bookend(settings_.closingEnabled, settings_.closingCamera, settings_.closingSeconds));
    line("Fixed shots override minimum return times.");
    line("");
    line("Fixed sections:");
    for (const SectionDraft& section : settings_.sections)
        line("{}: {} to {}, {}", section.name, section.start, section.end,
             angleDisplayName(section.camera));
    if (settings_.sections.empty()) line("None");
    line("");
}

void RecordWriter::writeUsage() {
    const CameraUsageMap usage = cameraUsage(revision_.cuts);
    line("Actual camera usage:");
    for (const ImportedAngle& angle : imported_.angles) {
        if (!hasVideo(angle)) continue;
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
        line("{} | {} | {}", engine_.timecode(cut.start), angleDisplayName(cut.angle),
             shortestDecimal(engine_.seconds(cut.duration)));
}

} // namespace

std::string settingsRecordText(const ImportedProject& imported, const CutEngine& engine,
                               const EditRevision& revision) {
    return RecordWriter(imported, engine, revision).write();
}

} // namespace shotweaver
