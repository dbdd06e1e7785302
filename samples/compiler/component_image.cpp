#include "compiler/component_image.h"

#include <cstdint>
#include <string_view>

#include "compiler/byte_writer.h"

namespace gorbex::standin {
namespace {

constexpr std::uint32_t kFileStep = 0x200;
constexpr std::uint32_t kMemoryStep = 0x1000;
constexpr std::uint32_t kDosHeader = 0x40;
constexpr std::uint32_t kCodeAddress = kMemoryStep;
constexpr std::uint32_t kResourceAddress = 2 * kMemoryStep;
constexpr std::uint32_t kInitializedData = 0x40000040;  ///< readable
constexpr std::uint32_t kCode = 0x60000020;             ///< readable, executable

// Code of an entry point: "return success", as a program and as a library are asked.
constexpr std::string_view kProgramEntry("\x31\xC0\xC3", 3);
constexpr std::string_view kLibraryEntry("\xB8\x01\x00\x00\x00\xC2\x0C\x00", 8);

std::uint32_t RoundedUp(std::size_t size, std::uint32_t step) {
  return (static_cast<std::uint32_t>(size) + step - 1) / step * step;
}

struct Section {
  std::string_view name;  ///< eight bytes
  std::uint32_t address = 0;
  std::uint32_t kind = 0;
  std::string_view content;
};

class ImageWriter {
 public:
  ImageWriter(ImageKind kind, const std::string& resources)
      : kind_(kind),
        code_{{".text\0\0\0", 8},
              kCodeAddress,
              kCode,
              kind == ImageKind::Program ? kProgramEntry : kLibraryEntry},
        resources_{{".rsrc\0\0\0", 8}, kResourceAddress, kInitializedData, resources} {}

  std::string Write() {
    WriteFileHeader();
    WriteOptionalHeader();
    WriteDirectories();
    const auto codePlace = kFileStep;
    const auto resourcePlace = codePlace + RoundedUp(code_.content.size(), kFileStep);
    WriteSectionHeader(code_, codePlace);
    WriteSectionHeader(resources_, resourcePlace);
    out_.FillTo(codePlace).Text(code_.content);
    out_.FillTo(resourcePlace).Text(resources_.content).Align(kFileStep);
    return out_.Bytes();
  }

 private:
  void WriteFileHeader() {
    constexpr std::uint32_t kPlain = 0x10E;  // executable, 32-bit, no line numbers, no symbols
    constexpr std::uint32_t kFixed = 0x1;    // stays where it likes to be loaded
    constexpr std::uint32_t kLibrary = 0x2000;
    out_.Text("MZ").FillTo(kDosHeader - 4).U32(kDosHeader);
    out_.Text(std::string_view("PE\0\0", 4));
    out_.U16(0x14C).U16(2);     // 80386, two sections
    out_.U32(0).U32(0).U32(0);  // no time stamp, so that equal sources give equal files
    out_.U16(0xE0);             // size of the optional header
    out_.U16(kPlain | (kind_ == ImageKind::Program ? kFixed : kLibrary));
  }

  void WriteOptionalHeader() {
    const auto codeSize = RoundedUp(code_.content.size(), kFileStep);
    const auto dataSize = RoundedUp(resources_.content.size(), kFileStep);
    const auto imageSize = kResourceAddress + RoundedUp(resources_.content.size(), kMemoryStep);
    out_.U16(0x10B).U16(6).U32(codeSize).U32(dataSize).U32(0);       // linker 6.0
    out_.U32(kCodeAddress).U32(kCodeAddress).U32(kResourceAddress);  // entry, code, data
    out_.U32(kind_ == ImageKind::Program ? 0x400000 : 0x11000000);   // where it likes to be loaded
    out_.U32(kMemoryStep).U32(kFileStep);
    out_.U32(4).U32(1).U32(4).U32(0);  // system, image, subsystem
    out_.U32(imageSize).U32(kFileStep);
    out_.U32(0).U16(2).U16(0);                                 // no checksum, windowed
    out_.U32(0x100000).U32(0x1000).U32(0x100000).U32(0x1000);  // stack and heap
    out_.U32(0);
  }

  void WriteDirectories() {
    constexpr int kCount = 16;
    constexpr int kResources = 2;
    out_.U32(kCount);
    for (int i = 0; i < kCount; ++i) {
      const bool used = i == kResources;
      out_.U32(used ? resources_.address : 0);
      out_.U32(used ? static_cast<std::uint32_t>(resources_.content.size()) : 0);
    }
  }

  void WriteSectionHeader(const Section& section, std::uint32_t place) {
    const auto size = static_cast<std::uint32_t>(section.content.size());
    out_.Text(section.name).U32(size).U32(section.address);
    out_.U32(RoundedUp(size, kFileStep)).U32(place).U32(0).U32(0).U32(0).U32(section.kind);
  }

  ImageKind kind_;
  Section code_;
  Section resources_;
  ByteWriter out_;
};

}  // namespace

std::string ComponentImage(ImageKind kind, const std::vector<Resource>& resources) {
  return ImageWriter(kind, ResourceSection(resources, kResourceAddress)).Write();
}

}  // namespace gorbex::standin
