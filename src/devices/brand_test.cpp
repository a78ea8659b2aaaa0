#include "devices/brand.h"

#include <gtest/gtest.h>

namespace pelvaro::devices {
namespace {

using namespace std::string_literals;
using Keys = std::vector<std::string>;

TEST(IsCapitalLetter, AreTheCodes65To90Alone) {
  for (int code = 0; code < 256; ++code) {
    EXPECT_EQ(isCapitalLetter(static_cast<char>(code)), code >= 65 && code <= 90) << code;
    EXPECT_EQ(isSmallLetter(static_cast<char>(code)), code >= 97 && code <= 122) << code;
  }
}

TEST(LettersOnly, KeepsAToZInOrderAndNothingElse) {
  const struct {
    std::string text, expected;
  } table[] = {
      {"", ""},       {"acme ltd.", "acmeltd"},        {"SAMSUNG", ""},         {"Nokia 6230", "okia"},
      {"`az{", "az"}, {"\xE4\xF6\xFC\xDF \xFFx", "x"}, {"a\0b\r\n\tc"s, "abc"},
  };
  for (const auto& row : table) EXPECT_EQ(lettersOnly(row.text), row.expected) << row.text;
}

TEST(FormatBrand, MapsWhatTheTextContains) {
  const struct {
    const char *text, *expected;
  } table[] = {
      {"ericsson", "ericsson"},
      {"sony", "ericsson"},
      {"Sony Ericsson", "ericsson"},
      {"samsungelectronicsco", "samsung"},
      {"SAMSUNG", "samsung"},
      {"cgmimotorolacecopyright", "motorola"},
      {"Nokia", "nokia"},
      {"xnokiax", "nokia"},
      {"SIEMENS", "siemens"},
      {"Gipsy Soft", "siemens"},
      {"gipsysoft", "gipsysoft"},
      {"", ""},
      {"Acme Ltd", "Acme Ltd"},
      {"nok ia", "nok ia"},
  };
  for (const auto& row : table) EXPECT_EQ(formatBrand(row.text), row.expected) << row.text;
}

TEST(FormatBrand, TheLastRowThatFitsWins) {
  const struct {
    const char *text, *expected;
  } table[] = {
      {"samsung ericsson", "samsung"},  {"siemens nokia", "siemens"},       {"nokia motorola", "nokia"},
      {"motorola samsung", "motorola"}, {"gipsy soft ericsson", "siemens"}, {"nokia samsung sony", "nokia"},
  };
  for (const auto& row : table) EXPECT_EQ(formatBrand(row.text), row.expected) << row.text;
}

TEST(BrandOfLine, OfEachMaker) {
  const struct {
    const char *line, *expected;
  } table[] = {
      {"Sony Ericsson", "ericsson"},
      {"SONY ERICSSON", "ericsson"},
      {"ERICSSON", "ericsson"},
      {"Nokia", "nokia"},
      {"Nokia Mobile Phones", "nokia"},
      {"SAMSUNG ELECTRONICS CO.", "samsung"},
      {"+CGMI: \"Motorola CE, Copyright 2000\"", "motorola"},
      {"Siemens", "siemens"},
      {" Acme Ltd ", "acmeltd"},
      {"Gipsy Soft Protocol", "gipsysoftprotocol"},
      {"OK", "ok"},
      {"error", "error"},
      {"12 34 \xC4", ""},
      {"", ""},
      {"N O K I A", "nokia"},
      {"Nokia\r", "nokia"},
  };
  for (const auto& row : table) EXPECT_EQ(brandOfLine(row.line), row.expected) << row.line;
}

TEST(BrandOfLine, SonyIsTakenOutInSmallLettersOnlyAndInOnePass) {
  const struct {
    const char *line, *expected;
  } table[] = {
      {"sony", ""},
      {"sonysony", ""},
      {"Sony", "ericsson"},
      {"SONY", "ericsson"},
      {"sony ericsson", "ericsson"},
      {"sony Acme", "acme"},
      {"asonyb sony c", "abc"},
      {"sosonyny", "ericsson"},
      {"nosonykia", "nokia"},
      {"so ny", "ericsson"},
  };
  for (const auto& row : table) EXPECT_EQ(brandOfLine(row.line), row.expected) << row.line;
}

TEST(KeyFits, WhenOneKeyContainsBothTheBrandAndTheDevice) {
  const Keys keys = {"Nokia 6230 USB Modem", "SAMSUNG D500", "Siemens S65 Modem"};
  const struct {
    const char *brand, *device;
    bool expected;
  } table[] = {
      {"nokia", "Nokia 6230", true},
      {"nokia", "NOKIA 6230 usb", true},
      {"nokia", "6230", true},
      {"samsung", "Samsung d500", true},
      {"nokia", "Samsung D500", false},
      {"nokia", "S65", false},
      {"nokia", "Nokia 6230 USB Modem #2", false},
      {"acmeltd", "Nokia 6230", false},
      {"ok", "Nokia 6230", true},
      {"nokia", "", true},
      {"", "Nokia 6230", false},
      {"", "", false},
  };
  for (const auto& row : table)
    EXPECT_EQ(keyFits(keys, row.brand, row.device), row.expected) << row.brand << row.device;
  EXPECT_FALSE(keyFits({}, "nokia", "Nokia 6230"));
  EXPECT_FALSE(keyFits({"Nokia", "6230"}, "nokia", "6230")) << "not in two keys";
}

TEST(GetDevicesBrand, GivesTheFirstKeyThatContainsTheTextInLowerCase) {
  const Keys keys = {"Nokia 6230 USB Modem", "Nokia 6600", "SAMSUNG D500"};
  EXPECT_EQ(GetDevicesBrand(keys, "Nokia"), "nokia 6230 usb modem");
  EXPECT_EQ(GetDevicesBrand(keys, "6600"), "nokia 6600");
  EXPECT_EQ(GetDevicesBrand(keys, "SAMSUNG"), "samsung d500");
}

TEST(GetDevicesBrand, LooksCaseSensitively) {
  EXPECT_EQ(GetDevicesBrand({"NOKIA", "nokia 2", "Nokia 3"}, "nokia"), "nokia 2");
  EXPECT_EQ(GetDevicesBrand({"Nokia 6230"}, "nokia"), "");
}

TEST(GetDevicesBrand, GivesNothingWhenNoneDoes) {
  EXPECT_EQ(GetDevicesBrand({}, "Nokia"), "");
  EXPECT_EQ(GetDevicesBrand({"Nokia 6230"}, "Siemens"), "");
  EXPECT_EQ(GetDevicesBrand({"Nokia 6230", "x"}, ""), "nokia 6230") << "every name contains the empty text";
}

}  // namespace
}  // namespace pelvaro::devices
