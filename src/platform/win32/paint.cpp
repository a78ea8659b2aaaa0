#include "platform/win32/paint.h"

#include <algorithm>

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

COLORREF mixed(COLORREF under, COLORREF over, int part, int whole) {
  const auto channel = [=](int from, int to) { return static_cast<BYTE>((from * (whole - part) + to * part) / whole); };
  return RGB(channel(GetRValue(under), GetRValue(over)), channel(GetGValue(under), GetGValue(over)),
             channel(GetBValue(under), GetBValue(over)));
}

// Colours a shape in a square, the pixels at its rim as far as it covers them, so that it is smooth at every size.
// `inside` is asked for points of a square from 0 to 1.
template <typename Inside>
void smooth(HDC dc, const RECT& box, COLORREF colour, Inside inside) {
  constexpr int kSteps = 4;  // a pixel is judged at that many points each way
  const double size = kSteps * static_cast<double>(box.right - box.left);
  for (LONG y = box.top; y < box.bottom; ++y) {
    for (LONG x = box.left; x < box.right; ++x) {
      int covered = 0;
      for (int i = 0; i < kSteps * kSteps; ++i) {
        const LONG right = (x - box.left) * kSteps + i % kSteps;
        const LONG down = (y - box.top) * kSteps + i / kSteps;
        covered += inside((right + 0.5) / size, (down + 0.5) / size);
      }
      if (covered) ::SetPixelV(dc, x, y, mixed(::GetPixel(dc, x, y), colour, covered, kSteps * kSteps));
    }
  }
}

// How far a colour of an icon counts as line, of 255: the dark and the strong ones wholly, the tints hardly.
int lineCover(COLORREF colour) {
  constexpr int kFull = 115, kNone = 215;  // brightness
  const int bright = (299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour)) / 1000;
  return std::clamp((kNone - bright) * 255 / (kNone - kFull), 0, 255);
}

struct Point {
  double x, y;
};

double square(double x) { return x * x; }

// The square of how far a point is from the straight line between two others.
double squaredDistance(Point p, Point from, Point to) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double along = std::clamp(((p.x - from.x) * dx + (p.y - from.y) * dy) / (square(dx) + square(dy)), 0.0, 1.0);
  return square(p.x - from.x - along * dx) + square(p.y - from.y - along * dy);
}

// Two strokes that meet in a corner, in a square box.
void angle(HDC dc, const RECT& box, COLORREF colour, double halfStroke, Point from, Point corner, Point to) {
  smooth(dc, box, colour, [&](double x, double y) {
    const Point p{x, y};
    return std::min(squaredDistance(p, from, corner), squaredDistance(p, corner, to)) <= square(halfStroke);
  });
}

// The width that a line of text takes when it is drawn. Wine draws some small fonts from their bitmaps and measures
// them by their outlines, up to a tenth apart, so a right-aligned text would end before its edge or be cut there.
LONG drawnWidth(HDC dc, std::string_view text) {
  LONG width = 0;
  for (const char c : text) {
    constexpr MAT2 kAsItIs{{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    GLYPHMETRICS glyph{};
    const bool plain = c >= ' ' && c <= '~';  // of others a byte may be a part of a character only
    if (!plain || ::GetGlyphOutlineA(dc, static_cast<UINT>(c), GGO_BITMAP, &glyph, 0, nullptr, &kAsItIs) == GDI_ERROR) {
      SIZE size{};
      ::GetTextExtentPoint32A(dc, text.data(), static_cast<int>(text.size()), &size);
      return size.cx;
    }
    width += glyph.gmCellIncX;
  }
  return width;
}

// Places a line that fits by the width that it is drawn with; one that does not is left to DrawText, which cuts it.
void placeLine(HDC dc, std::string_view text, RECT& area, UINT& format) {
  if (!(format & DT_SINGLELINE)) return;
  const LONG spare = area.right - area.left - drawnWidth(dc, text);
  if (spare < 0) return;
  if (format & DT_RIGHT) area.left += spare;
  if (format & DT_CENTER) area.left += spare / 2;
  format &= ~static_cast<UINT>(DT_RIGHT | DT_CENTER | DT_END_ELLIPSIS);
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

void disc(HDC dc, const RECT& box, COLORREF colour) {
  smooth(dc, box, colour, [](double x, double y) { return square(x - 0.5) + square(y - 0.5) <= square(0.5); });
}

void discFace(HDC dc, const RECT& box, COLORREF face, COLORREF edge, int width) {
  disc(dc, box, edge);
  disc(dc, {box.left + width, box.top + width, box.right - width, box.bottom - width}, face);
}

void tick(HDC dc, const RECT& box, COLORREF colour) {
  angle(dc, box, colour, 0.065, {0.27, 0.52}, {0.43, 0.68}, {0.74, 0.33});
}

void arrowDown(HDC dc, const RECT& box, COLORREF colour) {
  angle(dc, box, colour, 0.05, {0.25, 0.375}, {0.5, 0.625}, {0.75, 0.375});
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
  placeLine(dc, what, area, format);
  if (format & DT_WORDBREAK) format |= DT_EDITCONTROL | DT_END_ELLIPSIS;  // whole lines only
  ::DrawTextA(dc, what.data(), static_cast<int>(what.size()), &area, format | DT_NOPREFIX);
}

LONG textWidth(HDC dc, std::string_view what, HFONT font) {
  const Selected withFont(dc, font);
  return drawnWidth(dc, what);
}

void paintLines(HDC dc, HICON icon, POINT place, int size, COLORREF ink) {
  // Drawn on white, what it covers with white or with nothing comes out alike: no line.
  const RECT area{0, 0, size, size};
  const HDC memory = ::CreateCompatibleDC(dc);
  const HBITMAP bitmap = memoryBitmap(dc, area);
  {
    const Selected withBitmap(memory, bitmap);
    fill(memory, area, palette::kWhite);
    ::DrawIconEx(memory, 0, 0, icon, size, size, 0, nullptr, DI_NORMAL);
    for (int y = 0; y < size; ++y) {
      for (int x = 0; x < size; ++x) {
        const int covered = lineCover(::GetPixel(memory, x, y));
        if (covered == 0) continue;
        const COLORREF under = ::GetPixel(dc, place.x + x, place.y + y);
        ::SetPixelV(dc, place.x + x, place.y + y, mixed(under, ink, covered, 255));
      }
    }
  }
  ::DeleteObject(bitmap);
  ::DeleteDC(memory);
}

void paintPicture(HDC dc, ScreenMetrics& metrics, Picture what, const RECT& area, bool muted, COLORREF ink) {
  const int room = static_cast<int>(area.right - area.left);
  const bool contrast = metrics.highContrast();
  const HICON icon = metrics.icon(what, room, muted && !contrast);
  if (!icon) return;
  const int size = ScreenMetrics::iconSize(room);
  const POINT place{area.left + (room - size) / 2, area.top + (static_cast<int>(area.bottom - area.top) - size) / 2};
  if (contrast) return paintLines(dc, icon, place, size, ink);
  ::DrawIconEx(dc, place.x, place.y, icon, size, size, 0, nullptr, DI_NORMAL);
}

}  // namespace pelvaro::win32
