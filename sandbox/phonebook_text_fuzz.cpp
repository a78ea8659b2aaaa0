// Any bytes as a phonebook file: either refused with a message, or a phonebook whose text form gives it again.
#include <cstdlib>

#include "phonebook_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pelvaro::line;
  std::string message;
  const auto book = parsePhonebook({reinterpret_cast<const char*>(data), size}, message);
  if (!book) {
    if (message.empty()) std::abort();
    return 0;
  }
  if (parsePhonebook(phonebookText(*book), message) != book) std::abort();
  return 0;
}
