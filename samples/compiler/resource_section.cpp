#include "compiler/resource_section.h"

#include <algorithm>

#include "compiler/byte_writer.h"

namespace gorbex::standin {
namespace {

constexpr std::uint32_t kHighBit = 0x80000000;  ///< a name, or a directory below
constexpr std::uint32_t kDirectorySize = 16;
constexpr std::uint32_t kEntrySize = 8;
constexpr std::uint32_t kLevelSize = kDirectorySize + kEntrySize;  ///< a directory of one entry
constexpr std::uint32_t kRecordSize = 16;
constexpr std::uint32_t kDataStep = 8;

std::uint32_t Counted(std::size_t count) {
  return static_cast<std::uint32_t>(count);
}

void WriteDirectory(ByteWriter& out, std::uint32_t named, std::uint32_t numbered) {
  out.U32(0).U32(0).U32(0).U16(named).U16(numbered);
}

/// The directories (types, then number and language of each), the records that tell where the bytes
/// are, the names and the bytes, in this order.
class SectionWriter {
 public:
  SectionWriter(const std::vector<Resource>& resources, std::uint32_t address)
      : resources_(resources),
        address_(address),
        levels_(kDirectorySize + kEntrySize * Counted(resources.size())),
        records_(levels_ + 2 * kLevelSize * Counted(resources.size())),
        names_(records_ + kRecordSize * Counted(resources.size())) {}

  std::string Write() {
    WriteTypes();
    for (std::uint32_t i = 0; i < resources_.size(); ++i) WriteLevels(i);
    WriteRecords();
    WriteNames();
    for (const auto& resource : resources_) out_.Align(kDataStep).Text(resource.bytes);
    return out_.Bytes();
  }

 private:
  // In memory a name is its length and its letters, two bytes each.
  static std::uint32_t NameSize(const Resource& resource) {
    return resource.typeName.empty() ? 0 : 2 + 2 * Counted(resource.typeName.size());
  }

  void WriteTypes() {
    const auto named = Counted(
        static_cast<std::size_t>(std::count_if(resources_.begin(), resources_.end(), NameSize)));
    WriteDirectory(out_, named, Counted(resources_.size()) - named);
    std::uint32_t name = names_;
    std::uint32_t level = levels_;
    for (const auto& resource : resources_) {
      out_.U32(resource.typeName.empty() ? resource.typeNumber : kHighBit | name);
      out_.U32(kHighBit | level);
      name += NameSize(resource);
      level += 2 * kLevelSize;
    }
  }

  void WriteLevels(std::uint32_t index) {
    const auto language = out_.Size() + kLevelSize;
    WriteDirectory(out_, 0, 1);
    out_.U32(resources_[index].number).U32(kHighBit | language);
    WriteDirectory(out_, 0, 1);
    out_.U32(resources_[index].language).U32(records_ + index * kRecordSize);
  }

  void WriteRecords() {
    std::uint32_t data = names_;
    for (const auto& resource : resources_) data += NameSize(resource);
    for (const auto& resource : resources_) {
      data = (data + kDataStep - 1) / kDataStep * kDataStep;
      const auto size = Counted(resource.bytes.size());
      out_.U32(address_ + data).U32(size).U32(0).U32(0);
      data += size;
    }
  }

  void WriteNames() {
    for (const auto& resource : resources_) {
      if (resource.typeName.empty()) continue;
      out_.U16(Counted(resource.typeName.size()));
      for (const char letter : resource.typeName) out_.U16(static_cast<unsigned char>(letter));
    }
  }

  const std::vector<Resource>& resources_;
  std::uint32_t address_;
  std::uint32_t levels_;
  std::uint32_t records_;
  std::uint32_t names_;
  ByteWriter out_;
};

}  // namespace

std::string ResourceSection(const std::vector<Resource>& resources, std::uint32_t address) {
  return SectionWriter(resources, address).Write();
}

}  // namespace gorbex::standin
