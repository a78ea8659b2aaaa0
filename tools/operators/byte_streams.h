// Standard input and output as bytes: nothing is translated on the way. One side for each system.
#pragma once

void useByteStreams();
