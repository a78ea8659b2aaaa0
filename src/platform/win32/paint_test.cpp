// Texts in a bitmap of our own: where their ink begins and ends.
#include "platform/win32/paint.h"

#include <gtest/gtest.h>

namespace pelvaro::win32 {
namespace {

struct Ink {
  LONG left = -1, right = -1;  // the first column with ink, and the one behind the last
};

Ink inkOf(std::string_view text, const RECT& area, HFONT font, UINT format) {
  constexpr LONG kWidth = 300, kHeight = 40;
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, kWidth, -kHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const HDC dc = ::CreateCompatibleDC(nullptr);
  const HBITMAP bitmap = ::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = ::SelectObject(dc, bitmap);
  fill(dc, {0, 0, kWidth, kHeight}, palette::kWhite);
  paintText(dc, text, area, font, palette::kText, format);
  ::GdiFlush();
  Ink ink;
  for (LONG x = 0; x < kWidth; ++x) {
    for (LONG y = 0; y < kHeight; ++y) {
      if ((static_cast<const DWORD*>(bits)[y * kWidth + x] & 0xFFFFFF) == 0xFFFFFF) continue;
      if (ink.left < 0) ink.left = x;
      ink.right = x + 1;
    }
  }
  ::SelectObject(dc, before);
  ::DeleteObject(bitmap);
  ::DeleteDC(dc);
  return ink;
}

constexpr UINT kLine = DT_SINGLELINE | DT_VCENTER;
constexpr const char* kTexts[] = {"Time elapse", "size remained: 32767 KB", "01:30:00", "-4194303 KB", "Hang Up",
                                  "iiiiii"};

TEST(PaintText, RightAlignedLinesEndAtTheirEdgeAndAreNotCut) {
  ScreenMetrics metrics;
  for (const HFONT font : {metrics.font(), metrics.boldFont()}) {
    for (const char* text : kTexts) {
      const Ink free = inkOf(text, {10, 0, 290, 40}, font, kLine);
      const Ink right = inkOf(text, {10, 0, 200, 40}, font, kLine | DT_RIGHT | DT_END_ELLIPSIS);
      EXPECT_EQ(right.right - right.left, free.right - free.left) << text;
      EXPECT_LE(right.right, 200) << text;
      EXPECT_GE(right.right, 198) << text;
    }
  }
}

TEST(PaintText, CentredLinesStandInTheMiddle) {
  ScreenMetrics metrics;
  for (const char* text : kTexts) {
    const Ink ink = inkOf(text, {10, 0, 210, 40}, metrics.font(), kLine | DT_CENTER);
    EXPECT_NEAR(static_cast<double>(ink.left + ink.right) / 2, 110, 1.5) << text;
  }
}

TEST(PaintText, ALineThatIsTooLongIsCutWithinItsArea) {
  ScreenMetrics metrics;
  const char* text = "Corvanti-Office, second floor, the spare phone";
  const Ink whole = inkOf(text, {10, 0, 290, 40}, metrics.font(), kLine);
  const Ink cut = inkOf(text, {10, 0, 90, 40}, metrics.font(), kLine | DT_RIGHT | DT_END_ELLIPSIS);
  EXPECT_GT(whole.right - whole.left, 80);
  EXPECT_LE(cut.right, 90);
  EXPECT_GE(cut.left, 10);
}

TEST(PaintText, OfNothingPaintsNothing) {
  ScreenMetrics metrics;
  EXPECT_EQ(inkOf("", {10, 0, 90, 40}, metrics.font(), kLine | DT_RIGHT).left, -1);
}

}  // namespace
}  // namespace pelvaro::win32
