#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace shotweaver {

/// Bytes that are read once, from the front.
class ByteSource {
  public:
    virtual ~ByteSource() = default;

    /// Puts up to `count` bytes into `into` and gives their number; 0 only at the end. Throws
    /// `PlatformError`.
    virtual std::size_t read(char* into, std::size_t count) = 0;

    /// How many bytes are probably left; 0 when nothing is known.
    virtual std::size_t expectedSize() const { return 0; }

  protected:
    ByteSource() = default;
    ByteSource(const ByteSource&) = default;
    ByteSource& operator=(const ByteSource&) = default;
};

/// Bytes in memory, which must outlive the source.
class MemorySource final : public ByteSource {
  public:
    explicit MemorySource(std::string_view bytes) : bytes_(bytes) {}

    std::size_t read(char* into, std::size_t count) override {
        const std::size_t copied = bytes_.copy(into, count);
        bytes_.remove_prefix(copied);
        return copied;
    }
    std::size_t expectedSize() const override { return bytes_.size(); }

  private:
    std::string_view bytes_;
};

/// Everything that is left.
std::string readAll(ByteSource& source);

} // namespace shotweaver
