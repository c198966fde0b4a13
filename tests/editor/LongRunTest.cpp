#include "planning/EditPlan.h"
#include "platform/Files.h"
#include "tests/support/EditorBench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <random>

#include <malloc.h>

namespace shotweaver::test {
namespace {

/// The system's calls without waits for the device. Sessions cannot be stored while told so.
class QuickFileCalls final : public ForwardingFileCalls {
  public:
    bool isFull = false;

    int sync(int) override { return 0; }
    int rename(const std::string& from, const std::string& to) override {
        if (!isFull || !to.ends_with("session-v1.json"))
            return ForwardingFileCalls::rename(from, to);
        errno = ENOSPC;
        return -1;
    }
};

/// A project, with what must be set once it has been imported.
struct Project {
    std::string name;
    std::string xml;
    std::vector<std::string> cameras;
    std::string audio;
};

struct Preset {
    std::string name;
    const Project* project;
    EditSettings settings;
};

/// What an editor must be in, after all that was done to it.
struct Model {
    const Project* project = nullptr;
    EditSettings settings;
    EditHistory history;
    std::vector<Cut> cuts;
    std::string status;
    std::string error;
    std::string saveError;
    std::string chosenPreset;
    std::string notice;
    bool isSheetOpen = false;
    bool isSaveDue = false;

    void change(const EditSettings& changed) {
        if (settings == changed) return;
        settings = changed;
        const EditRevision* const current = history.current();
        if (!current || current->settings != changed) cuts.clear();
        status.clear();
        isSaveDue = true;
    }
};

/// A user who does anything at any time, beside the model of what must come of it.
class LongRun {
  public:
    explicit LongRun(std::uint64_t seed) : chance_(seed) {
        ProjectBuilder sunday;
        projects_.push_back({"Concert", concert().xml(), {"W", "P", "B"}, "R"});
        projects_.push_back({"Sunday", sunday.xml(), {"A", "B"}, "A"});
        sunday.angles.back().hasVideo = false;
        refused_ = sunday.xml();
        bench.editor().appear();
    }

    void act() {
        bench.now += 1;
        calls.isFull = below(10) == 0;
        static constexpr void (LongRun::*actions[])() = {
            &LongRun::importProject, &LongRun::set,    &LongRun::set,     &LongRun::set,
            &LongRun::generate,      &LongRun::move,   &LongRun::move,    &LongRun::section,
            &LongRun::generate,      &LongRun::preset, &LongRun::preset,  &LongRun::exportEdit,
            &LongRun::generate,      &LongRun::alert,  &LongRun::section, &LongRun::generate};
        if (below(300) == 0 && mayRestart)
            restart();
        else
            (this->*actions[below(std::size(actions))])();
        bench.host.endTurn();
        save();
        bench.host.events.clear();
        bench.host.panels.clear();
    }

    void import(const Project& project) {
        bench.editor().importProject(project.xml);
        EditSettings made = model.settings;
        made.returnTimes.clear();
        made.sections.clear();
        made.openingEnabled = made.closingEnabled = false;
        made.mainCamera = made.openingCamera = made.closingCamera = project.cameras.front();
        made.otherCameras = {project.cameras.begin() + 1, project.cameras.end()};
        made.frequencies.clear();
        for (const std::string& camera : project.cameras)
            made.frequencies[camera] = 5;
        made.audio = project.audio;
        const std::string error = model.error;
        model = {&project,          made, {}, {}, "", error, model.saveError, "", "",
                 model.isSheetOpen, true};
    }

    /// The same project, without edits, errors and presets.
    void startAfresh() {
        calls.isFull = false;
        while (!presets.empty()) {
            model.chosenPreset = presets.begin()->first;
            bench.editor().choosePreset(model.chosenPreset);
            bench.editor().deletePreset();
            presets.erase(presets.begin());
        }
        alert();
        import(projects_.front());
        save();
    }

    /// What differs from the model.
    std::string difference() {
        const EditorFields& fields = bench.fields();
        if (fields.sourceXML.value_or("") != (model.project ? model.project->xml : ""))
            return "XML";
        if (bench.editor().currentSettings() != model.settings) return "settings";
        if (fields.history != model.history) return "history";
        if (fields.cuts != model.cuts) return "cuts";
        if (fields.status != model.status) return "status: " + fields.status;
        if (fields.error.value_or("") != model.error) return "error: " + fields.error.value_or("");
        if (fields.sessionSaveError.value_or("") != model.saveError) return "save error";
        if (fields.chosenPreset != model.chosenPreset) return "chosen preset";
        if (fields.presetNotice != model.notice) return "notice: " + fields.presetNotice;
        if (fields.showSavePreset != model.isSheetOpen) return "sheet";
        if (bench.editor().presetOptions().size() != presets.size() + 1) return "presets";
        const std::string bytes = bench.session().value_or("");
        if (bytes != lastBytes_) lastRead_ = readSession(lastBytes_ = bytes);
        return lastRead_ == saved_ ? "" : "session file";
    }

    QuickFileCalls calls;
    EditorBench bench{calls};
    Model model;
    std::map<std::string, Preset> presets; // by identifier
    std::map<std::string, int> exports;    // by the project's name
    std::map<std::string, int> counts;     // of what has happened
    bool mayRestart = true;

  private:
    std::size_t below(std::size_t end) { return chance_() % end; }
    double whole(int least, int most) {
        return least + double(below(static_cast<std::size_t>(most - least + 1)));
    }
    std::string camera() {
        return model.project ? model.project->cameras[below(model.project->cameras.size())] : "W";
    }
    void tell(const std::string& error) {
        model.error = error;
        ++counts[error.substr(0, 20)];
    }

    void save() {
        if (std::exchange(model.isSaveDue, false) && model.project) {
            model.saveError = calls.isFull ? "Session could not be saved: “" + bench.sessionPath() +
                                                 "” could not be written: No space left on device."
                                           : "";
            if (!calls.isFull)
                saved_ = SavedEditSession{1, model.project->xml, model.settings, model.history};
            ++counts[calls.isFull ? "save failed" : "saved"];
        }
    }

    void restart() {
        bench.restart();
        bench.editor().appear();
        model = {};
        if (!saved_) return;
        for (const Project& project : projects_)
            if (project.xml == saved_->sourceXML) model.project = &project;
        model.settings = saved_->settings;
        model.history = saved_->history;
        const EditRevision* const current = model.history.current();
        if (current && current->settings == model.settings) model.cuts = current->cuts;
        model.status = "Restored your last session from its saved XML snapshot. Import a fresh XML "
                       "if the Final Cut project has changed.";
        model.isSaveDue = true;
        ++counts["restored"];
    }

    void importProject() {
        const std::size_t kind = below(12);
        ContentView& editor = bench.editor();
        if (kind < 2) return import(projects_[kind]);
        if (kind < 4) {
            editor.importProject(refused_);
            tell("Include at least two video angles in your multicam.");
        } else if (kind < 6) {
            EXPECT_FALSE(editor.handleDroppedURLs({"file:///a.fcpxml", "file:///b.fcpxml"}));
            tell("Drop one Final Cut XML file or bundle at a time.");
        } else if (kind < 8) {
            EXPECT_FALSE(editor.handleDroppedURLs({"file:///a.mov"}));
            tell("Choose a .fcpxml file or .fcpxmld bundle.");
        } else {
            bench.host.chosen.reset();
            editor.chooseProjectFile();
        }
    }

    void set() {
        ContentView& editor = bench.editor();
        EditSettings made = model.settings;
        const std::string angle = camera();
        const bool isOn = below(2) == 0;
        switch (below(12)) {
        case 0:
            editor.setShare(made.mainShare = whole(10, 90));
            break;
        case 1:
            editor.setDoubleMain(made.doubleMain = isOn);
            break;
        case 2:
            editor.setMainMinimum(made.mainMinimum = whole(1, 30));
            made.mainMaximum = std::max(made.mainMaximum, made.mainMinimum);
            break;
        case 3:
            editor.setOtherMaximum(made.otherMaximum = whole(1, 30));
            made.otherMinimum = std::min(made.otherMinimum, made.otherMaximum);
            break;
        case 4:
            editor.setOpeningEnabled(made.openingEnabled = isOn);
            break;
        case 5:
            editor.setClosingEnabled(made.closingEnabled = isOn);
            break;
        case 6:
            editor.setOpeningSeconds(made.openingSeconds = whole(1, 20));
            break;
        case 7:
            editor.setClosingCamera(made.closingCamera = angle);
            break;
        case 8:
            editor.setFrequency(angle, made.frequencies[angle] = whole(1, 10));
            break;
        case 9:
            editor.setWait(angle, made.returnTimes[angle] = whole(0, 20));
            break;
        case 10:
            editor.setIncluded(angle, isOn);
            isOn ? void(made.otherCameras.insert(angle)) : void(made.otherCameras.erase(angle));
            break;
        default:
            if (!model.project || angle == made.mainCamera) return;
            editor.chooseMainCamera(angle);
            made.otherCameras.insert(made.mainCamera);
            made.otherCameras.erase(angle);
            made.mainCamera = angle;
        }
        model.change(made);
    }

    void section() {
        ContentView& editor = bench.editor();
        EditSettings made = model.settings;
        const std::size_t row = below(4);
        const std::size_t kind = below(6);
        const char* const texts[] = {"01:00:30:00", "01:00:40:12", "00:00:10:00", "soon"};
        const std::string text = texts[below(4)];
        if (kind == 0) {
            editor.addSection();
            const std::vector<SectionDraft>& rows = bench.fields().fixedSections;
            if (rows.size() > made.sections.size()) {
                made.sections.push_back(rows.back()); // what it proposes is met elsewhere
                EXPECT_EQ(rows.back().camera, made.mainCamera);
            } else if (model.project) {
                tell("There is no room for another section after the existing sections and "
                     "opening or closing shots.");
            }
        }
        SectionDraft ignored;
        SectionDraft& draft = row < made.sections.size() ? made.sections[row] : ignored;
        if (kind == 1) editor.setSectionName(row, draft.name = text);
        if (kind == 2) editor.setSectionStart(row, draft.start = text);
        if (kind == 3) editor.setSectionCamera(row, draft.camera = camera());
        if (kind > 3) {
            editor.removeSection(row);
            if (&draft != &ignored)
                made.sections.erase(made.sections.begin() + std::ptrdiff_t(row));
        }
        model.change(made);
    }

    void generate() {
        if (model.project) {
            SeededRandom random = bench.random; // the same draws
            const UUIDMaker makeUUID = [&] { return UUID::random(random); };
            std::vector<Cut> cuts;
            const std::string failure = failureOf([&] {
                cuts = generateCutList(model.settings, *bench.fields().imported,
                                       *bench.fields().engine, random, makeUUID);
            });
            if (failure.empty()) {
                const UUID id = makeUUID();
                model.cuts = cuts;
                model.history.items.resize(std::size_t(model.history.index + 1));
                model.history.items.push_back({id, bench.now, model.settings, cuts});
                ++model.history.index;
                model.status.clear();
                model.isSaveDue = true;
                ++counts["generated"];
            } else {
                tell(failure);
            }
        }
        bench.editor().generateEdit();
    }

    void move() {
        const auto count = std::int64_t(model.history.items.size());
        std::int64_t target = std::int64_t(below(std::size_t(count + 2))) - 1;
        const std::size_t kind = below(3);
        if (kind == 0) target = model.history.index - (model.cuts.empty() ? 0 : 1);
        if (kind == 1) target = model.history.index + 1;
        if (kind == 0) bench.editor().goBack();
        if (kind == 1) bench.editor().goForward();
        if (kind == 2) bench.editor().showRevision(target);
        if (target < 0 || target >= count) return;
        const EditRevision& shown = model.history.items[std::size_t(target)];
        model.history.index = target;
        model.change(shown.settings);
        model.cuts = shown.cuts;
        model.chosenPreset.clear();
        model.notice.clear();
        model.isSaveDue = true;
        ++counts["moved"];
    }

    bool areCamerasChosen() const {
        const EditSettings& s = model.settings;
        return model.project && s.otherCameras.size() > s.otherCameras.count(s.mainCamera);
    }
    void store(const std::string& id, const std::string& name) {
        presets[id] = {name, model.project, model.settings};
        model.chosenPreset = id;
        model.notice = "Saved " + name + ".";
        model.isSheetOpen = false;
        ++counts["stored"];
    }

    void preset() {
        ContentView& editor = bench.editor();
        const auto chosen = presets.find(model.chosenPreset);
        switch (below(6)) {
        case 0: {
            const std::string name = fmt::format("Preset {}", below(6));
            editor.openSavePreset();
            editor.setPresetName(" " + name + "\n");
            editor.savePreset();
            model.isSheetOpen = true;
            const bool isTaken = std::any_of(presets.begin(), presets.end(), [&](const auto& each) {
                return each.second.name == name;
            });
            if (isTaken) {
                model.isSheetOpen = false;
                tell("A preset with that name already exists. Choose it and use Update, or save "
                     "with another name.");
            } else if (areCamerasChosen()) {
                store(bench.fields().chosenPreset, name);
            }
            return;
        }
        case 1:
            editor.updatePreset();
            if (chosen != presets.end() && areCamerasChosen())
                store(chosen->first, chosen->second.name);
            return;
        case 2:
            editor.deletePreset();
            if (chosen == presets.end()) return;
            model.notice =
                "Deleted " + chosen->second.name + ". Your current editing settings are unchanged.";
            model.chosenPreset.clear();
            presets.erase(chosen);
            return;
        case 3:
            editor.applyPreset();
            if (chosen != presets.end()) apply(chosen->second);
            return;
        default: {
            auto each = presets.begin();
            std::advance(each, std::ptrdiff_t(below(presets.size() + 1)));
            model.chosenPreset = each == presets.end() ? "" : each->first;
            editor.choosePreset(model.chosenPreset);
        }
        }
    }

    void apply(const Preset& preset) {
        const EditSettings& from = preset.settings;
        const bool isMatched = preset.project == model.project;
        EditSettings made = model.settings;
        made.mainShare = from.mainShare;
        made.mainMinimum = from.mainMinimum;
        made.mainMaximum = from.mainMaximum;
        made.otherMinimum = from.otherMinimum;
        made.otherMaximum = from.otherMaximum;
        made.doubleMain = from.doubleMain;
        made.openingEnabled = isMatched && from.openingEnabled;
        made.closingEnabled = isMatched && from.closingEnabled;
        model.notice = "Applied " + preset.name;
        if (model.project) {
            for (const std::string& angle : model.project->cameras) {
                made.frequencies[angle] = isMatched ? numberFor(from.frequencies, angle, 5) : 5;
                made.returnTimes[angle] = isMatched ? numberFor(from.returnTimes, angle, 0) : 0;
            }
        }
        if (isMatched) {
            made.mainCamera = from.mainCamera;
            made.otherCameras = from.otherCameras;
            made.otherCameras.erase(from.mainCamera);
            made.audio = from.audio;
            model.notice += ", including matching camera and audio angles.";
        } else {
            model.notice += "'s pacing and balance. Some angle names are missing or repeated, so "
                            "the current camera and audio selections were kept.";
            if (from.openingEnabled || from.closingEnabled)
                model.notice += " An opening or closing camera could not be matched, so that "
                                "option was turned off.";
        }
        if (made.openingEnabled) made.openingCamera = from.openingCamera;
        if (made.openingEnabled) made.openingSeconds = from.openingSeconds;
        if (made.closingEnabled) made.closingCamera = from.closingCamera;
        if (made.closingEnabled) made.closingSeconds = from.closingSeconds;
        model.change(made);
        model.cuts.clear();
        model.status.clear();
        model.isSaveDue = true;
        ++counts[isMatched ? "applied" : "applied in part"];
    }

    void exportEdit() {
        FakeHost& host = bench.host;
        const bool isCancelled = below(4) == 0;
        const bool canOpen = below(2) == 0;
        host.chosen.reset();
        if (!isCancelled) host.chosen = bench.folder.path();
        host.openError.reset();
        if (!canOpen) host.openError = HostError{"", 1, "None is there."};
        bench.editor().exportEdit();
        EXPECT_EQ(host.panels.size(), model.cuts.empty() ? 0U : 1U);
        if (model.cuts.empty() || isCancelled) return;
        const std::string& name = model.project->name;
        const int number = ++exports[name];
        const std::string path = bench.folder.path(
            fmt::format("{} Shotweaver{}", name, number == 1 ? "" : fmt::format(" {}", number)));
        EXPECT_TRUE(fileExists(systemFileCalls(), path + ".fcpxml"));
        EXPECT_TRUE(fileExists(systemFileCalls(), path + ".settings.txt"));
        model.status = canOpen ? "XML and settings saved. Sent the XML to Final Cut Pro for import."
                               : "XML and settings were saved. Final Cut Pro could not be opened.";
        if (!canOpen)
            tell("Your export is saved at " + path +
                 ".fcpxml. Open it in Final Cut manually. None is there.");
        ++counts["exported"];
    }

    void alert() {
        bench.editor().dismissError();
        model.error.clear();
    }

    std::mt19937_64 chance_;
    std::vector<Project> projects_;
    std::string refused_;
    std::optional<SavedEditSession> saved_; // what the file must hold
    std::optional<SavedEditSession> lastRead_;
    std::string lastBytes_;
};

TEST(LongRun, tenThousandActionsLeaveWhatTheModelSays) {
    LongRun run(41);
    for (int action = 0; action < 10'000; ++action) {
        run.act();
        ASSERT_EQ(run.difference(), "") << "action " << action;
    }
    std::size_t files = 2; // the folders of the session and the presets
    for (const auto& [name, count] : run.exports)
        files += 2 * static_cast<std::size_t>(count);
    EXPECT_EQ(run.bench.folder.names().size(), files);
    for (const char* what : {"saved", "save failed", "restored", "generated", "moved", "stored",
                             "applied", "applied in part", "exported"})
        EXPECT_GT(run.counts[what], 10) << what;
}

TEST(LongRun, onlyTheHistoryTakesMemory) {
    // Thousands of actions on one editor, after which a new project empties the history: what is
    // then still taken more than at the first such moment has been left behind.
    LongRun run(42);
    run.mayRestart = false;
    std::size_t taken[3] = {};
    for (std::size_t& moment : taken) {
        for (int action = 0; action < 3000; ++action)
            run.act();
        run.startAfresh();
        ASSERT_EQ(run.difference(), "");
        EXPECT_TRUE(run.bench.host.waiting.empty());
        moment = mallinfo2().uordblks;
    }
    const std::size_t allowed = 16'384; // the smallest block at every sixth action
    EXPECT_LT(taken[1], taken[0] + allowed);
    EXPECT_LT(taken[2], taken[1] + allowed);
}

} // namespace
} // namespace shotweaver::test
