#include "../system_calls.h"

#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>

void useByteStreams() {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
}

bool moveOver(const std::string& from, const std::string& to) {
  return ::MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING);
}
