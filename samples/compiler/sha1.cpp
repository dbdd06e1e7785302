#include "compiler/sha1.h"

#include <bit>
#include <string>

namespace gorbex::standin {
namespace {

using State = std::array<std::uint32_t, 5>;
using Schedule = std::array<std::uint32_t, 80>;

constexpr std::size_t kBlock = 64;

std::string Padded(std::string_view bytes) {
  std::string text(bytes);
  text += static_cast<char>(0x80);
  while (text.size() % kBlock != kBlock - 8) text += '\0';
  const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
  for (int shift = 56; shift >= 0; shift -= 8) text += static_cast<char>(bits >> shift & 0xFF);
  return text;
}

Schedule Expanded(std::string_view block) {
  Schedule words{};
  for (std::size_t i = 0; i < kBlock; ++i) {
    words[i / 4] = words[i / 4] << 8 | static_cast<std::uint8_t>(block[i]);
  }
  for (std::size_t i = 16; i < words.size(); ++i) {
    words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
  }
  return words;
}

std::uint32_t Mixed(std::size_t round, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
  if (round < 20) return ((b & c) | (~b & d)) + 0x5A827999;
  if (round < 40) return (b ^ c ^ d) + 0x6ED9EBA1;
  if (round < 60) return ((b & c) | (b & d) | (c & d)) + 0x8F1BBCDC;
  return (b ^ c ^ d) + 0xCA62C1D6;
}

void Digest(State& state, std::string_view block) {
  const Schedule words = Expanded(block);
  auto [a, b, c, d, e] = state;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::uint32_t next = std::rotl(a, 5) + Mixed(i, b, c, d) + e + words[i];
    e = d;
    d = c;
    c = std::rotl(b, 30);
    b = a;
    a = next;
  }
  const State added = {a, b, c, d, e};
  for (std::size_t i = 0; i < state.size(); ++i) state[i] += added[i];
}

}  // namespace

std::array<std::uint8_t, 20> Sha1(std::string_view bytes) {
  State state = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
  const std::string text = Padded(bytes);
  for (std::size_t at = 0; at < text.size(); at += kBlock) {
    Digest(state, std::string_view(text).substr(at, kBlock));
  }
  std::array<std::uint8_t, 20> digest{};
  for (std::size_t i = 0; i < digest.size(); ++i) {
    digest[i] = static_cast<std::uint8_t>(state[i / 4] >> (24 - 8 * (i % 4)));
  }
  return digest;
}

}  // namespace gorbex::standin
