// Registration of the running application for the messages other applications address to it
// (exit 5005, reload 10041 and the like), as the application manager of the phone provides it.
#pragma once

// Makes every message that is broadcast to the running application's name (PLAppContext's
// application name) reach the application context's event dispatcher, and so the listeners of the
// application. Calling it again changes nothing; without an application name it does nothing.
void RegisterForIPC_APLaunchAppMsg();
