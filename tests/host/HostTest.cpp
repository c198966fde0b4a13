#include "host/FinalCutIntegration.h"
#include "host/MacWorkspace.h"
#include "tests/support/TestFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <thread>

#include <sys/stat.h>

namespace shotweaver {
namespace {

std::string textOf(const std::optional<HostError>& error) {
    return error ? fmt::format("{} {} {}", error->domain, error->code, error->description)
                 : "opened";
}

struct FakePasteboard final : Pasteboard {
    std::vector<std::string> types() const override {
        std::vector<std::string> types{"public.file-url"};
        for (const auto& [version, bytes] : contents)
            types.push_back("com.apple.finalcutpro.xml" + version);
        return types;
    }
    std::optional<std::string> data(const std::string& type) const override {
        const std::string bytes = contents.at(type.substr(25)); // asked only for what it lists
        return bytes == "none" ? std::nullopt : std::optional(bytes);
    }
    std::map<std::string, std::string> contents; // by the ends of the types
};

TEST(XMLIntake, theNewestTypeWithBytesIsDropped) {
    struct Row {
        std::map<std::string, std::string> drag;
        bool offered;
        std::string outcome;
    };
    const std::string refusal =
        "Final Cut could not provide the project XML. Drag one project from its browser.";
    const Row rows[] = {
        {{{".v1-11", "11"}, {".v1-13", "13"}}, true, "13"},
        {{{".v1-9", "9"}, {".v1-10", "10"}, {"", "0"}}, true, "10"},
        {{{".v1-14", ""}, {".v1-12", "none"}, {".v1-9", "9"}, {"", "0"}}, true, "9"},
        {{{"", "0"}, {".v1-15", "15"}}, true, "0"},
        {{{".v1-14", ""}, {"", "none"}}, true, refusal},
        {{{".v1-15", "15"}, {".v1-8", "8"}}, false, refusal},
    };
    for (const auto& [contents, offered, outcome] : rows) {
        FakePasteboard drag;
        drag.contents = contents;
        XMLInbox inbox;
        EXPECT_EQ(offersXML(drag), offered) << outcome;
        EXPECT_EQ(receiveDrop(drag, inbox), outcome != refusal) << outcome;
        EXPECT_EQ(inbox.xmlData().value_or("") + inbox.importError().value_or(""), outcome);
    }
}

TEST(XMLInbox, everyAssignmentIsAnnouncedToThoseWhoStillListen) {
    XMLInbox inbox;
    std::string seen;
    const auto first = inbox.observe([&] {
        seen += " 1" + inbox.url().value_or("-") + inbox.xmlData().value_or("-") +
                inbox.importError().value_or("-");
    });
    std::optional second(inbox.observe([&] { seen += " 2"; }));
    inbox.setURL("u");
    inbox.setURL("u");
    second.reset();
    inbox.setXMLData("x");
    inbox.setXMLData(std::nullopt);
    inbox.setImportError("e");
    EXPECT_EQ(seen, " 1u-- 2 1u-- 2 1ux- 1u-- 1u-e");
}

using Report = std::function<void(const OpenCompletion&)>;

/// Writes down what happens while a file is handed over.
struct Host final : Workspace, ItemAccess {
    Host(std::optional<std::string> found, Report reporting)
        : application(std::move(found)), report(std::move(reporting)) {}
    std::optional<std::string> urlForApplication(const std::string& id) override {
        events += "find " + id + "; ";
        if (application == "broken") throw std::runtime_error("No index.");
        return application;
    }
    void open(const std::string& file, const std::string& with,
              OpenCompletion completion) override {
        events += fmt::format("open {} with {}; ", file, with);
        report(completion);
    }
    bool startAccess(const std::string& path) override {
        events += "start " + path + "; ";
        return application != "free";
    }
    void stopAccess(const std::string& path) override { events += "stop " + path + "; "; }

    std::optional<std::string> application;
    Report report;
    std::string events;
};

TEST(OpenInFinalCut, completesOnceOnTheMainThreadAfterTheAccess) {
    const std::string find = "find com.apple.FinalCut; ";
    const std::string stop = find + "start /f; open /f with app; returned; stop /f; ";
    const Report succeed = [](const auto& done) { done(std::nullopt); };
    const Report refuse = [](const auto& done) { done(HostError{"NSCocoa", 256, "No."}); };
    const Report fail = [](const auto&) { throw std::runtime_error("Why."); };
    const std::tuple<std::optional<std::string>, Report, std::string> rows[] = {
        {"app", succeed, stop + "opened"},
        {"app", refuse, stop + "NSCocoa 256 No."},
        {"app", fail, stop + "Shotweaver 2 Why."},
        {"app", [&](auto& done) { std::thread(refuse, done).join(); }, stop + "NSCocoa 256 No."},
        {"app", [&](auto& done) { succeed(done), refuse(done), fail(done); }, stop + "opened"},
        {"free", succeed, find + "start /f; open /f with free; returned; opened"},
        {"broken", succeed, find + "returned; Shotweaver 2 No index."},
        {std::nullopt, succeed,
         find + "Shotweaver 1 Final Cut Pro could not be found. Your exported files have been "
                "saved.returned; "},
    };
    for (const auto& [application, report, events] : rows) {
        Host host(application, report);
        std::vector<std::function<void()>> queue;
        const auto later = [&](auto function) { queue.push_back(std::move(function)); };
        openInFinalCut("/f", host, host, later,
                       [&](const auto& error) { host.events += textOf(error); });
        host.events += "returned; ";
        for (const auto& function : queue)
            function();
        EXPECT_EQ(host.events, events);
    }
}

/// A folder that every variable of an environment names, with shell scripts as programs.
struct ProgramFolder : test::TestFolder {
    void add(const char* name, const std::string& script) const {
        chmod(write(name, "#!/bin/sh\n" + script).c_str(), 0700);
    }
    Environment environment() const {
        return [place = path()](const char*) { return std::optional(place); };
    }
};

std::string opening(Workspace& workspace, const std::string& file, const std::string& application) {
    const auto outcome = std::make_shared<std::promise<std::string>>();
    workspace.open(file, application,
                   [=](const auto& error) { outcome->set_value(textOf(error)); });
    return outcome->get_future().get();
}

TEST(MacWorkspace, asksTheSystemsPrograms) {
    const ProgramFolder folder;
    MacWorkspace workspace(folder.environment(), "mdfind", "open");
    folder.add("mdfind", "echo");
    EXPECT_EQ(workspace.urlForApplication("a.b"), std::nullopt);
    folder.add("mdfind", "echo \"/A $1.app\"; echo /B.app");
    const std::string application = "/A kMDItemCFBundleIdentifier == 'a.b'.app";
    EXPECT_EQ(workspace.urlForApplication("a.b"), application);

    EXPECT_EQ(opening(workspace, "/f", application), "Shotweaver 2 “open” could not be found.");
    folder.add("open", "printf '<%s>' \"$@\" >\"${0%open}said\"");
    EXPECT_EQ(opening(workspace, "/My \"50%\" cut", application), "opened");
    EXPECT_EQ(folder.read("said"), "<-b><a.b></My \"50%\" cut>");
    folder.add("open", "echo noise; echo 'Unable to find it.' >&2; exit 1");
    EXPECT_EQ(opening(workspace, "/f", application), "Shotweaver 1 Unable to find it.");
    // Without an index the opener is asked all the same.
    folder.add("mdfind", "exit 1");
    const std::string unknown = workspace.urlForApplication("a.b").value();
    EXPECT_EQ(opening(workspace, "/f", unknown), "Shotweaver 1 Final Cut Pro could not be found. "
                                                 "Your exported files have been saved.");
    folder.add("open", "printf '<%s>' \"$@\" >\"${0%open}said\"");
    EXPECT_EQ(opening(workspace, "/f", unknown), "opened");
    EXPECT_EQ(folder.read("said"), "<-b><a.b></f>");
}

} // namespace
} // namespace shotweaver
