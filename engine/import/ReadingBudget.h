#pragma once

#include <algorithm>
#include <cstddef>

namespace shotweaver {

/// Bounds what is read of a document, however often its compound clips repeat it: 20 million visits
/// of elements, about two seconds. Every call throws `FinalCutImportError` beyond that.
class ReadingBudget {
  public:
    /// Counts a visit of an element of which so many bytes are read: one, and one more for every
    /// 128 bytes after the first 512.
    void visit(std::size_t bytes) {
        constexpr std::size_t included = 512;
        visits(1 + (std::max(bytes, included) - included) / moreBytes);
    }

    void visits(std::size_t count) { spend(count * stepsOfVisit); }

    /// Counts an eighth of a visit: a node that is passed over, with its name's bytes, or a clip
    /// that is moved by one level.
    void step(std::size_t bytes = 0) { spend(1 + bytes / (moreBytes / stepsOfVisit)); }

    /// What has been spent, in steps.
    std::size_t spent() const { return spent_; }

    /// Spends what a first reading of the same cost, for one that is not made again.
    void spend(std::size_t steps) {
        spent_ += steps;
        if (spent_ > budget) refuse();
    }

    /// Throws the refusal of what exceeds the budget.
    [[noreturn]] static void refuse();

  private:
    static constexpr std::size_t stepsOfVisit = 8;
    static constexpr std::size_t moreBytes = 128;
    static constexpr std::size_t budget = 20'000'000 * stepsOfVisit;

    std::size_t spent_ = 0; // steps
};

} // namespace shotweaver
