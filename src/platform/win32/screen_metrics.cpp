#include "platform/win32/screen_metrics.h"

#include <cstring>

#include "platform/win32/resource_ids.h"

namespace pelvaro::win32 {

namespace {

constexpr int kIconSizes[] = {96, 72, 64, 60, 48, 40, 32, 24, 20, 16};  // 16, 32 and 48 at 100 to 200 %

int resourceId(Picture picture, bool muted) {
  int id = 0;
  switch (picture) {
    case Picture::none: return 0;
    case Picture::application: id = PELVARO_ICON_APPLICATION; break;
    case Picture::add: id = PELVARO_ICON_ADD; break;
    case Picture::connect: id = PELVARO_ICON_CONNECT; break;
    case Picture::hangUp: id = PELVARO_ICON_HANG_UP; break;
    case Picture::limits: id = PELVARO_ICON_LIMITS; break;
    case Picture::signIn: id = PELVARO_ICON_SIGN_IN; break;
    case Picture::cable: id = PELVARO_ICON_CABLE; break;
    case Picture::driver: id = PELVARO_ICON_DRIVER; break;
    case Picture::dialing: id = PELVARO_ICON_DIALING; break;
    case Picture::failed: id = PELVARO_ICON_FAILED; break;
    case Picture::listEntry: id = PELVARO_ICON_LIST_ENTRY; break;
    case Picture::connected: id = PELVARO_ICON_CONNECTED; break;
    case Picture::disconnected: id = PELVARO_ICON_DISCONNECTED; break;
  }
  const bool hasMuted = picture == Picture::connect;  // the one button that is ever disabled
  return muted && hasMuted ? id + PELVARO_ICON_MUTED : id;
}

int CALLBACK faceFound(const LOGFONTA*, const TEXTMETRICA*, DWORD, LPARAM result) {
  *reinterpret_cast<bool*>(result) = true;
  return 0;
}

// Whether the system has a font of this face.
bool hasFace(const char* face) {
  const HDC screen = ::GetDC(nullptr);
  LOGFONTA wanted{};
  wanted.lfCharSet = DEFAULT_CHARSET;
  std::strncpy(wanted.lfFaceName, face, LF_FACESIZE - 1);
  bool found = false;
  ::EnumFontFamiliesExA(screen, &wanted, &faceFound, reinterpret_cast<LPARAM>(&found), 0);
  ::ReleaseDC(nullptr, screen);
  return found;
}

}  // namespace

ScreenMetrics::ScreenMetrics() {
  const HDC screen = ::GetDC(nullptr);
  dpi_ = ::GetDeviceCaps(screen, LOGPIXELSX);
  NONCLIENTMETRICSA metrics{};
  metrics.cbSize = sizeof metrics;
  ::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
  LOGFONTA face = metrics.lfMessageFont;
  font_ = ::CreateFontIndirectA(&face);
  const char* semibold = "Segoe UI Semibold";
  if (std::strcmp(face.lfFaceName, "Segoe UI") == 0 && hasFace(semibold)) {
    std::strncpy(face.lfFaceName, semibold, LF_FACESIZE - 1);
  } else {
    face.lfWeight = FW_BOLD;
  }
  boldFont_ = ::CreateFontIndirectA(&face);
  const HGDIOBJ before = ::SelectObject(screen, font_);
  TEXTMETRICA text{};
  ::GetTextMetricsA(screen, &text);
  fontHeight_ = text.tmHeight;
  ::SelectObject(screen, before);
  ::ReleaseDC(nullptr, screen);
}

ScreenMetrics::~ScreenMetrics() {
  for (int i = 0; i < iconCount_; ++i) ::DestroyIcon(icons_[i].handle);
  ::DeleteObject(font_);
  ::DeleteObject(boldFont_);
}

RECT ScreenMetrics::scaled(const Rect96& place) const {
  return {scaled(place.x), scaled(place.y), scaled(place.x + place.width), scaled(place.y + place.height)};
}

bool ScreenMetrics::highContrast() const {
  HIGHCONTRASTA info{};
  info.cbSize = sizeof info;
  return ::SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof info, &info, 0) && (info.dwFlags & HCF_HIGHCONTRASTON);
}

int ScreenMetrics::iconSize(int size) {
  for (const int drawn : kIconSizes) {
    if (drawn <= size) return drawn;
  }
  return kIconSizes[std::size(kIconSizes) - 1];
}

HICON ScreenMetrics::icon(Picture picture, int size, bool muted) {
  const int drawn = iconSize(size);
  for (int i = 0; i < iconCount_; ++i) {
    const CachedIcon& cached = icons_[i];
    if (cached.picture == picture && cached.size == drawn && cached.muted == muted) return cached.handle;
  }
  const int id = resourceId(picture, muted);
  if (id == 0 || iconCount_ == kMostIcons) return nullptr;
  const auto handle = static_cast<HICON>(
      ::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), IMAGE_ICON, drawn, drawn, LR_DEFAULTCOLOR));
  if (handle) icons_[iconCount_++] = {picture, drawn, muted, handle};
  return handle;
}

}  // namespace pelvaro::win32
