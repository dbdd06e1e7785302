#include "compiler/image_resources.h"

#include <cstdint>
#include <utility>

#include "compiler/byte_writer.h"
#include "platform/component/byte_reader.h"
#include "platform/runtime_error.h"

namespace gorbex::standin {
namespace {

constexpr std::string_view kName(".rsrc\0\0\0", 8);
constexpr std::uint32_t kInitializedData = 0x40000040;  ///< readable
constexpr std::uint32_t kSectionSize = 40;
constexpr std::uint32_t kFileHeader = 24;  ///< where the optional header begins

std::uint32_t RoundedUp(std::uint64_t size, std::uint32_t step) {
  if (step == 0) throw DamagedBytes();
  return static_cast<std::uint32_t>((size + step - 1) / step * step);
}

// The contents of a resource section that is loaded at the address: the directories of the
// resource's type, number and language, the record that tells where its bytes are, its type's name
// (its length and its letters, two bytes each) and the bytes.
std::string ResourceSection(std::string_view library, std::uint32_t address) {
  constexpr std::string_view kType = "TYPELIB";
  constexpr std::uint32_t kHighBit = 0x80000000;  // a name, or a directory below
  constexpr std::uint32_t kDirectorySize = 24;    // with its only entry
  constexpr std::uint32_t kRecord = 3 * kDirectorySize;
  constexpr std::uint32_t kTypeName = kRecord + 16;
  constexpr std::uint32_t kBytes = (kTypeName + 2 + 2 * kType.size() + 7) / 8 * 8;
  ByteWriter out;
  out.FillTo(12).U16(1).U16(0).U32(kHighBit | kTypeName).U32(kHighBit | kDirectorySize);
  out.FillTo(kDirectorySize + 12).U16(0).U16(1).U32(1).U32(kHighBit | 2 * kDirectorySize);
  out.FillTo(2 * kDirectorySize + 12).U16(0).U16(1).U32(0).U32(kRecord);
  out.U32(address + kBytes).U32(static_cast<std::uint32_t>(library.size())).U32(0).U32(0);
  out.U16(kType.size());
  for (const char letter : kType) out.U16(static_cast<unsigned char>(letter));
  return out.FillTo(kBytes).Text(library).Bytes();
}

/// An image whose headers are read and changed in place.
class Image {
 public:
  explicit Image(std::string bytes) : bytes_(std::move(bytes)) {
    header_ = Read(0x3C);
    optional_ = header_ + kFileHeader;
    sections_ = optional_ + (Read(header_ + 20) & 0xFFFF);
    count_ = Read(header_ + 6) & 0xFFFF;
    constexpr std::uint32_t kWide = 0x20B;
    const auto directories = (Read(optional_) & 0xFFFF) == kWide ? 112U : 96U;
    resources_ = optional_ + directories + 2 * 8;
  }

  std::string Add(std::string_view library) {
    const auto place = sections_ + count_ * kSectionSize;
    const auto headers = Read(optional_ + 60);
    if (Read(resources_) != 0 || place + kSectionSize > headers) throw DamagedBytes();
    const auto fileStep = Read(optional_ + 36);
    const auto address = Read(optional_ + 56);  // after what is loaded now
    const auto content = ResourceSection(library, address);
    const auto size = static_cast<std::uint32_t>(content.size());
    const auto offset = RoundedUp(bytes_.size(), fileStep);

    bytes_.resize(offset, '\0');
    bytes_.append(content);
    bytes_.resize(offset + RoundedUp(size, fileStep), '\0');
    ByteWriter section;
    section.Text(kName).U32(size).U32(address).U32(RoundedUp(size, fileStep)).U32(offset);
    section.U32(0).U32(0).U32(0).U32(kInitializedData);
    Put(place, section.Bytes());
    Put(header_ + 6, ByteWriter().U16(count_ + 1).Bytes());
    Put(optional_ + 8, Number(Read(optional_ + 8) + RoundedUp(size, fileStep)));
    Put(optional_ + 56, Number(address + RoundedUp(size, Read(optional_ + 32))));
    Put(optional_ + 64, Number(0));  // no checksum
    Put(resources_, Number(address) + Number(size));
    return std::move(bytes_);
  }

 private:
  static std::string Number(std::uint32_t number) { return ByteWriter().U32(number).Bytes(); }

  [[nodiscard]] std::uint32_t Read(std::uint32_t offset) const {
    return ByteReader(bytes_).U32(offset);
  }
  void Put(std::uint32_t offset, std::string_view bytes) {
    bytes_.replace(offset, bytes.size(), bytes);
  }

  std::string bytes_;
  std::uint32_t header_ = 0;
  std::uint32_t optional_ = 0;
  std::uint32_t sections_ = 0;
  std::uint32_t count_ = 0;
  std::uint32_t resources_ = 0;
};

}  // namespace

std::string WithTypeLibrary(std::string image, std::string_view library) {
  try {
    return Image(std::move(image)).Add(library);
  } catch (const DamagedBytes&) {
    throw RuntimeError::WithDescription(ErrorNumber::InvalidCall,
                                        "The image has no room for resources");
  }
}

}  // namespace gorbex::standin
