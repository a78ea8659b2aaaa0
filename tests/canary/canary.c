/* Shows that this Windows environment can be trusted: a Wine that cannot draw, or that runs nothing at all, would let
 * every other test pass in silence. Exits with 7 after one pixel drawn in memory was read back as it was drawn. */
#include <windows.h>

int main(void) {
  const COLORREF colour = RGB(17, 119, 221);
  HDC dc = CreateCompatibleDC(NULL);
  if (!dc) return 11;

  BITMAPINFO info = {{sizeof info.bmiHeader, 4, -4, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {{0, 0, 0, 0}}};
  void* bits = NULL;
  HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, NULL, 0);
  if (!bitmap || !bits) return 12;
  if (!SelectObject(dc, bitmap)) return 13;

  SetPixel(dc, 2, 1, colour);
  GdiFlush();
  if (GetPixel(dc, 2, 1) != colour) return 14;
  if ((((const DWORD*)bits)[1 * 4 + 2] & 0xFFFFFF) != 0x1177DD) return 15;
  return 7;
}
