#include "drivers/catalogue.h"

#include <gtest/gtest.h>

#include <map>

#include "drivers/actions.h"

namespace pelvaro::drivers {
namespace {

using Rows = std::vector<std::string>;

TEST(Catalogue, BrandsAreListedInTheirOrder) {
  const std::vector<std::string_view> listed(brands().begin(), brands().end());
  EXPECT_EQ(listed, (std::vector<std::string_view>{"Motorola", "Nokia", "Samsung", "Siemens", "Sony Ericsson"}));
}

TEST(Catalogue, EveryBrandsRowsStandCodeByCode) {
  EXPECT_EQ(codedRows(0),
            (Rows{"C975|01", "E398|01", "E550|01", "E1000|01", "V80|01",  "V300|01", "V303|01", "V400|01",
                  "V500|01", "V501|01", "V505|01", "V525|01",  "V550|01", "V551|01", "V600|01", "V600i|01",
                  "V635|01", "V975|01", "V980|01", "V1050|01", "L6|02",   "L7|02",   "C650|03", "U6|03",
                  "V3|03",   "V3i|03",  "V180|03", "V3x|04",   "C350|05", "V220|05"}));
  EXPECT_EQ(codedRows(1), (Rows{"3100|06", "3108|06", "3120|06", "3200|06", "3220|06", "5100|06",  "5140|06",
                                "6100|06", "6108|06", "6200|06", "6220|06", "6610|06", "6610i|06", "6800|06",
                                "6810|06", "6820|06", "7200|06", "7210|06", "7250|06", "7250i|06", "6230|07"}));
  EXPECT_EQ(codedRows(2),
            (Rows{"D410|08", "D418|08", "D420|08", "E105|08", "E310|08",  "E600|08", "E610|08", "E710|08", "E715|08",
                  "E810|08", "P400|08", "P510|08", "P730|08", "V200|08",  "C120|08", "X105|08", "X200|08", "X450|08",
                  "X480|08", "X488|08", "E608|08", "P408|08", "S300|08",  "S307|08", "S308|08", "V205|08", "V206|08",
                  "V208|08", "D480|09", "E100|09", "E330|09", "E330N|09", "E630|09", "E700|09", "E800|09", "E820|09",
                  "N620|09", "S500|09", "T400|09", "X100|09", "X460|09",  "X600|09", "X620|09", "X640|09", "E108|09",
                  "E638|09", "E708|09", "E808|09", "S508|09", "X108|09",  "X468|09", "X608|09", "X648|09", "D500|10",
                  "E340|10", "E640|10", "E730|10", "E738|10", "D508|10"}));
  EXPECT_EQ(codedRows(3), (Rows{"C65|11", "CF62|11", "M55|11", "MC60|11", "S55|11", "S57|11", "SL55|11", "SL5C|11",
                                "S65|11", "A60|12", "A65|12"}));
  EXPECT_EQ(codedRows(4), (Rows{"K600i|13", "K608i|13", "F500i|14", "J300i|14", "K500i|14", "K508i|14", "K700i|14",
                                "S700i|14", "Z1010|14", "Z600|14",  "T610|14",  "T616|14",  "T618|14",  "T628|14",
                                "T630|14",  "T637|14",  "V800|14",  "V802|14",  "Z800i|14", "K750i|15", "W800i|15",
                                "Z520i|15", "Z530i|15", "W550i|16", "W810i|16"}));
}

TEST(Catalogue, AnotherIndexHasNoRows) {
  for (const int index : {-1, 5, 32767}) EXPECT_TRUE(codedRows(index).empty()) << index;
}

TEST(Catalogue, NoModelIsTwiceInABrandAndEveryCodeHasItsSteps) {
  for (int brand = 0; brand < static_cast<int>(brands().size()); ++brand) {
    std::map<std::string, int> seen;
    for (const std::string& row : codedRows(brand)) {
      EXPECT_EQ(++seen[std::string(modelOf(row))], 1) << row;
      EXPECT_FALSE(stepsOf(codeOf(row)).empty()) << row;
    }
  }
}

TEST(Catalogue, ARowIsCutThreeCharactersBeforeItsEndAndAtItsBars) {
  EXPECT_EQ(modelOf("V3x|04"), "V3x");
  EXPECT_EQ(codeOf("V3x|04"), "04");
  EXPECT_EQ(modelOf("04"), "");
  EXPECT_EQ(codeOf("---Other---"), "");
  EXPECT_EQ(codeOf("a|b|06"), "b");
}

TEST(Actions, ACodeThatNoModelHasIsNothingToDo) {
  for (const char* code : {"", "00", "17", "1", "001"}) EXPECT_TRUE(stepsOf(code).empty()) << code;
}

}  // namespace
}  // namespace pelvaro::drivers
