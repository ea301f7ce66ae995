// Makes the platform's input method manager; the caller owns it.
#pragma once

#include "IMEManager.h"

class IMEManagerFactory {
public:
    static IMEManager* createIMEManager();
};
