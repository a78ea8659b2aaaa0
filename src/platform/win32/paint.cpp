#include "platform/win32/paint.h"

namespace pelvaro::win32 {

namespace {

// Keeps what was selected into a device context and puts it back.
struct Selected {
  Selected(HDC dc, HGDIOBJ object) : dc_(dc), before_(::SelectObject(dc, object)) {}
  ~Selected() { ::SelectObject(dc_, before_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;
  HDC dc_;
  HGDIOBJ before_;
};

// In memory of our own: blending icons into a bitmap of the screen would fetch every pixel back from it.
HBITMAP memoryBitmap(HDC target, const RECT& area) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = area.right - area.left;
  info.bmiHeader.biHeight = area.top - area.bottom;  // negative: the first row is the topmost
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  return ::CreateDIBSection(target, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
}

}  // namespace

Canvas::Canvas(HDC target, const RECT& area)
    : target_(target),
      area_(area),
      dc_(::CreateCompatibleDC(target)),
      bitmap_(memoryBitmap(target, area)),
      before_(::SelectObject(dc_, bitmap_)) {
  ::SetViewportOrgEx(dc_, -area.left, -area.top, nullptr);
}

Canvas::~Canvas() {
  ::BitBlt(target_, area_.left, area_.top, area_.right - area_.left, area_.bottom - area_.top, dc_, area_.left,
           area_.top, SRCCOPY);
  ::SelectObject(dc_, before_);
  ::DeleteObject(bitmap_);
  ::DeleteDC(dc_);
}

void fill(HDC dc, const RECT& area, COLORREF colour) {
  ::SetBkColor(dc, colour);
  ::ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &area, "", 0, nullptr);
}

void frame(HDC dc, const RECT& area, COLORREF colour, int width) {
  fill(dc, {area.left, area.top, area.right, area.top + width}, colour);
  fill(dc, {area.left, area.bottom - width, area.right, area.bottom}, colour);
  fill(dc, {area.left, area.top, area.left + width, area.bottom}, colour);
  fill(dc, {area.right - width, area.top, area.right, area.bottom}, colour);
}

void roundFace(HDC dc, const RECT& area, int radius, COLORREF face, COLORREF edge, int width) {
  const HPEN pen = ::CreatePen(PS_INSIDEFRAME, width, edge);
  const HBRUSH brush = ::CreateSolidBrush(face);
  {
    const Selected withPen(dc, pen);
    const Selected withBrush(dc, brush);
    ::RoundRect(dc, area.left, area.top, area.right, area.bottom, 2 * radius, 2 * radius);
  }
  ::DeleteObject(pen);
  ::DeleteObject(brush);
}

void dotted(HDC dc, const RECT& area, COLORREF colour) {
  for (LONG x = area.left; x < area.right; x += 2) {
    ::SetPixelV(dc, x, area.top, colour);
    ::SetPixelV(dc, x, area.bottom - 1, colour);
  }
  for (LONG y = area.top; y < area.bottom; y += 2) {
    ::SetPixelV(dc, area.left, y, colour);
    ::SetPixelV(dc, area.right - 1, y, colour);
  }
}

void paintText(HDC dc, std::string_view what, RECT area, HFONT font, COLORREF colour, UINT format) {
  const Selected withFont(dc, font);
  ::SetBkMode(dc, TRANSPARENT);
  ::SetTextColor(dc, colour);
  ::DrawTextA(dc, what.data(), static_cast<int>(what.size()), &area, format | DT_NOPREFIX);
}

void paintPicture(HDC dc, ScreenMetrics& metrics, Picture what, const RECT& area, bool muted) {
  const int room = static_cast<int>(area.right - area.left);
  const HICON icon = metrics.icon(what, room, muted);
  if (!icon) return;
  const int size = ScreenMetrics::iconSize(room);
  ::DrawIconEx(dc, area.left + (room - size) / 2, area.top + (static_cast<int>(area.bottom - area.top) - size) / 2,
               icon, size, size, 0, nullptr, DI_NORMAL);
}

}  // namespace pelvaro::win32
