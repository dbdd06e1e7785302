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
constexpr std::uint32_t kCode = 0x60000020;  ///< readable, executable

// Code of an entry point: "return success", as a program and as a library are asked.
constexpr std::string_view kProgramEntry("\x31\xC0\xC3", 3);
constexpr std::string_view kLibraryEntry("\xB8\x01\x00\x00\x00\xC2\x0C\x00", 8);

class ImageWriter {
 public:
  explicit ImageWriter(ImageKind kind)
      : kind_(kind), code_(kind == ImageKind::Program ? kProgramEntry : kLibraryEntry) {}

  std::string Write() {
    WriteFileHeader();
    WriteOptionalHeader();
    WriteCodeHeader();
    out_.FillTo(kFileStep).Text(code_).Align(kFileStep);
    return out_.Bytes();
  }

 private:
  void WriteFileHeader() {
    constexpr std::uint32_t kPlain = 0x10E;  // executable, 32-bit, no line numbers, no symbols
    constexpr std::uint32_t kFixed = 0x1;    // stays where it likes to be loaded
    constexpr std::uint32_t kLibrary = 0x2000;
    out_.Text("MZ").FillTo(kDosHeader - 4).U32(kDosHeader);
    out_.Text(std::string_view("PE\0\0", 4));
    out_.U16(0x14C).U16(1);     // 80386, one section
    out_.U32(0).U32(0).U32(0);  // no time stamp, so that equal sources give equal files
    out_.U16(0xE0);             // size of the optional header
    out_.U16(kPlain | (kind_ == ImageKind::Program ? kFixed : kLibrary));
  }

  void WriteOptionalHeader() {
    constexpr std::uint32_t kDirectories = 16;
    const auto imageSize = kCodeAddress + kMemoryStep;
    out_.U16(0x10B).U16(6).U32(kFileStep).U32(0).U32(0);            // linker 6.0
    out_.U32(kCodeAddress).U32(kCodeAddress).U32(imageSize);        // entry, code, data
    out_.U32(kind_ == ImageKind::Program ? 0x400000 : 0x11000000);  // where it likes to be loaded
    out_.U32(kMemoryStep).U32(kFileStep);
    out_.U32(4).U32(1).U32(4).U32(0);  // system, image, subsystem
    out_.U32(imageSize).U32(kFileStep);
    out_.U32(0).U16(2).U16(0);                                 // no checksum, windowed
    out_.U32(0x100000).U32(0x1000).U32(0x100000).U32(0x1000);  // stack and heap
    out_.U32(0).U32(kDirectories);
    for (std::uint32_t i = 0; i < kDirectories; ++i) out_.U32(0).U32(0);
  }

  void WriteCodeHeader() {
    constexpr std::string_view kName(".text\0\0\0", 8);
    const auto size = static_cast<std::uint32_t>(code_.size());
    out_.Text(kName).U32(size).U32(kCodeAddress).U32(kFileStep).U32(kFileStep);
    out_.U32(0).U32(0).U32(0).U32(kCode);
  }

  ImageKind kind_;
  std::string_view code_;
  ByteWriter out_;
};

}  // namespace

std::string EmptyImage(ImageKind kind) {
  return ImageWriter(kind).Write();
}

}  // namespace gorbex::standin
