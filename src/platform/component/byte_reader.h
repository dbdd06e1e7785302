#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace gorbex {

/// Thrown by a reader of a binary format when the bytes do not follow the format.
class DamagedBytes : public std::runtime_error {
 public:
  DamagedBytes() : std::runtime_error("damaged bytes") {}
};

/// Little-endian numbers and parts of bytes that are not trusted: every look past their end throws
/// DamagedBytes.
class ByteReader {
 public:
  ByteReader() = default;
  explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

  [[nodiscard]] std::uint64_t Size() const { return bytes_.size(); }

  [[nodiscard]] std::string_view Bytes(std::uint64_t offset, std::uint64_t length) const {
    if (offset > bytes_.size() || length > bytes_.size() - offset) throw DamagedBytes();
    return bytes_.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(length));
  }
  [[nodiscard]] ByteReader Part(std::uint64_t offset, std::uint64_t length) const {
    return ByteReader(Bytes(offset, length));
  }
  [[nodiscard]] std::uint16_t U16(std::uint64_t offset) const {
    return static_cast<std::uint16_t>(Number(offset, 2));
  }
  [[nodiscard]] std::uint32_t U32(std::uint64_t offset) const { return Number(offset, 4); }

 private:
  [[nodiscard]] std::uint32_t Number(std::uint64_t offset, unsigned width) const {
    std::uint32_t number = 0;
    unsigned shift = 0;
    for (const char byte : Bytes(offset, width)) {
      number |= std::uint32_t{static_cast<unsigned char>(byte)} << shift;
      shift += 8;
    }
    return number;
  }

  std::string_view bytes_;
};

}  // namespace gorbex
