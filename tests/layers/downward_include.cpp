// Compiled against the datasets layer: the data model lies below it, so this builds.
#include "model/session.h"
