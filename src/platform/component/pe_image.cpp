#include "platform/component/pe_image.h"

#include "platform/component/byte_reader.h"

namespace gorbex {
namespace {

constexpr std::uint32_t kHighBit = 0x80000000U;  ///< a name, or a directory below
constexpr std::uint32_t kOffset = kHighBit - 1;

// The headers of an image: its section table, and the place of its data directories.
class PeHeaders {
 public:
  explicit PeHeaders(const ByteReader& file) : file_(file) {
    const std::uint64_t header = file.U32(0x3C);
    if (file.Bytes(0, 2) != "MZ" || file.Bytes(header, 4) != std::string_view("PE\0\0", 4)) {
      throw DamagedBytes();
    }
    const auto optionalHeader = header + 24;
    const auto optionalSize = file.U16(header + 20);
    optional_ = file.Part(optionalHeader, optionalSize);
    sections_ = file.Part(optionalHeader + optionalSize,
                          std::uint64_t{file.U16(header + 6)} * kSectionSize);
  }

  // The address of the resource directory; nothing when the image has none.
  [[nodiscard]] std::optional<std::uint32_t> Resources() const {
    constexpr std::uint64_t kResourceDirectory = 2;
    const auto counts = DirectoryCount();
    if (optional_.U32(counts) <= kResourceDirectory) return std::nullopt;
    const auto address = optional_.U32(counts + 4 + kResourceDirectory * 8);
    return address == 0 ? std::nullopt : std::optional(address);
  }

  // The bytes of the file that are loaded from that address to the end of its section.
  [[nodiscard]] ByteReader LoadedAt(std::uint32_t address) const {
    for (std::uint64_t section = 0; section < sections_.Size(); section += kSectionSize) {
      const auto start = sections_.U32(section + 12);
      const auto size = sections_.U32(section + 16);
      if (address < start || address - start >= size) continue;
      const auto skipped = address - start;
      return file_.Part(std::uint64_t{sections_.U32(section + 20)} + skipped, size - skipped);
    }
    throw DamagedBytes();
  }

 private:
  static constexpr std::uint64_t kSectionSize = 40;

  [[nodiscard]] std::uint64_t DirectoryCount() const {
    switch (optional_.U16(0)) {
      case 0x10B:
        return 92;
      case 0x20B:
        return 108;
      default:
        throw DamagedBytes();
    }
  }

  ByteReader file_;
  ByteReader optional_;
  ByteReader sections_;
};

// Looks at an entry's UTF-16 name.
bool IsLibraryType(const ByteReader& resources, std::uint32_t entryName) {
  constexpr std::string_view kType = "TYPELIB";
  if ((entryName & kHighBit) == 0) return false;
  const std::uint64_t name = entryName & kOffset;
  if (resources.U16(name) != kType.size()) return false;
  for (std::size_t i = 0; i < kType.size(); ++i) {
    if (resources.U16(name + 2 + i * 2) != static_cast<unsigned char>(kType[i])) return false;
  }
  return true;
}

// The target of the first fitting entry of a directory.
template <typename Fits>
std::optional<std::uint32_t> FirstEntry(const ByteReader& resources, std::uint32_t directory,
                                        const Fits& fits) {
  const auto count = std::uint32_t{resources.U16(directory + 12U)} + resources.U16(directory + 14U);
  std::uint64_t entry = std::uint64_t{directory} + 16;
  for (std::uint32_t i = 0; i < count; ++i, entry += 8) {
    if (fits(resources.U32(entry))) return resources.U32(entry + 4);
  }
  return std::nullopt;
}

std::uint32_t DirectoryAt(std::uint32_t target) {
  if ((target & kHighBit) == 0) throw DamagedBytes();
  return target & kOffset;
}

// The offset of the record that tells address and size of the resource.
std::optional<std::uint32_t> FindRecord(const ByteReader& resources,
                                        std::optional<std::uint16_t> number) {
  const auto ofType =
      FirstEntry(resources, 0, [&](auto name) { return IsLibraryType(resources, name); });
  if (!ofType) return std::nullopt;
  const auto ofNumber = FirstEntry(resources, DirectoryAt(*ofType),
                                   [&](auto name) { return !number || name == *number; });
  if (!ofNumber) return std::nullopt;
  return FirstEntry(resources, DirectoryAt(*ofNumber), [](auto) { return true; });
}

}  // namespace

std::optional<std::string_view> FindLibraryResource(std::string_view file,
                                                    std::optional<std::uint16_t> number) {
  try {
    const PeHeaders image{ByteReader(file)};
    const auto directory = image.Resources();
    if (!directory) return std::nullopt;
    const auto resources = image.LoadedAt(*directory);
    const auto record = FindRecord(resources, number);
    if (!record) return std::nullopt;
    return image.LoadedAt(resources.U32(*record)).Bytes(0, resources.U32(*record + 4ULL));
  } catch (const DamagedBytes&) {
    return std::nullopt;
  }
}

}  // namespace gorbex
