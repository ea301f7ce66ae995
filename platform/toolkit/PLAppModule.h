// The three entry points every application module exports; the platform's application loader
// finds them with dlsym by these names.
#pragma once

#include "PLBasicString.h"

class PLAppContext;

extern "C" {
int InitApplication(PLAppContext* context);
int CleanupApplication(const PLAppContext* context);
int GetApplicationName(PLBasicString<char>& name);
}

using PLInitApplicationFn = int (*)(PLAppContext*);
using PLCleanupApplicationFn = int (*)(const PLAppContext*);
using PLGetApplicationNameFn = int (*)(PLBasicString<char>&);
