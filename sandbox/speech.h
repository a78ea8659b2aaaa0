// What a phone has said and nobody has got yet, let out as fast as the phone speaks. Used by the exchange and by ports
// in memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace pelvaro::line {

class Speech {
 public:
  // `pace`: milliseconds between two bytes, 0: everything comes at once.
  explicit Speech(std::uint32_t pace) : pace_(pace) {}

  // Of more than a cable holds the rest is lost.
  void add(std::string_view bytes) { waiting_ += bytes.substr(0, kMostWaiting - waiting_.size()); }
  // What comes out now: with a pace one byte at most, however long nobody asked.
  std::string take(std::uint64_t nowMs) {
    if (pace_ == 0) return std::exchange(waiting_, {});
    if (waiting_.empty() || nowMs < next_) return {};
    next_ = nowMs + pace_;
    std::string byte = waiting_.substr(0, 1);
    waiting_.erase(0, 1);
    return byte;
  }
  void clear() { waiting_.clear(); }
  // Whether more will come out.
  bool speaking() const { return !waiting_.empty(); }
  std::uint32_t pace() const { return pace_; }

 private:
  static constexpr std::size_t kMostWaiting = 65536;

  std::uint32_t pace_;
  std::string waiting_;
  std::uint64_t next_ = 0;  // when the next byte may come
};

}  // namespace pelvaro::line
