#pragma once

#include "editor/CoverageContent.h"
#include "editor/views/BarDrawing.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <string>

namespace shotweaver {

/// Ranges of the project as a bar. A range tells its timecodes under the mouse; a screen reader
/// gets the row's label and all ranges in words.
class CoverageBarView : public QWidget {
    Q_OBJECT

  public:
    explicit CoverageBarView(QWidget* parent = nullptr);

    void show(const CoverageBar& bar, const std::shared_ptr<const Project>& project);

    const CoverageBar& bar() const { return bar_; }
    /// All ranges in words: worked out when asked, for there may be thousands.
    std::string rangesText() const;
    /// The range drawn at `x` in words.
    std::optional<std::string> textAt(double x) const;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    BarAxis axis() const;

    CoverageBar bar_;
    std::shared_ptr<const Project> project_; // null before the first bar
};

} // namespace shotweaver
