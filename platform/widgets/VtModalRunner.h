// Runs a pane modally: adds it on top of the screen's root view, makes it the key target, runs a
// nested event loop until the pane says it is done, then takes it off the screen again (the
// caller keeps ownership). Popups, dialogs and the date header's owners rely on it.
#pragma once

#include <functional>

class PLPane;

class VtModalRunner {
public:
    // The root view that modal panes are shown on, or null when no screen has one.
    static PLPane* Root();
    // Returns false when there was no root view or the loop ended for another reason than
    // `done` (the application is shutting down).
    static bool Run(PLPane& pane, const std::function<bool()>& done);
};
