#include "platform/component/type_library.h"

#include "platform/component/byte_reader.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFFU;  ///< in place of an offset: there is no such thing
constexpr std::uint64_t kHeaderSize = 84;
constexpr std::uint64_t kTypeSize = 100;
constexpr std::uint64_t kReferenceSize = 16;

// Positions in the directory of segments that follows the header.
enum class Segment : std::uint64_t { Types = 0, References = 3, Guids = 5, Names = 7, Strings = 8 };

std::string GuidText(std::string_view bytes) {
  if (bytes.find_first_not_of('\0') == std::string_view::npos) return {};
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  // The order of the bytes: the first three groups are little-endian numbers.
  constexpr std::string_view kLayout = "{3210-54-76-89-ABCDEF}";
  std::string text;
  for (const char place : kLayout) {
    const auto index = kDigits.find(place);
    if (index == std::string_view::npos) {
      text += place;
      continue;
    }
    const auto byte = static_cast<unsigned char>(bytes[index]);
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 0xFU];
  }
  return text;
}

class LibraryReader {
 public:
  explicit LibraryReader(const ByteReader& file)
      : file_(file),
        typeCount_(file.U32(0x20)),
        types_(Find(Segment::Types)),
        references_(Find(Segment::References)),
        guids_(Find(Segment::Guids)),
        names_(Find(Segment::Names)),
        strings_(Find(Segment::Strings)),
        referencesLeft_(references_.Size() / kReferenceSize) {}

  [[nodiscard]] TypeLibrary Read() {
    TypeLibrary library;
    library.guid = Guid(file_.U32(0x08));
    library.lcid = file_.U32(0x10);
    library.major = file_.U16(0x18);
    library.minor = file_.U16(0x1A);
    library.flags = file_.U16(0x1C);
    library.helpString = HelpString(file_.U32(0x24));
    library.name = Name(file_.U32(0x38));
    const auto all = types_.Part(0, typeCount_ * kTypeSize);
    library.types.reserve(static_cast<std::size_t>(all.Size() / kTypeSize));
    for (std::uint64_t i = 0; i < typeCount_; ++i) {
      library.types.push_back(Type(types_.Part(i * kTypeSize, kTypeSize)));
    }
    return library;
  }

 private:
  [[nodiscard]] ByteReader Find(Segment segment) const {
    constexpr std::uint32_t kHelpStringLibrary = 0x100;
    const auto extra = (file_.U32(0x14) & kHelpStringLibrary) == 0 ? 0U : 4U;
    const auto directory = kHeaderSize + extra + typeCount_ * 4;
    const auto entry = directory + static_cast<std::uint64_t>(segment) * 16;
    const auto offset = file_.U32(entry);
    return offset == kNone ? ByteReader() : file_.Part(offset, file_.U32(entry + 4));
  }

  [[nodiscard]] std::string Guid(std::uint32_t offset) const {
    return offset == kNone ? std::string() : GuidText(guids_.Bytes(offset, 16));
  }

  [[nodiscard]] std::string Name(std::uint32_t offset) const {
    if (offset == kNone) return {};
    const auto length = names_.U32(offset + 8ULL) & 0xFFU;
    return std::string(names_.Bytes(offset + 12ULL, length));
  }

  [[nodiscard]] std::string HelpString(std::uint32_t offset) const {
    if (offset == kNone) return {};
    return std::string(strings_.Bytes(offset + 2ULL, strings_.U16(offset)));
  }

  [[nodiscard]] TypeInfo Type(const ByteReader& record) {
    const auto kind = record.U32(0) & 0xFU;
    if (kind > static_cast<std::uint32_t>(TypeKind::Union)) throw DamagedBytes();
    TypeInfo type;
    type.kind = static_cast<TypeKind>(kind);
    type.guid = Guid(record.U32(0x2C));
    type.flags = record.U32(0x30);
    type.name = Name(record.U32(0x34));
    if (type.kind == TypeKind::Coclass) {
      type.defaultInterface = DefaultInterface(record.U32(0x54), record.U16(0x4C));
    }
    return type;
  }

  // Follows the list of a coclass's interfaces: the one marked as default, else the first that is
  // no source of events. A reference belongs to one list, so all lists together are no longer than
  // the segment: what goes on beyond that runs in a circle.
  [[nodiscard]] std::optional<std::size_t> DefaultInterface(std::uint32_t reference,
                                                            std::uint32_t count) {
    constexpr std::uint32_t kDefault = 1;
    constexpr std::uint32_t kSource = 2;
    std::optional<std::uint32_t> first;
    for (; count > 0 && reference != kNone;
         --count, reference = references_.U32(reference + 12ULL)) {
      if (referencesLeft_-- == 0) throw DamagedBytes();
      const auto type = references_.U32(reference);
      const auto flags = references_.U32(reference + 4ULL);
      if ((flags & kSource) != 0) continue;
      if ((flags & kDefault) != 0) return OwnType(type);
      if (!first) first = type;
    }
    return first ? OwnType(*first) : std::nullopt;
  }

  // A reference to a type is its offset in the segment; the low bits mark types of other libraries.
  [[nodiscard]] std::optional<std::size_t> OwnType(std::uint32_t reference) const {
    if ((reference & 3U) != 0) return std::nullopt;
    const auto index = reference / kTypeSize;
    if (reference % kTypeSize != 0 || index >= typeCount_) throw DamagedBytes();
    return static_cast<std::size_t>(index);
  }

  ByteReader file_;
  std::uint64_t typeCount_;
  ByteReader types_;
  ByteReader references_;
  ByteReader guids_;
  ByteReader names_;
  ByteReader strings_;
  std::uint64_t referencesLeft_;
};

}  // namespace

std::string RegistryVersionOf(const TypeLibrary& library) {
  return Hexadecimal(library.major) + "." + Hexadecimal(library.minor);
}

std::optional<TypeLibrary> ReadTypeLibrary(std::string_view bytes) {
  try {
    const ByteReader file(bytes);
    if (file.Bytes(0, 4) != "MSFT") return std::nullopt;
    return LibraryReader(file).Read();
  } catch (const DamagedBytes&) {
    return std::nullopt;
  }
}

}  // namespace gorbex
