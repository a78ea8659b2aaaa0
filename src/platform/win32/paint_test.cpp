// Texts in a bitmap of our own: where their ink begins and ends.
#include "platform/win32/paint.h"

#include <gtest/gtest.h>

#include <utility>

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

// An icon of four quarters: dark, light, white, and nothing.
HICON quarters(int size) {
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, size, -size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  ICONINFO icon{TRUE, 0, 0, ::CreateBitmap(size, size, 1, 1, nullptr),
                ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0)};
  constexpr DWORD kParts[] = {0xFF000080, 0xFFA9C8F5, 0xFFFFFFFF, 0};
  for (int i = 0; i < size * size; ++i) {
    static_cast<DWORD*>(bits)[i] = kParts[2 * (i / size / (size / 2)) + i % size / (size / 2)];
  }
  const HICON result = ::CreateIconIndirect(&icon);
  ::DeleteObject(icon.hbmMask);
  ::DeleteObject(icon.hbmColor);
  return result;
}

TEST(PaintLines, OfAnIconOnlyTheDarkPartsAreSeenInTheColourOfTheScheme) {
  constexpr LONG kSize = 16;
  for (const auto& [ground, ink] :
       {std::pair{RGB(0, 0, 0), palette::kWhite}, {palette::kWhite, RGB(0, 0, 0)}, {RGB(0, 0, 0), RGB(255, 255, 0)}}) {
    const HDC dc = ::CreateCompatibleDC(nullptr);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, 2 * kSize, -2 * kSize, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HBITMAP bitmap = ::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = ::SelectObject(dc, bitmap);
    fill(dc, {0, 0, 2 * kSize, 2 * kSize}, ground);
    const HICON icon = quarters(kSize);
    paintLines(dc, icon, {8, 8}, kSize, ink);
    const auto at = [&](int x, int y) { return ::GetPixel(dc, 8 + x, 8 + y); };
    EXPECT_EQ(at(3, 3), ink) << "dark";
    EXPECT_NE(at(12, 3), ink) << "light";
    EXPECT_EQ(at(3, 12), ground) << "white";
    EXPECT_EQ(at(12, 12), ground) << "nothing";
    EXPECT_EQ(at(-1, 3), ground) << "around it";
    EXPECT_EQ(at(kSize, 3), ground) << "around it";
    ::DestroyIcon(icon);
    ::SelectObject(dc, before);
    ::DeleteObject(bitmap);
    ::DeleteDC(dc);
  }
}

TEST(PaintText, OfNothingPaintsNothing) {
  ScreenMetrics metrics;
  EXPECT_EQ(inkOf("", {10, 0, 90, 40}, metrics.font(), kLine | DT_RIGHT).left, -1);
}

}  // namespace
}  // namespace pelvaro::win32
