// Ending the application's event loops on request (the exit path of every application).
#include "PLEventDispatcher.h"

#include "PLAppContext.h"
#include "PLEventLoop.h"

void PLEventDispatcher::ShutdownEventLoops() {
    PLAppContext::GetInstance()->GetEventLoop().Shutdown();
}
