#pragma once

#include <string>
#include <string_view>

namespace shotweaver {

/// Takes bytes one piece after the other.
class ByteSink {
  public:
    virtual ~ByteSink() = default;

    /// Throws `PlatformError` when they cannot be taken.
    virtual void write(std::string_view bytes) = 0;

  protected:
    ByteSink() = default;
    ByteSink(const ByteSink&) = default;
    ByteSink& operator=(const ByteSink&) = default;
};

/// Keeps what it takes in memory.
class StringSink final : public ByteSink {
  public:
    void write(std::string_view bytes) override { text_ += bytes; }

    std::string take() { return std::move(text_); }

  private:
    std::string text_;
};

} // namespace shotweaver
