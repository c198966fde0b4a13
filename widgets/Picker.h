#pragma once

#include <QComboBox>

#include <string>
#include <utility>
#include <vector>

namespace shotweaver {

/// A choice among labelled identifiers.
class Picker : public QComboBox {
    Q_OBJECT

  public:
    explicit Picker(const QString& accessibleName, QWidget* parent = nullptr);

    /// `options` is a list of records with an `id` and a `label`; `current` is the chosen one's
    /// identifier.
    template <class Options>
    void show(const Options& options, const std::string& current) {
        std::vector<Entry> entries;
        entries.reserve(options.size());
        for (const auto& option : options)
            entries.push_back({option.id, option.label});
        showEntries(std::move(entries), current);
    }

    void showPopup() override;

  Q_SIGNALS:
    void chosen(const std::string& id);

  protected:
    void initStyleOption(QStyleOptionComboBox* option) const override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    struct Entry {
        std::string id;
        std::string label;

        bool operator==(const Entry&) const = default;
    };

    void showEntries(std::vector<Entry> entries, const std::string& current);

    std::vector<Entry> entries_;
};

} // namespace shotweaver
