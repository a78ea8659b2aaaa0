#include "../byte_streams.h"

#include <fcntl.h>
#include <io.h>
#include <stdio.h>

void useByteStreams() {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
}
