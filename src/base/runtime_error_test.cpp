#include "base/runtime_error.h"

#include <gtest/gtest.h>

namespace pelvaro {
namespace {

TEST(RuntimeError, ReportNamesNumberThenABlankLineThenTheText) {
  EXPECT_EQ(RuntimeError(6, "Overflow").report(), "Run-time error '6':\n\nOverflow");
}

TEST(RuntimeError, AnExceptionOfTheLibraryIsAnInternalError) {
  EXPECT_EQ(internalError("bad_alloc").report(), "Run-time error '51':\n\nInternal error: bad_alloc");
}

}  // namespace
}  // namespace pelvaro
