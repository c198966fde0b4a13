#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>

namespace shotweaver {

/// Where chance comes from: 64 random bits a draw.
class RandomSource {
  public:
    virtual ~RandomSource() = default;

    /// The next 64 bits, every value equally likely.
    virtual std::uint64_t bits() = 0;

  protected:
    RandomSource() = default;
    RandomSource(const RandomSource&) = default;
    RandomSource& operator=(const RandomSource&) = default;
};

/// The operating system's secure random source, read in blocks. Throws `PlatformError` when the
/// system gives none. Not for use from two threads at once.
class SecureRandom final : public RandomSource {
  public:
    std::uint64_t bits() override;

  private:
    void refill();

    std::array<std::uint64_t, 512> block_{};
    std::size_t next_ = block_.size();
};

/// The same draws again for the same seed, on every platform: the outputs of std::mt19937_64.
class SeededRandom final : public RandomSource {
  public:
    explicit SeededRandom(std::uint64_t seed) : engine_(seed) {}
    std::uint64_t bits() override { return engine_(); }

  private:
    std::mt19937_64 engine_;
};

} // namespace shotweaver
