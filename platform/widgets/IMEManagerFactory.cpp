// The input method manager's factory.
#include "IMEManagerFactory.h"

IMEManager* IMEManagerFactory::createIMEManager() {
    return new IMEManager();
}
