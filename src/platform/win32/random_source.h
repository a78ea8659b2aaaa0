// Random numbers, other ones each time the program runs. Not for secrets.
#pragma once

#include "platform/random_source.h"

namespace pelvaro::win32 {

struct SystemRandom : SeededRandom {
  SystemRandom();
};

}  // namespace pelvaro::win32
