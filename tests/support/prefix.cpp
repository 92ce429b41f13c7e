// The object that the headers compiled in advance belong to.
#include "support/prefix.h"
