// calendar-sim: the phone on a desktop. See PLHostSimulator.h for what it does and
// PLHostScript.h for its script language.
#include <cstdio>
#include <string>

#include "PLHostOptions.h"
#include "PLHostSimulator.h"

int main(int argc, char** argv) {
    PLHostOptions options;
    std::string error;
    if (!PLHostOptions::Parse(argc, argv, options, error)) {
        std::fprintf(stderr, "calendar-sim: %s\n%s", error.c_str(), PLHostOptions::Usage());
        return 2;
    }
    if (options.help) {
        std::fputs(PLHostOptions::Usage(), stdout);
        return 0;
    }
    PLHostSimulator simulator(options);
    int status = 0;
    if (!simulator.Start(error, status)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        simulator.Stop();
        return status;
    }
    status = simulator.Run();
    simulator.Stop();
    return status;
}
