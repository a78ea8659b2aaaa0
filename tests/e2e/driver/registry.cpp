// Commands for the registry: what a program has left there, and what it is to find.
#include <windows.h>

#include "command.h"
#include "window.h"

namespace {

struct Key {
  HKEY root;
  std::string path;
};

Key keyOf(const std::string& name) {
  const auto slash = name.find('\\');
  const std::string root = name.substr(0, slash), path = slash == std::string::npos ? "" : name.substr(slash + 1);
  if (root == "HKCU") return {HKEY_CURRENT_USER, path};
  if (root == "HKLM") return {HKEY_LOCAL_MACHINE, path};
  throw Refused("a key begins with HKCU or HKLM: " + name);
}

// Texts behind each other, each with its NUL, possibly empty ones; one more NUL at the end.
void listOf(const std::string& bytes, Json& answer) {
  answer.array();
  for (size_t at = 0; at + 1 < bytes.size();) {
    const auto end = bytes.find('\0', at);
    answer.text(bytes.substr(at, end - at));
    at = end == std::string::npos ? bytes.size() : end + 1;
  }
  answer.end(']');
}

void registry(const Arguments& a, Json& answer) {
  const Key key = keyOf(a[0]);
  HKEY opened = nullptr;
  std::string bytes(65536, '\0');
  DWORD type = REG_NONE, size = static_cast<DWORD>(bytes.size());
  bool found = RegOpenKeyExA(key.root, key.path.c_str(), 0, KEY_QUERY_VALUE, &opened) == ERROR_SUCCESS;
  if (found) {
    found = RegQueryValueExA(opened, a[1].c_str(), nullptr, &type, reinterpret_cast<BYTE*>(bytes.data()), &size) ==
            ERROR_SUCCESS;
    RegCloseKey(opened);
  }
  bytes.resize(found ? size : 0);
  if (!found) {
    answer.null();
  } else if (type == REG_MULTI_SZ) {
    listOf(bytes, answer);
  } else {
    answer.text(bytes.substr(0, bytes.find('\0')));
  }
}

void registrySet(const Arguments& a, Json& answer) {
  const Key key = keyOf(a[0]);
  HKEY opened = nullptr;
  if (RegCreateKeyExA(key.root, key.path.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened, nullptr) !=
      ERROR_SUCCESS)
    throw Refused("the key cannot be opened: " + a[0]);
  const auto result = RegSetValueExA(opened, a[1].c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(a[2].c_str()),
                                     static_cast<DWORD>(a[2].size() + 1));
  RegCloseKey(opened);
  answer.boolean(result == ERROR_SUCCESS);
}

// A key without keys below it, or one value. False when there was none.
void registryDelete(const Arguments& a, Json& answer) {
  const Key key = keyOf(a[0]);
  if (a.size() < 2) {
    answer.boolean(RegDeleteKeyA(key.root, key.path.c_str()) == ERROR_SUCCESS);
    return;
  }
  HKEY opened = nullptr;
  bool done = RegOpenKeyExA(key.root, key.path.c_str(), 0, KEY_SET_VALUE, &opened) == ERROR_SUCCESS;
  if (done) {
    done = RegDeleteValueA(opened, a[1].c_str()) == ERROR_SUCCESS;
    RegCloseKey(opened);
  }
  answer.boolean(done);
}

const Command table[] = {
    {"registry", "KEY VALUE", 2, registry},
    {"registry-set", "KEY VALUE TEXT", 3, registrySet},
    {"registry-delete", "KEY [VALUE]", 1, registryDelete},
};

}  // namespace

std::span<const Command> registryCommands() { return table; }
