#include "platform/win32/button_window.h"

#include <utility>

#include "platform/win32/paint.h"

namespace pelvaro::win32 {

namespace {

constexpr int kPictureSize = 32, kPictureTop = 8, kCaptionTop = 40, kCaptionBottom = 60;
// Of a button that is too low for that: its picture stands before the caption.
constexpr int kLowButton = 48, kSidePictureSize = 24, kSidePictureLeft = 6, kSideCaptionLeft = 36;
constexpr int kPictureRadius = 4, kButtonRadius = 3, kFocusInset = 4, kMarkGlyph = 10;

}  // namespace

ButtonWindow::ButtonWindow(const ControlLayout& layout, ControlEvents& events, const ControlSurroundings& surroundings)
    : ControlWindow(layout, events, surroundings) {
  create("BUTTON", BS_OWNERDRAW | WS_TABSTOP);
}

// By us or by a script.
void ButtonWindow::textChanged() {
  repaint();
  if (hasTooltip()) tellTooltip(TTM_UPDATETIPTEXTA, text_.data());
}

void ButtonWindow::command(WORD notification) {
  if (notification == BN_CLICKED) loop_.guarded([this] { events_.clicked(); });
}

LRESULT ButtonWindow::message(UINT number, WPARAM wParam, LPARAM lParam) {
  const int x = GET_X_LPARAM(lParam);
  const int y = GET_Y_LPARAM(lParam);
  switch (number) {
    case WM_MOUSEMOVE:
      hover(true);
      loop_.guarded([&] { events_.mouseMoved(MouseButton::none, x, y); });
      break;
    case WM_MOUSELEAVE:
      hover(false);
      // The pointer may leave the form with it, and only a move over the form gives the pictures their rest.
      if (isPicture()) loop_.guarded([this] { formEvents_.mouseMoved(MouseButton::none, 0, 0); });
      break;
    case WM_LBUTTONDBLCLK: number = WM_LBUTTONDOWN; [[fallthrough]];  // the second of two quick clicks is a click too
    case WM_LBUTTONDOWN: loop_.guarded([&] { events_.mousePressed(MouseButton::left, x, y); }); break;
    case WM_LBUTTONUP: loop_.guarded([&] { events_.mouseReleased(MouseButton::left, x, y); }); break;
    case WM_CAPTURECHANGED: loop_.guarded([&] { events_.mouseReleased(MouseButton::none, 0, 0); }); break;
    case WM_SETTEXT: {
      const LRESULT result = passOn(number, wParam, lParam);
      textChanged();
      return result;
    }
    case kFormShown:
      // Not before: the first window does not wait for it.
      if (isPicture() && wParam && !hasTooltip()) tellTooltip(TTM_ADDTOOLA, text_.data());
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE: repaint(); break;
    case WM_ERASEBKGND: return 1;
    // Enter presses the button that has the focus.
    case WM_GETDLGCODE: return DLGC_BUTTON | (focused() ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
    case BM_SETSTYLE: return 0;  // dialogs try to make it a default button; it stays owner-drawn
    default: break;
  }
  return passOn(number, wParam, lParam);
}

void ButtonWindow::draw(DRAWITEMSTRUCT& item) {
  const RECT area = client();
  const bool pressed = (item.itemState & ODS_SELECTED) != 0 || look_ == Look::pressed;
  const Canvas canvas(item.hDC, area);
  fill(canvas.dc(), area, formColour());  // the corners show the form
  if (isMark()) {
    drawMark(canvas.dc(), area, pressed);
  } else {
    drawFace(canvas.dc(), area, pressed);
  }
}

void ButtonWindow::drawFace(HDC dc, const RECT& area, bool pressed) {
  const bool contrast = metrics_.highContrast();
  const bool hover = isPicture() ? look_ == Look::hover : hovered_;
  COLORREF face = isPicture() ? palette::kTint : colours_.background;
  COLORREF edge = isPicture() ? palette::kHairline : palette::kEdge;
  COLORREF content = colours_.text;
  int width = 1;
  if (!enabled()) {
    if (isPicture()) face = formColour();
    edge = palette::kHairline;
    content = contrast ? ::GetSysColor(COLOR_GRAYTEXT) : palette::kMuted;
  } else if (pressed) {
    face = isPicture() ? palette::kPressed : palette::kButtonPressed;
    edge = palette::kText;
  } else if (hover) {
    face = isPicture() ? palette::kWhite : palette::kButtonHover;
    edge = isPicture() ? palette::kEdge : palette::kAccent;
  }
  if (focused() || (default_ && enabled())) {
    width = metrics_.ringWidth();
    edge = palette::kText;
  }
  if (contrast) {
    face = isPicture() ? formColour() : colours_.background;
    edge = focused() ? ::GetSysColor(COLOR_HIGHLIGHT) : colours_.text;
    width = hover || focused() ? 2 : width;
  }
  roundFace(dc, area, scaled(isPicture() ? kPictureRadius : kButtonRadius), face, edge, width);
  if (focused()) {
    RECT inner = area;
    ::InflateRect(&inner, -scaled(kFocusInset), -scaled(kFocusInset));
    dotted(dc, inner, content);
  }
  RECT inside = area;
  if (pressed && isPicture()) ::OffsetRect(&inside, 1, 1);
  drawContent(dc, inside, content);
}

void ButtonWindow::drawContent(HDC dc, RECT area, COLORREF colour) {
  const UINT line = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS;
  if (isPicture() && layout_.place.height < kLowButton) {
    const int size = scaled(kSidePictureSize);
    const LONG left = area.left + scaled(kSidePictureLeft);
    const LONG top = area.top + (area.bottom - area.top - size) / 2;
    paintPicture(dc, metrics_, picture_, {left, top, left + size, top + size}, !enabled(), colour);
    area.left += scaled(kSideCaptionLeft);
    return paintText(dc, text_, area, metrics_.font(), colour, line);
  }
  if (isPicture()) {
    const int size = scaled(kPictureSize);
    const LONG left = area.left + ((area.right - area.left) - size) / 2;
    const LONG top = area.top + scaled(kPictureTop);
    paintPicture(dc, metrics_, picture_, {left, top, left + size, top + size}, !enabled(), colour);
    const LONG above = area.top;
    area.top = above + scaled(kCaptionTop);
    area.bottom = above + scaled(kCaptionBottom);
  }
  paintText(dc, text_, area, metrics_.font(), colour, line | DT_CENTER);
}

void ButtonWindow::drawMark(HDC dc, const RECT& area, bool pressed) {
  const bool close = layout_.kind == ControlKind::closeMark;
  const bool contrast = metrics_.highContrast();
  COLORREF ground = formColour();
  COLORREF glyph = colours_.text;
  if (!contrast && pressed) {
    ground = close ? palette::kStopPressed : palette::kMarkPressed;
  } else if (!contrast && hovered_) {
    ground = close ? palette::kStop : palette::kMarkHover;
  }
  if (close && ground != formColour()) glyph = palette::kWhite;
  fill(dc, area, ground);
  const int size = scaled(kMarkGlyph);
  const int left = static_cast<int>(area.left + area.right - size) / 2;
  const int top = static_cast<int>(area.top + area.bottom - size) / 2;
  const int stroke = scaled(1) + (metrics_.dpi() >= 144 ? 1 : 0);
  if (close) {
    // Two strokes of small steps: sharper than the slanted lines of the platform.
    for (int i = 0; i < size; ++i) {
      fill(dc, {left + i, top + i, left + i + stroke + 1, top + i + 1}, glyph);
      fill(dc, {left + size - 1 - i, top + i, left + size + stroke - i, top + i + 1}, glyph);
    }
  } else {
    fill(dc, {left, top + size - stroke - 1, left + size, top + size}, glyph);
  }
  RECT ring = area;
  ::InflateRect(&ring, -2, -2);
  if (focused()) dotted(dc, ring, glyph);
  if (contrast && hovered_) frame(dc, area, colours_.text, 2);
}

}  // namespace pelvaro::win32
