// Text boxes that refuse a character as windows: what is typed, what is pasted and what a program sets.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "platform/win32/control_window.h"
#include "platform/win32/form_window.h"

namespace pelvaro::win32 {
namespace {

constexpr ControlLayout kControls[] = {
    {.name = "Text1",
     .kind = ControlKind::textBox,
     .caption = "",
     .place = {8, 40, 90, 24},
     .refused = ',',
     .refusal = "No comma."},
    {.name = "Text2", .kind = ControlKind::textBox, .caption = "", .place = {8, 70, 90, 24}},
};
const FormLayout kLayout{.name = "Boxes",
                         .title = "Boxes",
                         .width = 200,
                         .height = 120,
                         .controls = kControls,
                         .rules = {},
                         .firstFocus = "Text1"};

struct Events : FormEvents, ControlEvents {};

struct TextBox : testing::Test {
  MessageLoop loop;
  FormScreen screen{loop};
  Events formEvents, events, otherEvents;
  std::shared_ptr<FormPeer> form = screen.createForm(kLayout, formEvents);
  std::shared_ptr<ControlPeer> box = form->createControl(kControls[0], events);
  std::shared_ptr<ControlPeer> plain = form->createControl(kControls[1], otherEvents);
  HWND Text1 = dynamic_cast<ControlWindow&>(*box).window(), Text2 = dynamic_cast<ControlWindow&>(*plain).window();
  // What the box says about a refusal is heard before the platform shows it.
  inline static WNDPROC below = nullptr;
  inline static std::wstring said;
  inline static int refusals = 0;

  TextBox() {
    form->show(false);
    loop.yield();
    said.clear();
    refusals = 0;
    below = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrA(Text1, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&TextBox::listen)));
    box->focus();
    loop.yield();
  }
  ~TextBox() override { ::SetWindowLongPtrA(Text1, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(below)); }
  static LRESULT CALLBACK listen(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
    if (number == EM_SHOWBALLOONTIP) {
      ++refusals;
      said = reinterpret_cast<const EDITBALLOONTIP*>(lParam)->pszText;
    }
    return ::CallWindowProcA(below, window, number, wParam, lParam);
  }
  static LRESULT tell(HWND window, UINT number, WPARAM wParam = 0, const char* text = nullptr) {
    return ::SendMessageA(window, number, wParam, reinterpret_cast<LPARAM>(text));
  }
  static void type(HWND window, const std::string& text) {
    for (const char c : text) ::SendMessageA(window, WM_CHAR, static_cast<unsigned char>(c), 1);
  }
  void copy(const std::string& text) const {
    ASSERT_TRUE(::OpenClipboard(screen.mainWindow()));
    ::EmptyClipboard();
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::memcpy(::GlobalLock(block), text.c_str(), text.size() + 1);
    ::GlobalUnlock(block);
    EXPECT_NE(::SetClipboardData(CF_TEXT, block), nullptr);
    ::CloseClipboard();
  }
  void copyNothing() const {
    ASSERT_TRUE(::OpenClipboard(screen.mainWindow()));
    ::EmptyClipboard();
    ::CloseClipboard();
  }
};

TEST_F(TextBox, TakesEverythingThatIsTypedButTheRefusedCharacter) {
  type(Text1, "a,b;,\xE9.");
  EXPECT_EQ(box->text(), "ab;\xE9.");
  EXPECT_EQ(refusals, 2);
  EXPECT_EQ(said, L"No comma.");
}

TEST_F(TextBox, ARefusedCharacterLeavesTheSelectionAlone) {
  box->setText("abc");
  ::SendMessageA(Text1, EM_SETSEL, 0, -1);
  type(Text1, ",");
  EXPECT_EQ(box->text(), "abc");
  type(Text1, "d");
  EXPECT_EQ(box->text(), "d") << "it was still selected";
}

TEST_F(TextBox, APastedTextComesInWithoutTheRefusedCharacter) {
  copy(",10,5, x,");
  box->setText("[old]");
  ::SendMessageA(Text1, EM_SETSEL, 1, 4);
  tell(Text1, WM_PASTE);
  EXPECT_EQ(box->text(), "[105 x]");
  EXPECT_EQ(refusals, 1);
  tell(Text1, EM_UNDO);
  EXPECT_EQ(box->text(), "[old]");
}

TEST_F(TextBox, APastedTextWithoutTheRefusedCharacterComesInAsItIs) {
  copy("10;5 \xE9");
  box->setText("old ");
  ::SendMessageA(Text1, EM_SETSEL, 4, 4);
  tell(Text1, WM_PASTE);
  EXPECT_EQ(box->text(), "old 10;5 \xE9");
  EXPECT_EQ(refusals, 0);
}

TEST_F(TextBox, PastingFromAnEmptyClipboardChangesNothing) {
  copyNothing();
  box->setText("old");
  ::SendMessageA(Text1, EM_SETSEL, 0, -1);
  tell(Text1, WM_PASTE);
  EXPECT_EQ(box->text(), "old");
  EXPECT_EQ(refusals, 0);
}

TEST_F(TextBox, WhatAProgramSetsStaysAsItIs) {
  box->setText("a,b");
  EXPECT_EQ(box->text(), "a,b");
  tell(Text1, WM_SETTEXT, 0, "c,d");
  EXPECT_EQ(box->text(), "c,d");
  ::SendMessageA(Text1, EM_SETSEL, 0, -1);
  tell(Text1, EM_REPLACESEL, FALSE, "e,f");
  EXPECT_EQ(box->text(), "e,f");
  EXPECT_EQ(refusals, 0);
}

TEST_F(TextBox, ThatRefusesNothingTakesAll) {
  type(Text2, "a,");
  copy("b,c");
  tell(Text2, WM_PASTE);
  EXPECT_EQ(plain->text(), "a,b,c");
}

TEST_F(TextBox, ShiftAndInsertPasteTheSameWay) {
  copy("10,5");
  BYTE keys[256] = {};
  keys[VK_SHIFT] = keys[VK_LSHIFT] = 0x80;
  ::SetKeyboardState(keys);
  tell(Text1, WM_KEYDOWN, VK_INSERT);
  keys[VK_SHIFT] = keys[VK_LSHIFT] = 0;
  ::SetKeyboardState(keys);
  EXPECT_EQ(box->text(), "105");
  EXPECT_EQ(refusals, 1);
}

TEST_F(TextBox, OnlyTheFirstLineOfATextIsPasted) {
  for (const char* text : {"10,5\r\nsecond", "10,5\nsecond", "105\r\nsecond, third"}) {
    copy(text);
    box->setText("");
    tell(Text1, WM_PASTE);
    EXPECT_EQ(box->text(), "105");
  }
}

}  // namespace
}  // namespace pelvaro::win32
