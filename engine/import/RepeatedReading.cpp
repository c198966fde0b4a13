#include "engine/import/RepeatedReading.h"

#include <cstring>

namespace shotweaver {

namespace {

// In the bytes that `Weigher` adds up. A real export reads none of its parts again, or small ones.
constexpr std::size_t maximumRepeated = 200'000'000;

/// About how long a tree takes to read: its texts, and something for every node and attribute.
class Weigher final : public pugi::xml_tree_walker {
  public:
    std::size_t weight() const { return weight_; }

    bool begin(pugi::xml_node& node) override { return for_each(node); }
    bool for_each(pugi::xml_node& node) override {
        add(node.name(), node.value());
        for (const pugi::xml_attribute each : node.attributes())
            add(each.name(), each.value());
        return true;
    }

  private:
    void add(const char* name, const char* value) {
        constexpr std::size_t fixed = 8;
        weight_ += fixed + std::strlen(name) + std::strlen(value);
    }

    std::size_t weight_ = 0;
};

} // namespace

bool RepeatedReading::mayRead(pugi::xml_node element) {
    const auto [entry, isFirst] = weights_.try_emplace(element.hash_value(), 0);
    if (isFirst) return true;
    if (entry->second == 0) {
        Weigher weigher;
        element.traverse(weigher);
        entry->second = weigher.weight();
    }
    repeated_ += entry->second;
    return repeated_ <= maximumRepeated;
}

} // namespace shotweaver
