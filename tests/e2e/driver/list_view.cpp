#include "list_view.h"

#include <commctrl.h>

#include "window.h"

namespace list_view {
namespace {

// A block of memory in the process of a window.
class Lent {
 public:
  explicit Lent(HWND window) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
    if (process_) block_ = VirtualAllocEx(process_, nullptr, size, MEM_COMMIT, PAGE_READWRITE);
    if (!block_) {
      if (process_) CloseHandle(process_);
      throw Refused("no memory in the list's process");
    }
  }
  ~Lent() {
    VirtualFreeEx(process_, block_, 0, MEM_RELEASE);
    CloseHandle(process_);
  }
  Lent(const Lent&) = delete;
  Lent& operator=(const Lent&) = delete;

  char* at(size_t offset = 0) const { return static_cast<char*>(block_) + offset; }
  void write(const void* from, size_t bytes) const { WriteProcessMemory(process_, block_, from, bytes, nullptr); }
  void read(size_t offset, void* to, size_t bytes) const {
    ReadProcessMemory(process_, at(offset), to, bytes, nullptr);
  }

  static const size_t size = 4096;

 private:
  HANDLE process_ = nullptr;
  void* block_ = nullptr;
};

void needRow(HWND list, int row) {
  if (row < 0 || row >= rowCount(list)) throw Refused("the list has no row " + std::to_string(row));
}

}  // namespace

int rowCount(HWND list) { return static_cast<int>(ask(list, LVM_GETITEMCOUNT)); }

int columnCount(HWND list) {
  auto header = reinterpret_cast<HWND>(ask(list, LVM_GETHEADER));
  return header ? static_cast<int>(ask(header, HDM_GETITEMCOUNT)) : 1;
}

std::string itemText(HWND list, int row, int column) {
  needRow(list, row);
  Lent lent(list);
  const size_t textAt = 256, textSize = Lent::size - textAt;
  LVITEMA item = {};
  item.iSubItem = column;
  item.pszText = lent.at(textAt);
  item.cchTextMax = static_cast<int>(textSize);
  lent.write(&item, sizeof item);
  ask(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(lent.at()));
  // The list may hand out a text of its own instead of filling the buffer; the block then says where.
  lent.read(0, &item, sizeof item);
  std::string text(textSize, '\0');
  lent.read(static_cast<size_t>(item.pszText - lent.at()), text.data(), textSize - 1);
  text.resize(lstrlenA(text.c_str()));
  return text;
}

int selectedRow(HWND list) {
  return static_cast<int>(ask(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void select(HWND list, int row) {
  if (row >= 0) needRow(list, row);
  Lent lent(list);
  LVITEMA item = {};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  if (int old = selectedRow(list); old >= 0) {
    lent.write(&item, sizeof item);
    ask(list, LVM_SETITEMSTATE, static_cast<WPARAM>(old), reinterpret_cast<LPARAM>(lent.at()));
  }
  if (row < 0) return;
  item.state = LVIS_SELECTED | LVIS_FOCUSED;
  lent.write(&item, sizeof item);
  ask(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(lent.at()));
}

RECT rowRect(HWND list, int row) {
  needRow(list, row);
  ask(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
  Lent lent(list);
  RECT r = {};
  for (const LONG part : {LVIR_LABEL, LVIR_BOUNDS}) {
    r.left = part;
    lent.write(&r, sizeof r);
    ask(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(lent.at()));
    lent.read(0, &r, sizeof r);
    if (r.right > r.left) break;  // a first column without a width has no label to be seen
  }
  MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&r), 2);
  return r;
}

}  // namespace list_view
