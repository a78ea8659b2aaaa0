// The program's visual language in GDI: palette, frames, button faces, texts. Used by the peers that draw.
#pragma once

#include <string_view>

#include "platform/win32/screen_metrics.h"

namespace pelvaro::win32 {

// Colours with their contrast on the ground that they stand on.
namespace palette {
constexpr COLORREF kText = RGB(0x00, 0x00, 0x80);
constexpr COLORREF kWhite = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF kEdge = RGB(0x4F, 0x6F, 0xA8);
constexpr COLORREF kHairline = RGB(0xA9, 0xBE, 0xE4);
constexpr COLORREF kTint = RGB(0xEA, 0xF1, 0xFC);
constexpr COLORREF kPressed = RGB(0xBD, 0xD0, 0xF2);
constexpr COLORREF kSelected = RGB(0xCF, 0xE0, 0xFB);
constexpr COLORREF kSelectedEdge = RGB(0x7F, 0xA3, 0xDF);
constexpr COLORREF kSelectedIdle = RGB(0xED, 0xF3, 0xFC);
constexpr COLORREF kAccent = RGB(0x1F, 0x5F, 0xBF);
constexpr COLORREF kMuted = RGB(0x50, 0x60, 0x8A);
constexpr COLORREF kDisabledInput = RGB(0xEC, 0xEC, 0xEC);
constexpr COLORREF kButtonHover = RGB(0xF1, 0xF6, 0xFE);
constexpr COLORREF kButtonPressed = RGB(0xD3, 0xE1, 0xF8);
constexpr COLORREF kMarkHover = RGB(0xBD, 0xD0, 0xF2);
constexpr COLORREF kMarkPressed = RGB(0xA3, 0xBC, 0xEB);
constexpr COLORREF kStop = RGB(0xB3, 0x26, 0x1E);
constexpr COLORREF kStopPressed = RGB(0x8C, 0x1B, 0x15);
}  // namespace palette

// A surface of the size of `area`, drawn off the screen and shown at once when it goes.
class Canvas {
 public:
  Canvas(HDC target, const RECT& area);
  ~Canvas();
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  HDC dc() const { return dc_; }

 private:
  HDC target_;
  RECT area_;
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ before_;
};

void fill(HDC dc, const RECT& area, COLORREF colour);
// The outline of a rectangle, inside it.
void frame(HDC dc, const RECT& area, COLORREF colour, int width);
// A filled rectangle with round corners and an outline inside it.
void roundFace(HDC dc, const RECT& area, int radius, COLORREF face, COLORREF edge, int width);
// A filled circle that touches all sides of a square box.
void disc(HDC dc, const RECT& box, COLORREF colour);
// The same with an outline inside it.
void discFace(HDC dc, const RECT& box, COLORREF face, COLORREF edge, int width);
// A check mark in the middle of a square box.
void tick(HDC dc, const RECT& box, COLORREF colour);
// An arrow head that points down, in the middle of a square box.
void arrowDown(HDC dc, const RECT& box, COLORREF colour);
// A dotted outline, one pixel wide.
void dotted(HDC dc, const RECT& area, COLORREF colour);
// A text without "&" marks, laid by DrawText's `format`.
void paintText(HDC dc, std::string_view what, RECT area, HFONT font, COLORREF colour, UINT format);
// The width that a line of text takes when it is painted.
LONG textWidth(HDC dc, std::string_view what, HFONT font);
// An icon in the middle of `area`, muted for a disabled control; with a high-contrast scheme its lines in `ink`.
void paintPicture(HDC dc, ScreenMetrics& metrics, Picture what, const RECT& area, bool muted, COLORREF ink);
// An icon of `size` pixels in one colour: its dark parts, so that what it shows is seen on any ground.
void paintLines(HDC dc, HICON icon, POINT place, int size, COLORREF ink);

}  // namespace pelvaro::win32
