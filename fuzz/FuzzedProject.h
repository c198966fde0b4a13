#pragma once

#include "engine/EditSettings.h"
#include "tests/support/ProjectBuilder.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>
#include <vector>

namespace shotweaver::fuzz {

/// Projects and edits out of a fuzzer's bytes. Most are what an editor could have made, with odd
/// times, references and nestings; now and then one thing is wrong. Spent bytes give the plainest
/// project.
class FuzzedProject {
  public:
    explicit FuzzedProject(FuzzedDataProvider& bytes) : bytes_(bytes) {}

    /// An export of a project, at most 2000 frames long.
    std::string document();

    /// What the document's angles are called.
    const std::vector<std::string>& angles() const { return angles_; }

    /// A request for an edit of it, given what its angles cover; its numbers and cameras are now
    /// and then not allowed.
    GenerationInputs inputs(const CoverageMap& coverage);

  private:
    bool rarely() { return bytes_.ConsumeIntegralInRange<int>(0, 31) == 31; }
    bool sometimes() { return bytes_.ConsumeIntegralInRange<int>(0, 3) == 3; }
    std::int64_t number(std::int64_t lowest, std::int64_t highest) {
        return bytes_.ConsumeIntegralInRange(lowest, highest);
    }
    std::string pick(const std::vector<std::string>& texts);

    std::string frameDuration();
    std::string time(std::int64_t frames);
    std::string clipTimes(std::int64_t around);
    std::string angle(const std::string& id);
    std::string angleItem(std::int64_t around, int depth);
    std::string media();
    std::string clipContent();
    std::string source(const std::string& id);
    std::string annotation(int index);
    std::string connectedItem(int index);
    std::string volume();
    double setting(double lowest, double highest);
    std::string camera();

    FuzzedDataProvider& bytes_;
    test::ProjectBuilder project_;
    std::int64_t multicamStart_ = 0; // frames
    std::vector<std::string> angles_;
};

} // namespace shotweaver::fuzz
