// Any bytes as what a phone says, cut into pieces anyhow: the answer must be that of the rules carried out plainly on
// the whole text, and a brand is made of small letters. The first byte is the size of the pieces.
#include <cstdlib>

#include "base/text.h"
#include "devices/brand.h"
#include "devices/reply.h"
#include "input.h"

namespace {

using namespace pelvaro;

bool hasLetter(std::string_view line) {
  for (const char c : line) {
    if (devices::isCapitalLetter(c) || devices::isSmallLetter(c)) return true;
  }
  return false;
}

std::string_view plainLine(std::string_view reply) {
  std::string_view rest = trimmed(reply), line;
  while (!rest.empty()) {
    const auto end = rest.find("\r\n");
    line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 2);
    if (!contains(line, "AT") && !contains(line, "ERROR") && !contains(line, "OK") && hasLetter(line)) break;
  }
  return line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::size_t piece = data[0] + std::size_t{1};

  devices::Reply reply;
  for (std::size_t at = 0; at < text.size(); at += piece) reply.append(text.substr(at, piece));
  check(reply.saysOk() == contains(text, "OK"));
  check(reply.ended() == (contains(text, "OK") || contains(text, "error")));
  if (text.size() <= 65536) check(trimmed(reply.manufacturerLine()) == trimmed(plainLine(text)));

  const std::string brand = devices::brandOfLine(reply.manufacturerLine());
  check(devices::lettersOnly(brand) == brand);
  check(devices::formatBrand(brand) == brand);
  const std::string key = devices::GetDevicesBrand({std::string(text), "Nokia 6230"}, "6230");
  check(contains(text, "6230") ? key == lowered(text) : key == "nokia 6230");
  check(devices::keyFits({std::string(text) + brand + "6230"}, brand, "6230") == !brand.empty());
  return 0;
}
