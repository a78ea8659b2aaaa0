#include "../byte_streams.h"

void useByteStreams() {}
