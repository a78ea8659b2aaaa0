// What the peers measure with: the screen's dpi, the system's message font, the program's icons.
#pragma once

#include "platform/control_peer.h"
#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

class ScreenMetrics {
 public:
  ScreenMetrics();
  ~ScreenMetrics();
  ScreenMetrics(const ScreenMetrics&) = delete;
  ScreenMetrics& operator=(const ScreenMetrics&) = delete;

  // A length at 96 dpi in pixels of this screen.
  int scaled(int length) const { return ::MulDiv(length, dpi_, 96); }
  // A rectangle, its edges scaled, so that columns stay flush at every dpi.
  RECT scaled(const Rect96& place) const;
  int dpi() const { return dpi_; }
  // 1 up to 144 dpi, 2 from 168 dpi.
  int lineWidth() const { return dpi_ >= 168 ? 2 : 1; }
  // 2, 3 at 144, 4 at 192 dpi.
  int ringWidth() const { return scaled(2); }

  HFONT font() const { return font_; }
  HFONT boldFont() const { return boldFont_; }
  int fontHeight() const { return fontHeight_; }
  bool highContrast() const;

  // The program's icon of a picture at the largest drawn size that fits into `size` pixels; null for none. `muted` asks
  // for the variant of a disabled control, where there is one.
  HICON icon(Picture picture, int size, bool muted);
  // The size that icon() gives for `size`.
  static int iconSize(int size);

 private:
  struct CachedIcon {
    Picture picture;
    int size;
    bool muted;
    HICON handle;
  };
  static constexpr int kMostIcons = 48;

  int dpi_ = 96;
  HFONT font_ = nullptr;
  HFONT boldFont_ = nullptr;
  int fontHeight_ = 0;
  CachedIcon icons_[kMostIcons]{};
  int iconCount_ = 0;
};

}  // namespace pelvaro::win32
