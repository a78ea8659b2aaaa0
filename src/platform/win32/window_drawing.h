// What a window draws, by itself and not on the screen. For tests.
#pragma once

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

struct WindowDrawing {
  WindowDrawing(HWND window, int w, int h) : width(w), height(h) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    before = ::SelectObject(dc, bitmap);
    ::SendMessageA(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
  }
  ~WindowDrawing() {
    ::SelectObject(dc, before);
    ::DeleteObject(bitmap);
    ::DeleteDC(dc);
  }
  WindowDrawing(const WindowDrawing&) = delete;
  WindowDrawing& operator=(const WindowDrawing&) = delete;
  COLORREF at(int x, int y) const { return ::GetPixel(dc, x, y); }
  // How many pixels have a colour.
  int count(COLORREF colour) const {
    int found = 0;
    for (int i = 0; i < width * height; ++i) found += at(i % width, i / width) == colour;
    return found;
  }

  const int width, height;
  HDC dc = ::CreateCompatibleDC(nullptr);
  HBITMAP bitmap;
  HGDIOBJ before;
};

}  // namespace pelvaro::win32
