#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace gorbex::standin {

/// Bytes of a binary file, numbers lowest byte first.
class ByteWriter {
 public:
  ByteWriter& U16(std::uint32_t value) { return Number(value, 2); }
  ByteWriter& U32(std::uint32_t value) { return Number(value, 4); }
  ByteWriter& Text(std::string_view text) {
    bytes_.append(text);
    return *this;
  }
  ByteWriter& FillTo(std::size_t size, char filler = '\0') {
    bytes_.resize(size, filler);
    return *this;
  }
  ByteWriter& Align(std::size_t step, char filler = '\0') {
    return FillTo((bytes_.size() + step - 1) / step * step, filler);
  }

  [[nodiscard]] const std::string& Bytes() const { return bytes_; }
  [[nodiscard]] std::uint32_t Size() const { return static_cast<std::uint32_t>(bytes_.size()); }

 private:
  ByteWriter& Number(std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) bytes_ += static_cast<char>(value >> (8 * i) & 0xFF);
    return *this;
  }

  std::string bytes_;
};

}  // namespace gorbex::standin
