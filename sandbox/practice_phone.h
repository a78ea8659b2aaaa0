// The phones of phones/*.phone by name, for tests: of the line, and of the whole program on it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "phone.h"
#include "phonebook_file.h"

namespace pelvaro::line {

// The table of "nokia", "slow" ... A missing or damaged one fails the test.
inline PhoneTable practicePhone(const std::string& name) {
  const auto text = readFile(PELVARO_PHONES "/" + name + ".phone");
  EXPECT_TRUE(text) << "there is no " << name << ".phone";
  std::string message;
  auto table = parsePhoneTable(text.value_or(""), message);
  EXPECT_TRUE(table) << name << ".phone, " << message;
  return table ? std::move(*table) : PhoneTable();
}

}  // namespace pelvaro::line
