// One screen of the gallery: a view under a title bar whose widgets report to it. Every message
// it hears is shown on the gallery's log line; a screen-specific handler then reacts.
#pragma once

#include <functional>
#include <string>

#include "PLView.h"

class GalleryApp;
class PLMessage;

class GalleryScreen : public PLView {
public:
    GalleryScreen(uint32_t id, GalleryApp& app);

    GalleryApp& GetApp() const { return mApp; }
    // Adds `pane` to the screen and makes the screen hear it.
    template <class Pane>
    Pane* Add(Pane* pane) {
        AddSubPane(pane, false);
        pane->AddListener(this);
        return pane;
    }
    void SetHandler(std::function<void(PLMessage&)> handler) { mHandler = std::move(handler); }
    // The pane that gets the keys while the screen is shown (the screen itself by default).
    void SetKeyTarget(PLPane* pane) { mKeyTarget = pane; }
    PLPane* GetKeyTarget() { return mKeyTarget != nullptr ? mKeyTarget : this; }

    void Listen(PLMessage* message) override;
    const char* GetClassName() const override { return "GalleryScreen"; }

    // "ctrl 101 1": the message kind (its four characters when printable), sender and value.
    static std::string Describe(const PLMessage& message);

private:
    GalleryApp& mApp;
    std::function<void(PLMessage&)> mHandler;
    PLPane* mKeyTarget = nullptr;
};
