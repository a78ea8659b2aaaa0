// A JSON text under construction: what the driver answers with. Texts go in as the ANSI code page has them.
#pragma once
#include <string>
#include <string_view>

class Json {
 public:
  Json& object() { return open('{'); }
  Json& array() { return open('['); }
  Json& end(char bracket);  // '}' or ']'
  Json& key(std::string_view name);
  Json& text(std::string_view value);
  Json& number(long long value);
  Json& boolean(bool value);
  Json& null();

  const std::string& str() const { return out_; }

 private:
  Json& open(char bracket);
  void separate();
  void quote(std::string_view value);

  std::string out_;
};
