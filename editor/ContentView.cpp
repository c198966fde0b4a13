#include "editor/ContentView.h"

#include "editor/ContentViewChange.h"
#include "planning/EditPlan.h"
#include "planning/ProjectDefaults.h"

#include <fmt/format.h>

#include <new>

namespace shotweaver {

ContentView::ContentView(EditorEnvironment environment)
    : environment_(std::move(environment)),
      sessionFile_(environment_.files, environment_.folders.session),
      defaults_(environment_.files, environment_.folders.userDefaults),
      judgedSettings_(currentSettings()) {
    readPresetData();
}

ContentView::~ContentView() {
    if (saveIsWanted_) writeSession();
}

Observers::Subscription ContentView::observe(std::function<void()> observer) {
    return observers_.add(std::move(observer));
}

/// Judges what the change has done to the settings, and saves.
void ContentView::endChange(Saving saving) {
    const EditSettings settings = currentSettings();
    if (settings != judgedSettings_) {
        judgedSettings_ = settings;
        settingsDidChange(settings);
    }
    if (saveIsWanted_ && saving == Saving::now) writeSession();
}

void ContentView::settingsDidChange(const EditSettings& settings) {
    forgetCoverage();
    saveIsWanted_ = true;
    // What a restore has just put into the fields must not clear the restored cut list.
    const bool isRestored = fields_.restoredSettings == settings;
    fields_.restoredSettings.reset();
    if (isRestored) return;

    const EditRevision* const current = fields_.history.current();
    if (!current || current->settings != settings) fields_.cuts.clear();
    fields_.status.clear();
}

void ContentView::saveSession() {
    change([&](EditorFields&) { saveIsWanted_ = true; });
}

void ContentView::writeSession() {
    saveIsWanted_ = false;
    if (!fields_.sourceXML) return;
    try {
        if (!encoder_) encoder_.emplace(*fields_.sourceXML);
        sessionFile_.write(encoder_->encode(currentSettings(), fields_.history));
        fields_.sessionSaveError.reset();
    } catch (const std::exception& failure) {
        fields_.sessionSaveError = "Session could not be saved: " + textOf(failure);
    }
}

/// Saves once the event that is being handled has been, with all that its turn still changes.
void ContentView::saveSoon() {
    if (saveIsScheduled_) return;
    saveIsScheduled_ = true;
    environment_.host.later([weak = std::weak_ptr(self_)] {
        const auto self = weak.lock();
        if (!self) return;
        (*self)->saveIsScheduled_ = false;
        (*self)->change([](EditorFields&) {});
    });
}

void ContentView::report(const std::exception& failure, std::string_view prefix) {
    change(
        [&](EditorFields& fields) { fields.error = fmt::format("{}{}", prefix, textOf(failure)); });
}

std::string ContentView::textOf(const std::exception& failure) {
    if (dynamic_cast<const std::bad_alloc*>(&failure) != nullptr)
        return "There is not enough memory for this.";
    return failure.what();
}

void ContentView::showError(const std::string& text) {
    change([&](EditorFields& fields) { fields.error = text; });
}

void ContentView::dismissError() {
    change([](EditorFields& fields) { fields.error.reset(); });
}

void ContentView::setDropTargeted(bool isTargeted) {
    change([&](EditorFields& fields) { fields.dropTargeted = isTargeted; });
}

void ContentView::setShowingHelp(bool isShown) {
    change([&](EditorFields& fields) { fields.showingHelp = isShown; });
}

void ContentView::setShowingAbout(bool isShown) {
    change([&](EditorFields& fields) { fields.showingAbout = isShown; });
}

EditSettings ContentView::currentSettings() const {
    EditSettings settings;
    settings.mainShare = fields_.aShare;
    settings.averageShot = fields_.averageShot;
    settings.mainMinimum = fields_.mainMinimum;
    settings.mainMaximum = fields_.mainMaximum;
    settings.otherMinimum = fields_.otherMinimum;
    settings.otherMaximum = fields_.otherMaximum;
    settings.mainCamera = fields_.cameraA;
    settings.otherCameras = fields_.otherCameras;
    settings.frequencies = fields_.frequencies;
    settings.returnTimes = fields_.returnTimes;
    settings.audio = fields_.audioAngle;
    settings.doubleMain = fields_.doubleMain;
    settings.openingEnabled = fields_.openingEnabled;
    settings.openingCamera = fields_.openingCamera;
    settings.openingSeconds = fields_.openingSeconds;
    settings.closingEnabled = fields_.closingEnabled;
    settings.closingCamera = fields_.closingCamera;
    settings.closingSeconds = fields_.closingSeconds;
    settings.sections = fields_.fixedSections;
    return settings;
}

void ContentView::applySettings(const EditSettings& settings) {
    change([&](EditorFields& fields) {
        fields.aShare = settings.mainShare;
        fields.averageShot = settings.averageShot;
        fields.mainMinimum = settings.mainMinimum;
        fields.mainMaximum = settings.mainMaximum;
        fields.otherMinimum = settings.otherMinimum;
        fields.otherMaximum = settings.otherMaximum;
        fields.cameraA = settings.mainCamera;
        fields.otherCameras = settings.otherCameras;
        fields.frequencies = settings.frequencies;
        fields.returnTimes = settings.returnTimes;
        fields.audioAngle = settings.audio;
        fields.doubleMain = settings.doubleMain;
        fields.openingEnabled = settings.openingEnabled;
        fields.openingCamera = settings.openingCamera;
        fields.openingSeconds = settings.openingSeconds;
        fields.closingEnabled = settings.closingEnabled;
        fields.closingCamera = settings.closingCamera;
        fields.closingSeconds = settings.closingSeconds;
        fields.fixedSections = settings.sections;
    });
}

std::vector<std::string> ContentView::videoAngleIDs() const {
    if (!fields_.engine) return {};
    return shotweaver::videoAngleIDs(*fields_.imported, *fields_.engine);
}

std::vector<std::string> ContentView::selectedOtherCameras() const {
    if (!fields_.engine) return {};
    return shotweaver::selectedOtherCameras(currentSettings(), *fields_.imported, *fields_.engine);
}

std::string ContentView::angleLabel(const std::string& id) const {
    return fields_.imported ? shotweaver::angleLabel(id, *fields_.imported) : id;
}

std::vector<FixedCameraSection> ContentView::fixedCameraSections() const {
    if (!fields_.engine) return {};
    return shotweaver::fixedCameraSections(currentSettings(), *fields_.engine);
}

const SelectedCoverage& ContentView::coverage() const {
    if (!coverage_)
        coverage_ = fields_.engine
                        ? coverageReport(currentSettings(), *fields_.imported, *fields_.engine)
                        : SelectedCoverage{};
    return *coverage_;
}

const std::optional<std::string>& ContentView::coverageWarning() const {
    if (!coverageWarning_)
        coverageWarning_ = fields_.engine
                               ? shotweaver::coverageWarning(coverage(), currentSettings(),
                                                             *fields_.engine, environment_.locale)
                               : std::nullopt;
    return *coverageWarning_;
}

void ContentView::forgetCoverage() {
    coverage_.reset();
    coverageContent_.reset();
    coverageWarning_.reset();
}

const CoverageContent& ContentView::coverageContent() const {
    if (!coverageContent_)
        coverageContent_ =
            fields_.engine
                ? shotweaver::coverageContent(coverage(), currentSettings(), *fields_.imported,
                                              *fields_.engine, environment_.locale)
                : CoverageContent{};
    return *coverageContent_;
}

ActionBar ContentView::actionBar() const {
    const std::int64_t index = fields_.history.index;
    const auto count = static_cast<std::int64_t>(fields_.history.items.size());
    const bool hasCuts = !fields_.cuts.empty();
    const bool hasOthers = !selectedOtherCameras().empty();
    ActionBar bar;
    bar.generateLabel = hasCuts ? "Shuffle rough edit" : "Generate rough edit";
    bar.canGenerate = hasOthers && !fields_.audioAngle.empty();
    bar.canGoBack = index >= 0 && index < count && !(hasCuts && index == 0);
    bar.canGoForward = index + 1 < count;
    bar.canExport = hasCuts;
    if (hasCuts) bar.position = fmt::format("Edit {} of {}", index + 1, count);
    if (!hasOthers) bar.hint = "Include another camera.";
    return bar;
}

std::optional<std::string> ContentView::summaryLine() const {
    if (!fields_.engine || fields_.cuts.empty()) return std::nullopt;
    return shotweaver::summaryLine(fields_.cuts, currentSettings(), *fields_.imported,
                                   *fields_.engine);
}

std::vector<UsageRow> ContentView::usageRows() const {
    if (!fields_.engine || fields_.cuts.empty()) return {};
    return shotweaver::usageRows(fields_.cuts, *fields_.imported, *fields_.engine);
}

const CutTexts& ContentView::cutTexts() const {
    if (!cutTexts_) cutTexts_.emplace(*fields_.imported, fields_.engine, environment_.locale);
    return *cutTexts_;
}

CutRow ContentView::cutRow(std::size_t row) const {
    if (row >= fields_.cuts.size()) return {};
    return cutTexts().row(fields_.cuts[row]);
}

std::string ContentView::cutLine(std::size_t row) const {
    if (row >= fields_.cuts.size()) return "";
    return cutTexts().line(fields_.cuts[row]);
}

std::vector<CutLane> ContentView::cutLanes() const {
    if (!fields_.engine) return {};
    return shotweaver::cutLanes(fields_.cuts, *fields_.imported, *fields_.engine);
}

std::string ContentView::projectLine() const {
    if (!fields_.imported) return "";
    return shotweaver::projectLine(*fields_.imported, environment_.locale);
}

std::vector<PickerOption> ContentView::cameraOptions() const {
    if (!fields_.engine) return {};
    return shotweaver::cameraOptions(*fields_.imported, *fields_.engine);
}

std::vector<PickerOption> ContentView::audioOptions() const {
    if (!fields_.engine) return {};
    return shotweaver::audioOptions(currentSettings(), *fields_.imported, *fields_.engine);
}

std::vector<CameraRow> ContentView::cameraRows() const {
    if (!fields_.engine) return {};
    return shotweaver::cameraRows(currentSettings(), *fields_.imported, *fields_.engine);
}

} // namespace shotweaver
