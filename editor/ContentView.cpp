#include "editor/ContentView.h"

#include "editor/PanelTexts.h"
#include "planning/EditPlan.h"

#include <fmt/format.h>

#include <new>

namespace shotweaver {

ContentView::ContentView(EditorEnvironment environment)
    : environment_(std::move(environment)),
      sessionFile_(environment_.files, environment_.folders.session),
      defaults_(environment_.files, environment_.folders.userDefaults), judged_{fields_.settings,
                                                                                {},
                                                                                {}} {
    readPresetData();
}

ContentView::~ContentView() {
    if (saveIsWanted_) writeSession();
}

Observers::Subscription ContentView::observe(std::function<void()> observer) {
    return observers_.add(std::move(observer));
}

void ContentView::change(const std::function<void(EditorFields&)>& body, Saving saving,
                         std::string_view control) {
    try {
        body(fields_);
        endChange(saving, control);
    } catch (const std::exception& failure) {
        fields_.error = textOf(failure);
    }
    observers_.notify();
    if (saveIsWanted_) saveSoon();
}

/// Judges what the change has done to the settings, and saves.
void ContentView::endChange(Saving saving, std::string_view control) {
    if (fields_.settings != judged_.settings) {
        UndoStep::Settings before{std::move(judged_.settings), judged_.shownEdit};
        settingsDidChange();
        recordSettings(std::move(before), control);
    }
    judged_.shownEdit = shownEditID();
    judged_.project = fields_.project;
    if (saveIsWanted_ && saving == Saving::now) writeSession();
}

void ContentView::settingsDidChange() {
    judged_.settings = fields_.settings;
    forgetCoverage();
    handChange_.reset();
    saveIsWanted_ = true;
    const EditRevision* const current = fields_.history.current();
    if (!current || current->settings != fields_.settings) fields_.showsCurrentEdit = false;
    fields_.status.clear();
}

void ContentView::edit(const std::function<void(EditSettings&)>& change, Saving saving,
                       std::string_view control) {
    this->change([&](EditorFields& fields) { change(fields.settings); }, saving, control);
}

void ContentView::writeSession() {
    saveIsWanted_ = false;
    if (!fields_.sourceXML) return;
    dropForgottenKept();
    try {
        sessionFile_.write([&](ByteSink& sink) {
            encoder_.write(sink, *fields_.sourceXML, fields_.settings, fields_.history,
                           fields_.kept);
        });
        fields_.sessionSaveError.reset();
    } catch (const std::exception& failure) {
        fields_.sessionSaveError = "Session could not be saved: " + textOf(failure);
    }
}

/// Saves at the end of this event-loop turn, together with whatever else the turn changes.
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

void ContentView::reportingFailures(const std::function<void()>& body) {
    try {
        body();
    } catch (const std::exception& failure) {
        showFailure(failure);
    }
}

void ContentView::showFailure(const std::exception& failure, std::string_view prefix) {
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

const SelectedCoverage& ContentView::coverage() const {
    if (!coverage_)
        coverage_ = fields_.project
                        ? coverageReport(fields_.settings, *fields_.project, fields_.keptCuts())
                        : SelectedCoverage{};
    return *coverage_;
}

const std::optional<std::string>& ContentView::coverageWarning() const {
    if (!coverageWarning_)
        coverageWarning_ = fields_.project
                               ? shotweaver::coverageWarning(coverage(), fields_.settings,
                                                             *fields_.project, environment_.locale)
                               : std::nullopt;
    return *coverageWarning_;
}

/// Also what is said of the cuts, which depends on the same.
void ContentView::forgetCoverage() {
    coverage_.reset();
    coverageContent_.reset();
    coverageWarning_.reset();
    cutReasons_.reset();
}

const CoverageContent& ContentView::coverageContent() const {
    if (!coverageContent_)
        coverageContent_ = fields_.project
                               ? shotweaver::coverageContent(coverage(), fields_.settings,
                                                             *fields_.project, environment_.locale)
                               : CoverageContent{};
    return *coverageContent_;
}

ActionBar ContentView::actionBar() const {
    const std::int64_t index = fields_.history.index;
    const auto count = static_cast<std::int64_t>(fields_.history.items.size());
    const bool hasCuts = fields_.showsCurrentEdit;
    const bool hasOthers =
        fields_.project && !selectedOtherCameras(fields_.settings, *fields_.project).empty();
    ActionBar bar;
    bar.generateLabel = hasCuts ? "Shuffle rough edit" : "Generate rough edit";
    bar.canGenerate = hasOthers && !fields_.settings.audio.empty();
    bar.canGoBack = index >= 0 && index < count && !(hasCuts && index == 0);
    bar.canGoForward = index + 1 < count;
    bar.canExport = hasCuts;
    if (hasCuts) bar.position = fmt::format("Edit {} of {}", index + 1, count);
    const bool hasAudio = !fields_.settings.audio.empty();
    if (!hasOthers)
        bar.hint = panelTexts::includeAnother;
    else if (!hasAudio)
        bar.hint = panelTexts::chooseAudio;
    if (const std::size_t kept = fields_.keptCuts().size(); kept > 0)
        bar.kept = kept == 1 ? "1 shot kept." : fmt::format("{} shots kept.", kept);
    return bar;
}

std::string ContentView::generateHelp() const {
    const std::optional<std::string> hint = actionBar().hint;
    if (!hint) return panelTexts::generateHelp;
    const bool lacksBoth = *hint == panelTexts::includeAnother && fields_.settings.audio.empty();
    return lacksBoth ? *hint + " " + panelTexts::chooseAudio : *hint;
}

std::string ContentView::statusLine() const {
    const bool isOldNews = fields_.status == panelTexts::restored && !restoreIsNews_;
    return isOldNews ? "" : fields_.status;
}

std::string ContentView::noCutsText() const {
    const std::string text = panelTexts::noCuts;
    return actionBar().canGoBack ? text + " " + panelTexts::backBrings : text;
}

const CutTexts& ContentView::cutTexts() const {
    if (!cutTexts_) cutTexts_.emplace(fields_.project, environment_.locale);
    return *cutTexts_;
}

CutRow ContentView::cutRow(std::size_t row) const {
    const std::vector<Cut>& cuts = fields_.cuts();
    return row < cuts.size() ? cutTexts().row(cuts[row]) : CutRow{};
}

std::string ContentView::cutLine(std::size_t row) const {
    const std::vector<Cut>& cuts = fields_.cuts();
    return row < cuts.size() ? cutTexts().line(cuts[row]) : "";
}

} // namespace shotweaver
