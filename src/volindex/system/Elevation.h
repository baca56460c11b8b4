// Whether more rights may be asked for; see volindex_elevation.h.
#pragma once

#include <cstdint>

namespace volindex {

// Any thread. `ask` is one of TALLYSCOPE_ASK_…; forgets that the user has refused.
void SetElevation(int32_t ask);

}  // namespace volindex
