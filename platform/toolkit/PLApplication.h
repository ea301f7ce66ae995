// The application object: owns the root view, hears the views' messages and unhandled keys.
#pragma once

#include <memory>

#include "PLComponent.h"
#include "PLTypes.h"

class PLView;

class PLApplication : public PLComponent {
public:
    PLApplication();
    ~PLApplication() override;

    // Makes the root view (the whole screen) and hands it to the screen.
    virtual void Initialize();
    PLView* GetRootView() const { return mRootView.get(); }

    void Listen(PLMessage* message) override;
    // Keys that the event loop's target did not handle; true when handled.
    virtual bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers);

private:
    std::unique_ptr<PLView> mRootView;
};
