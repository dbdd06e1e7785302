#include "compiler/type_library_image.h"

#include <algorithm>
#include <array>
#include <map>

#include "compiler/library_tables.h"
#include "compiler/system_library.h"
#include "platform/runtime_error.h"

namespace gorbex::standin {
namespace {

constexpr std::uint32_t kHeaderSize = 84;
constexpr std::uint32_t kTypeSize = 100;
constexpr std::uint32_t kSegmentEntrySize = 16;
constexpr std::size_t kMostTypes = 0xFFFF;

// Owners of table entries that belong to no type of the library. The owner of other entries is the
// offset of a type's record.
constexpr std::uint32_t kOfLibrary = 0xFFFFFFFE;
constexpr std::uint32_t kOfImportedType = 1;
constexpr std::uint32_t kOfImportedFile = 2;

/// The places of a type's parts in the tables.
struct TypePlaces {
  std::uint32_t guid = kNone;
  std::uint32_t name = kNone;
  std::uint32_t interfaces = kNone;
  std::uint32_t help = kNone;
  std::uint32_t size = 4;  ///< in memory
  MemberBlock members{};
};

/// The data in the record of a type besides its places.
struct TypeShape {
  std::uint32_t kind = 0;
  std::uint32_t interfaceCount = 0;
  std::uint32_t tableSize = 0;  ///< of a function table, in bytes
  std::uint32_t base = kNone;
  std::uint32_t inherited = 0;  ///< depth, and count of functions in the high half
  std::uint32_t elements = 0;   ///< functions, and variables in the high half
};

constexpr std::uint32_t kInheritedFunctions = 7;
constexpr std::uint32_t kPlaceSize = 4;  ///< of a function in the table

TypeShape ShapeOf(const TypeInfo& type, const TypePlaces& places) {
  const auto count = places.members.Count();
  switch (type.kind) {
    case TypeKind::Enum:
      return {0x2120, 0, 0, kNone, 0, count << 16};
    case TypeKind::Record:
      return {0x2121, 0, 0, kNone, 0, count << 16};
    case TypeKind::Interface:
      return {0x2223};
    case TypeKind::Dispatch:
      return {0x2234,
              1,
              (kInheritedFunctions + count) * kPlaceSize,
              kOfImportedType,
              kInheritedFunctions << 16 | 2,
              count};
    case TypeKind::Coclass:
      return {0x2225, type.defaultInterface ? 1U : 0U, 0, places.interfaces, 0};
    default:
      throw RuntimeError(ErrorNumber::InvalidCall, type.name);
  }
}

std::uint32_t SizeOf(ValueType type) {
  static const std::map<ValueType, std::uint32_t> kSizes = {
      {ValueType::Byte, 1},    {ValueType::Integer, 2},  {ValueType::Flag, 2},
      {ValueType::Double, 8},  {ValueType::Currency, 8}, {ValueType::Date, 8},
      {ValueType::Variant, 16}};
  const auto known = kSizes.find(type);
  return known == kSizes.end() ? 4 : known->second;
}

class LibraryWriter {
 public:
  LibraryWriter(const TypeLibrary& library, const std::vector<LibraryMembers>& members)
      : library_(library), members_(members) {
    if (library.types.size() > kMostTypes) throw RuntimeError(ErrorNumber::Overflow, library.name);
  }

  std::string Write() {
    guid_ = guids_.Add(library_.guid, kOfLibrary);
    name_ = names_.Add(library_.name, kNone, 0);
    helpString_ = AddString(library_.helpString);
    if (ImportsBase()) ImportBase();
    for (const auto& type : library_.types) AddType(type);
    for (std::size_t i = 0; i < std::min(members_.size(), places_.size()); ++i) AddMembers(i);
    return Assembled();
  }

 private:
  static constexpr std::uint32_t kSegmentCount = 15;
  using Segments = std::array<std::string, kSegmentCount>;

  [[nodiscard]] std::uint32_t TypeCount() const {
    return static_cast<std::uint32_t>(library_.types.size());
  }

  // The offset of a type's record.
  static std::uint32_t RecordOf(std::size_t index) {
    return static_cast<std::uint32_t>(index) * kTypeSize;
  }

  [[nodiscard]] bool ImportsBase() const {
    return std::any_of(library_.types.begin(), library_.types.end(),
                       [](const auto& type) { return type.kind == TypeKind::Dispatch; });
  }

  std::uint32_t AddString(const std::string& text) {
    if (text.empty()) return kNone;
    if (text.size() > 0xFFFF) throw RuntimeError(ErrorNumber::Overflow, library_.name);
    const auto offset = strings_.Size();
    strings_.U16(static_cast<std::uint32_t>(text.size())).Text(text);
    strings_.FillTo(std::max(strings_.Size(), offset + 8), kFiller).Align(4, kFiller);
    return offset;
  }

  void ImportBase() {
    constexpr std::string_view kFile = "stdole2.tlb";
    const auto library = guids_.Add(std::string(kSystemLibrary), kOfImportedFile);
    const auto dispatch = guids_.Add(std::string(kDispatchInterface), kOfImportedType);
    importFiles_.U32(library).U32(0).U16(2).U16(0);
    importFiles_.U16(static_cast<std::uint32_t>(kFile.size()) << 2 | 1).Text(kFile);
    importFiles_.Align(4, kFiller);
    // An interface (3) that is named by its identity (1), in the first file.
    imports_.U32(0x03010000).U32(0).U32(dispatch);
  }

  void AddType(const TypeInfo& type) {
    constexpr std::uint32_t kTypeName = 0x3800;
    const auto record = RecordOf(places_.size());
    TypePlaces places;
    if (!type.guid.empty()) places.guid = guids_.Add(type.guid, record);
    places.name = names_.Add(type.name, record, kTypeName);
    if (type.defaultInterface) places.interfaces = AddDefaultInterface(*type.defaultInterface);
    places_.push_back(places);
  }

  std::uint32_t AddDefaultInterface(std::size_t index) {
    constexpr std::uint32_t kDefault = 1;
    const auto offset = references_.Size();
    references_.U32(RecordOf(index)).U32(kDefault).U32(kNone).U32(kNone);
    return offset;
  }

  void AddMembers(std::size_t index) {
    constexpr std::size_t kMostMembers = 0x3F00;
    const auto& members = members_[index];
    if (members.methods.size() > kMostMembers || members.constants.size() > kMostMembers ||
        members.fields.size() > kMostMembers) {
      throw RuntimeError(ErrorNumber::Overflow, library_.types[index].name);
    }
    places_[index].help = AddString(members.help);
    for (const auto& method : members.methods) AddMethod(index, method);
    for (const auto& constant : members.constants) AddConstant(index, constant);
    if (library_.types[index].kind == TypeKind::Record) places_[index].size = 0;
    for (const auto& field : members.fields) AddField(index, field);
  }

  void AddMethod(std::size_t index, const LibraryMethod& method) {
    constexpr std::uint32_t kStatus = 0x80190019;   // what every function returns
    constexpr std::uint32_t kVirtualCall = 0x0401;  // through the table, callee cleans the stack
    constexpr std::uint32_t kReturns = 0x4000;      // its last parameter is the value
    constexpr std::uint32_t kDescription = 52;      // sizes of the parts in memory
    constexpr std::uint32_t kParameter = 16;
    constexpr std::uint32_t kPointer = 8;
    auto& block = places_[index].members;
    const auto name = names_.Add(method.name, RecordOf(index), 0);
    const auto& parameters = method.parameters;
    const auto count = static_cast<std::uint32_t>(parameters.size() + (method.result ? 1 : 0));
    std::uint32_t pointers = method.result ? 1 : 0;
    std::uint32_t optional = 0;
    for (const auto& each : parameters) {
      pointers += each.isByRef ? 1 : 0;
      optional += each.isOptional ? 1 : 0;
    }
    ByteWriter record;
    record.U32(kStatus).U32(0);
    record.U16((kInheritedFunctions + block.Count()) * kPlaceSize);
    record.U16(kDescription + kParameter * count + kPointer * pointers);
    record.U32(block.Count() << 16 | kVirtualCall | static_cast<std::uint32_t>(method.kind) << 3 |
               (method.result ? kReturns : 0));
    record.U16(count).U16(optional);
    if (!method.help.empty()) record.U32(0).U32(AddString(method.help));
    AddParameters(record, method);
    block.Add(record.Bytes(), method.id, name);
  }

  void AddParameters(ByteWriter& record, const LibraryMethod& method) {
    constexpr std::uint32_t kIn = 1;
    constexpr std::uint32_t kInOut = 3;
    constexpr std::uint32_t kOutReturned = 10;
    constexpr std::uint32_t kOptional = 16;
    for (const auto& each : method.parameters) {
      const auto type = each.isByRef ? descriptions_.AddPointer(each.type)
                                     : DescriptionTable::PlainType(each.type);
      const auto name = each.name.empty() ? kNone : names_.Add(each.name, kNone, 0);
      record.U32(type).U32(name);
      record.U32((each.isByRef ? kInOut : kIn) | (each.isOptional ? kOptional : 0));
    }
    if (!method.result) return;
    record.U32(descriptions_.AddPointer(*method.result)).U32(kNone).U32(kOutReturned);
  }

  void AddField(std::size_t index, const LibraryField& field) {
    constexpr std::uint32_t kOfInstance = 0;
    constexpr std::uint32_t kSizeInMemory = 0x24;
    auto& places = places_[index];
    const std::uint32_t size = SizeOf(field.type);
    const std::uint32_t step = std::min(size, std::uint32_t{4});
    places.size = (places.size + step - 1) / step * step;
    const auto name = names_.Add(field.name, RecordOf(index), 0);
    AddVariable(places.members, name, field.type, kOfInstance, kSizeInMemory, places.size);
    places.size += size;
  }

  void AddConstant(std::size_t index, const DeclaredEnum::Constant& constant) {
    constexpr std::uint32_t kConstantName = 0x3000;
    constexpr std::uint32_t kConstant = 2;
    constexpr std::uint32_t kSizeInMemory = 0x34;
    const auto name = names_.Add(constant.name, RecordOf(index), kConstantName);
    AddVariable(places_[index].members, name, ValueType::Long, kConstant, kSizeInMemory,
                AddValue(constant.value));
  }

  // A value itself when it is small, else its place.
  std::uint32_t AddValue(std::int32_t value) {
    constexpr std::uint32_t kLong = 3;
    constexpr std::uint32_t kInPlace = 0x80000000 | kLong << 26;
    constexpr std::int32_t kPlaces = 1 << 26;
    if (value >= 0 && value < kPlaces) return kInPlace | static_cast<std::uint32_t>(value);
    const auto offset = constants_.Size();
    constants_.U16(kLong).U32(static_cast<std::uint32_t>(value)).Align(4, kFiller);
    return offset;
  }

  static void AddVariable(MemberBlock& block, std::uint32_t name, ValueType type,
                          std::uint32_t kind, std::uint32_t sizeInMemory, std::uint32_t value) {
    constexpr std::uint32_t kFirstId = 0x40000000;
    ByteWriter record;
    record.U32(DescriptionTable::PlainType(type)).U32(0);
    record.U16(kind).U16(sizeInMemory).U32(value);
    block.Add(record.Bytes(), static_cast<std::int32_t>(kFirstId + block.Count()), name);
  }

  [[nodiscard]] std::string Assembled() const {
    Segments segments = {"",
                         imports_.Bytes(),
                         importFiles_.Bytes(),
                         references_.Bytes(),
                         guids_.Chains(),
                         guids_.Entries(),
                         names_.Chains(),
                         names_.Entries(),
                         strings_.Bytes(),
                         descriptions_.Entries(),
                         "",
                         constants_.Bytes()};
    const auto start = kHeaderSize + 4 * TypeCount() + kSegmentEntrySize * kSegmentCount;
    std::size_t end = start + kTypeSize * TypeCount();
    for (const auto& segment : segments) end += segment.size();
    segments[0] = TypeRecords(static_cast<std::uint32_t>(end));

    ByteWriter out;
    WriteHeader(out);
    for (std::uint32_t i = 0; i < TypeCount(); ++i) out.U32(RecordOf(i));
    WriteDirectory(out, segments, start);
    for (const auto& segment : segments) out.Text(segment);
    for (const auto& places : places_) out.Text(places.members.Bytes());
    return out.Bytes();
  }

  // Members come after everything else.
  [[nodiscard]] std::string TypeRecords(std::uint32_t members) const {
    ByteWriter out;
    for (std::uint32_t i = 0; i < TypeCount(); ++i) {
      const auto& type = library_.types[i];
      const auto& places = places_[i];
      const auto shape = ShapeOf(type, places);
      out.U32(i << 16 | shape.kind).U32(members).U32(0).U32(kNone).U32(3);
      out.U32(0).U32(shape.elements).U32(0).U32(0).U32(0).U32(0);
      out.U32(places.guid).U32(type.flags).U32(places.name).U32(0);
      out.U32(places.help).U32(0).U32(0).U32(kNone);  // no help file, no custom data
      out.U16(shape.interfaceCount).U16(shape.tableSize).U32(places.size);
      out.U32(shape.base).U32(shape.inherited).U32(0).U32(kNone);
      members += static_cast<std::uint32_t>(places.members.Bytes().size());
    }
    return out.Bytes();
  }

  void WriteHeader(ByteWriter& out) const {
    constexpr std::uint32_t kEnglish = 0x409;  // the language of the names
    constexpr std::uint32_t kWin32 = 0x41;
    const bool imports = ImportsBase();
    out.Text("MSFT").U32(0x00010002).U32(guid_).U32(kEnglish).U32(library_.lcid).U32(kWin32);
    out.U16(library_.major).U16(library_.minor).U32(library_.flags).U32(TypeCount());
    out.U32(helpString_).U32(0).U32(0).U32(names_.Count()).U32(names_.Letters()).U32(name_);
    out.U32(kNone).U32(kNone).U32(0x20).U32(0x80);  // no help file, no custom data; hash sizes
    out.U32(imports ? kOfImportedType : kNone).U32(imports ? 1 : 0);
  }

  static void WriteDirectory(ByteWriter& out, const Segments& segments, std::uint32_t offset) {
    for (const auto& segment : segments) {
      const auto size = static_cast<std::uint32_t>(segment.size());
      out.U32(size == 0 ? kNone : offset).U32(size).U32(kNone).U32(0x0F);
      offset += size;
    }
  }

  const TypeLibrary& library_;
  const std::vector<LibraryMembers>& members_;
  std::uint32_t guid_ = kNone;
  std::uint32_t name_ = kNone;
  std::uint32_t helpString_ = kNone;
  GuidTable guids_;
  NameTable names_;
  ByteWriter strings_;
  ByteWriter imports_;
  ByteWriter importFiles_;
  ByteWriter references_;
  DescriptionTable descriptions_;
  ByteWriter constants_;
  std::vector<TypePlaces> places_;
};

}  // namespace

std::string TypeLibraryImage(const TypeLibrary& library,
                             const std::vector<LibraryMembers>& members) {
  return LibraryWriter(library, members).Write();
}

}  // namespace gorbex::standin
