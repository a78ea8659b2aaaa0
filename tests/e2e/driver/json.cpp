#include "json.h"

#include <windows.h>

#include <cstdio>
#include <vector>

void Json::separate() {
  if (!out_.empty() && out_.back() != '{' && out_.back() != '[' && out_.back() != ':') out_ += ',';
}

Json& Json::open(char bracket) {
  separate();
  out_ += bracket;
  return *this;
}

Json& Json::end(char bracket) {
  out_ += bracket;
  return *this;
}

Json& Json::key(std::string_view name) {
  separate();
  quote(name);
  out_ += ':';
  return *this;
}

Json& Json::text(std::string_view value) {
  separate();
  quote(value);
  return *this;
}

Json& Json::number(long long value) {
  separate();
  out_ += std::to_string(value);
  return *this;
}

Json& Json::boolean(bool value) {
  separate();
  out_ += value ? "true" : "false";
  return *this;
}

Json& Json::null() {
  separate();
  out_ += "null";
  return *this;
}

// Everything but printable ASCII leaves as \uXXXX, so that the line is ASCII whatever the reader's encoding.
void Json::quote(std::string_view value) {
  int length = static_cast<int>(value.size());
  std::vector<wchar_t> wide(value.size() + 1);
  int count = length == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, value.data(), length, wide.data(), length);
  out_ += '"';
  for (int i = 0; i < count; ++i) {
    wchar_t c = wide[i];
    if (c == L'"' || c == L'\\') {
      out_ += '\\';
      out_ += static_cast<char>(c);
    } else if (c >= 32 && c < 127) {
      out_ += static_cast<char>(c);
    } else {
      char code[8];
      std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(c));
      out_ += code;
    }
  }
  out_ += '"';
}
