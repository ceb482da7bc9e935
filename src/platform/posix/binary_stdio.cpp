// binary_stdio.cpp - POSIX streams never translate line ends.
#include "platform/binary_stdio.h"

namespace zelstr::platform {

void use_binary_stdio() {}

}  // namespace zelstr::platform
