// The reference of the scrambling's figures: one plain pass over bytes, one at a time.
#pragma once

#include <string>
#include <string_view>

namespace pelvaro {

// Every byte through a table, into a text that is as long already.
void scalarPass(std::string_view from, std::string& to);

}  // namespace pelvaro
