#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "compiler/byte_writer.h"
#include "compiler/identity.h"
#include "compiler/type_library_image.h"
#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex::standin {

/// The offset of a part that is missing.
inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

inline constexpr char kFiller = 'W';

/// A table whose entries are found through chains, one for each value of a small hash.
class ChainedTable {
 public:
  explicit ChainedTable(std::size_t chains) : heads_(chains, kNone) {}

  [[nodiscard]] const std::string& Entries() const { return entries_.Bytes(); }
  [[nodiscard]] std::string Chains() const {
    ByteWriter out;
    for (const auto head : heads_) out.U32(head);
    return out.Bytes();
  }

 protected:
  /// Makes an entry the first of its chain; returns the one that follows it now.
  std::uint32_t Prepend(std::uint32_t hash, std::uint32_t entry) {
    return std::exchange(heads_[hash % heads_.size()], entry);
  }

  ByteWriter entries_;

 private:
  std::vector<std::uint32_t> heads_;
};

/// The identities that occur in the library.
class GuidTable : public ChainedTable {
 public:
  GuidTable() : ChainedTable(32) {}

  std::uint32_t Add(const std::string& guid, std::uint32_t owner) {
    const auto uuid = ParsedUuid(guid);
    if (!uuid) throw RuntimeError(ErrorNumber::InvalidCall, guid);
    const auto offset = entries_.Size();
    const auto bytes = InMemory(*uuid);
    entries_.Text(bytes).U32(owner).U32(Prepend(Hash(bytes), offset));
    return offset;
  }

 private:
  // The first three groups are numbers, lowest byte first.
  static std::string InMemory(const Uuid& uuid) {
    std::string bytes(uuid.begin(), uuid.end());
    std::reverse(bytes.begin(), bytes.begin() + 4);
    std::swap(bytes[4], bytes[5]);
    std::swap(bytes[6], bytes[7]);
    return bytes;
  }

  // Only the low bits of the sum of 16-bit words count.
  static std::uint32_t Hash(const std::string& bytes) {
    std::uint32_t hash = 0;
    for (std::size_t i = 0; i < bytes.size(); i += 2) hash ^= static_cast<unsigned char>(bytes[i]);
    return hash;
  }
};

/// The names that occur in the library.
class NameTable : public ChainedTable {
 public:
  NameTable() : ChainedTable(128) {}

  /// A name that is already there, in any letter case, is used for both.
  std::uint32_t Add(const std::string& name, std::uint32_t owner, std::uint32_t marks) {
    constexpr std::size_t kLongest = 0xFF;
    if (name.size() > kLongest) throw RuntimeError(ErrorNumber::Overflow, name);
    const auto length = static_cast<std::uint32_t>(name.size());
    const auto offset = entries_.Size();
    const auto [known, isNew] = offsets_.try_emplace(UpperCase(name), offset);
    if (!isNew) return known->second;
    const auto hash = Hash(name);
    entries_.U32(owner).U32(Prepend(hash, offset)).U16(length | marks).U16(hash);
    entries_.Text(name).Align(4, kFiller);
    ++count_;
    letters_ += length;
    return offset;
  }

  [[nodiscard]] std::uint32_t Count() const { return count_; }
  [[nodiscard]] std::uint32_t Letters() const { return letters_; }

 private:
  // The system's hash of a name, which ignores letter case.
  static std::uint32_t Hash(const std::string& name) {
    std::uint32_t hash = 0x0DEADBEE;
    for (const char letter : UpperCase(name)) hash = 37 * hash + static_cast<unsigned char>(letter);
    return hash % 65599 & 0xFFFF;
  }

  std::map<std::string, std::uint32_t> offsets_;
  std::uint32_t count_ = 0;
  std::uint32_t letters_ = 0;
};

/// The types that are made of others: here only pointers to values.
class DescriptionTable {
 public:
  std::uint32_t AddPointer(ValueType to) {
    constexpr std::uint32_t kPointer = 0x4000001A;
    const auto value = static_cast<std::uint32_t>(to);
    const auto [known, isNew] = offsets_.try_emplace(to, entries_.Size());
    if (isNew) entries_.U32(kPointer | value << 16).U32(PlainType(to));
    return known->second;
  }

  /// A type written in the place of a description.
  static std::uint32_t PlainType(ValueType type) {
    const auto value = static_cast<std::uint32_t>(type);
    return 0x80000000 | value << 16 | value;
  }

  [[nodiscard]] const std::string& Entries() const { return entries_.Bytes(); }

 private:
  ByteWriter entries_;
  std::map<ValueType, std::uint32_t> offsets_;
};

/// The members of one type, as they follow the segments: their records, then their numbers,
/// names and places.
class MemberBlock {
 public:
  void Add(const std::string& record, std::int32_t id, std::uint32_t name) {
    const auto size = static_cast<std::uint32_t>(record.size()) + 4;
    places_.U32(records_.Size());
    records_.U32(count_ << 16 | size).Text(record);
    ids_.U32(static_cast<std::uint32_t>(id));
    names_.U32(name);
    ++count_;
  }

  [[nodiscard]] std::uint32_t Count() const { return count_; }

  [[nodiscard]] std::string Bytes() const {
    if (count_ == 0) return {};
    ByteWriter out;
    out.U32(records_.Size()).Text(records_.Bytes());
    out.Text(ids_.Bytes()).Text(names_.Bytes()).Text(places_.Bytes());
    return out.Bytes();
  }

 private:
  ByteWriter records_;
  ByteWriter ids_;
  ByteWriter names_;
  ByteWriter places_;
  std::uint32_t count_ = 0;
};

}  // namespace gorbex::standin
