#include "line_dial_service.h"

#include "line_fixture.h"

namespace pelvaro::line {
namespace {

struct LineDialServiceTest : LineTest {
  LineDialService service{line_};
  DialService& seam = service;
};

TEST_F(LineDialServiceTest, EveryVerbReachesTheLine) {
  std::uint32_t size = 0, count = 0;
  EXPECT_EQ(seam.getEntryProperties(nullptr, nullptr, nullptr, &size), 603u);
  Bytes record(size);
  putNumber(record.data(), size);
  EXPECT_EQ(seam.setEntryProperties(nullptr, "New", record.data(), size), 0u);
  size = 0;
  EXPECT_EQ(seam.enumEntries(nullptr, nullptr, &size, &count), 603u);
  EXPECT_EQ(count, 4u);
  EXPECT_EQ(seam.deleteEntry(nullptr, "New"), 0u);
  EXPECT_EQ(seam.editPhonebookEntry(0, nullptr, "New"), 623u);
  size = 0;
  EXPECT_EQ(seam.enumDevices(nullptr, &size, &count), 603u);
  Bytes asked = params("Work");
  std::int32_t saved = 1;
  EXPECT_EQ(seam.getEntryDialParams(nullptr, asked.data(), &saved), 0u);
  EXPECT_EQ(saved, 0);
  RasHandle handle = 0;
  Bytes dialed = params("Work");
  EXPECT_EQ(seam.dial(nullptr, dialed.data(), ras::kNotifierWindow, kWindow, &handle), 0u);
  settle();
  EXPECT_EQ(told_.back(), (Told{kWindow, kConnected, 0}));
  size = 0;
  EXPECT_EQ(seam.enumConnections(nullptr, &size, &count), 603u);
  EXPECT_EQ(seam.hangUp(handle), 0u);
  char text[512];
  EXPECT_EQ(seam.errorString(623, text, sizeof text), 0u);
  EXPECT_STREQ(text, "Cannot find the phone book entry.");
}

TEST_F(LineDialServiceTest, SystemTextsEndWithALineEnd) {
  char text[512];
  EXPECT_EQ(seam.formatMessage(0x1000, 5, 0, text, sizeof text), 19u);
  EXPECT_STREQ(text, "Access is denied.\r\n");
  EXPECT_EQ(seam.formatMessage(0x1000, 12345678, 0, text, sizeof text), 0u);
  EXPECT_EQ(seam.formatMessage(0x1000, 5, 0, text, 19), 0u) << "too little room";
  EXPECT_EQ(seam.formatMessage(0x200, 5, 0, text, sizeof text), 0u) << "no system message asked for";
}

}  // namespace
}  // namespace pelvaro::line
