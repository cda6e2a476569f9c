// Compiled against the data model alone: the load sequence lies above it, so this must not build.
#include "job/load_sequence.h"
