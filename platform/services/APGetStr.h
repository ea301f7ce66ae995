// Texts of the running application's resource files, by id.
#pragma once

#include <cstdint>

#include "PLBasicString.h"

// The text of `id` from the application context's resource managers. A missing id gives the
// visible marker "#ID" (so that a gap shows on screen instead of an empty label) and is reported
// once per id on standard error.
PLBasicString<char> APGetStr(uint32_t id);
