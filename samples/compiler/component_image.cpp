#include "compiler/component_image.h"

#include <cstdint>

#include "compiler/identity.h"

namespace gorbex::standin {
namespace {

constexpr std::string_view kMark = "\r\n[Stand-in component]\r\n";
constexpr std::uint32_t kFileStep = 0x200;
constexpr std::uint32_t kMemoryStep = 0x1000;
constexpr std::uint32_t kDosHeader = 0x40;

// Code of an entry point: "return success", as a program and as a library are asked.
constexpr std::string_view kProgramEntry("\x31\xC0\xC3", 3);
constexpr std::string_view kLibraryEntry("\xB8\x01\x00\x00\x00\xC2\x0C\x00", 8);

std::uint32_t RoundedUp(std::size_t size, std::uint32_t step) {
  return (static_cast<std::uint32_t>(size) + step - 1) / step * step;
}

/// Bytes of a file, numbers lowest byte first.
class ByteWriter {
 public:
  ByteWriter& Short(std::uint32_t value) { return Number(value, 2); }
  ByteWriter& Long(std::uint32_t value) { return Number(value, 4); }
  ByteWriter& Text(std::string_view text) {
    bytes_.append(text);
    return *this;
  }
  ByteWriter& FillTo(std::size_t size) {
    bytes_.resize(size);
    return *this;
  }
  [[nodiscard]] const std::string& Bytes() const { return bytes_; }

 private:
  ByteWriter& Number(std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) bytes_ += static_cast<char>(value >> (8 * i) & 0xFF);
    return *this;
  }

  std::string bytes_;
};

std::string SectionContent(ImageKind kind, const ComponentFacts& facts) {
  std::string text(kind == ImageKind::Program ? kProgramEntry : kLibraryEntry);
  text.append(kMark);
  text.append("Project=").append(facts.project).append("\r\n");
  text.append("Version=").append(facts.version).append("\r\n");
  text.append("Library=").append(facts.library).append("\r\n");
  text.append("LibraryVersion=").append(facts.libraryVersion).append("\r\n");
  return text;
}

void WriteFileHeader(ByteWriter& out, ImageKind kind) {
  out.Text("MZ").FillTo(kDosHeader - 4).Long(kDosHeader);
  out.Text(std::string_view("PE\0\0", 4));
  out.Short(0x14C).Short(1);                               // 80386, one section
  out.Long(0).Long(0).Long(0);                             // no time stamp, no symbols
  out.Short(0xE0);                                         // size of the optional header
  out.Short(kind == ImageKind::Program ? 0x102 : 0x2102);  // executable, 32-bit, library
}

void WriteOptionalHeader(ByteWriter& out, ImageKind kind, std::uint32_t contentSize) {
  const std::uint32_t fileSize = RoundedUp(contentSize, kFileStep);
  out.Short(0x10B).Short(6).Long(fileSize).Long(0).Long(0);      // linker 6.0, code size
  out.Long(kMemoryStep).Long(kMemoryStep).Long(kMemoryStep);     // entry, code, data
  out.Long(kind == ImageKind::Program ? 0x400000 : 0x11000000);  // where it likes to be loaded
  out.Long(kMemoryStep).Long(kFileStep);                         // alignment
  out.Long(4).Long(1).Long(4).Long(0);                           // system, image, subsystem
  out.Long(kMemoryStep + RoundedUp(contentSize, kMemoryStep)).Long(kFileStep);  // image, headers
  out.Long(0).Short(2).Short(0);                                // no checksum, windowed
  out.Long(0x100000).Long(0x1000).Long(0x100000).Long(0x1000);  // stack and heap
  out.Long(0).Long(16);                                         // sixteen empty directories
  for (int i = 0; i < 16; ++i) out.Long(0).Long(0);
}

void WriteSectionHeader(ByteWriter& out, std::uint32_t contentSize) {
  out.Text(std::string_view(".text\0\0\0", 8)).Long(contentSize).Long(kMemoryStep);
  out.Long(RoundedUp(contentSize, kFileStep)).Long(kFileStep);
  out.Long(0).Long(0).Long(0).Long(0x60000020);  // code, executable, readable
}

std::string FactOf(std::string_view facts, std::string_view key) {
  const auto start = facts.find(key);
  if (start == std::string_view::npos) return {};
  facts.remove_prefix(start + key.size());
  return std::string(facts.substr(0, facts.find("\r\n")));
}

}  // namespace

std::string ComponentImage(ImageKind kind, const ComponentFacts& facts) {
  const std::string content = SectionContent(kind, facts);
  const auto size = static_cast<std::uint32_t>(content.size());
  ByteWriter out;
  WriteFileHeader(out, kind);
  WriteOptionalHeader(out, kind, size);
  WriteSectionHeader(out, size);
  out.FillTo(kFileStep).Text(content).FillTo(kFileStep + RoundedUp(size, kFileStep));
  return out.Bytes();
}

std::optional<ComponentFacts> ReadComponent(std::string_view image) {
  const auto start = image.find(kMark);
  if (!image.starts_with("MZ") || start == std::string_view::npos) return std::nullopt;
  const auto facts = image.substr(start);
  ComponentFacts found{FactOf(facts, "\r\nProject="), FactOf(facts, "\r\nVersion="),
                       FactOf(facts, "\r\nLibrary="), FactOf(facts, "\r\nLibraryVersion=")};
  if (!IsBracedUuid(found.library)) return std::nullopt;
  return found;
}

}  // namespace gorbex::standin
