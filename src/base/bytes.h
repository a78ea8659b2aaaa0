// Reading and writing the fields of a record in a byte buffer, cut at the buffer's end: what does not fit is not
// written, what is not there reads as zero. Used for the records of the dial-up service.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace pelvaro {

using Bytes = std::span<std::uint8_t>;
using ConstBytes = std::span<const std::uint8_t>;

// The buffer from `offset` on; empty when the offset lies behind its end.
inline Bytes from(Bytes buffer, std::size_t offset) {
  return buffer.subspan(offset < buffer.size() ? offset : buffer.size());
}
inline ConstBytes from(ConstBytes buffer, std::size_t offset) {
  return buffer.subspan(offset < buffer.size() ? offset : buffer.size());
}

// A 32-bit number, lowest byte first.
inline void put32(Bytes buffer, std::size_t offset, std::uint32_t value) {
  for (std::size_t i = 0; i < 4 && offset + i < buffer.size(); ++i) {
    buffer[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
  }
}

inline std::uint32_t get32(ConstBytes buffer, std::size_t offset) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4 && offset + i < buffer.size(); ++i) {
    value |= static_cast<std::uint32_t>(buffer[offset + i]) << (8 * i);
  }
  return value;
}

// The bytes of a buffer as a text, NULs included.
inline std::string_view asText(ConstBytes buffer) {
  return {reinterpret_cast<const char*>(buffer.data()), buffer.size()};
}

// Overwrites a secret with zeros in a way that the compiler keeps.
inline void wipe(void* data, std::size_t size) {
  auto* bytes = static_cast<volatile std::uint8_t*>(data);
  while (size-- > 0) *bytes++ = 0;
}
inline void wipe(std::string& text) { wipe(text.data(), text.size()); }

}  // namespace pelvaro
