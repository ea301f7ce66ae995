// A button of the widget library: a push or toggle control drawn from a bitmap family when it has
// one, else from the theme in one of the library's styles. A release inside the button sends
// "ctrl" (sender = its command id) to its listeners: push buttons with their value (0 unless set),
// toggle buttons with their new on state (1 or 0).
#pragma once

#include "PLBasicString.h"
#include "PLControl.h"
#include "VtAppearance.h"

class PLBitmapFamily;
class PLDrawContext;

// Behaviours a button can have.
constexpr long kVtButtonPush = 1;
constexpr long kVtButtonToggle = 2;

enum class VtButtonStyle {
    BmpView,  // a light face with centred text, sized by its bitmap family or its text
    Bar,      // a dark bottom-bar button
    General,  // a light, full-width form button
    Options,  // the options button of the bottom bar (three lines)
    Exit,     // the exit button of the bottom bar (a cross)
    Back,     // the back button of the bottom bar (an arrow)
};

class VtButton : public PLControl {
public:
    VtButton(uint32_t id, PLPoint location, PLSize size, VtButtonStyle style,
             PLBitmapFamily* family, const PLBasicString<char>& text, long behaviour);

    VtButtonStyle GetStyle() const { return mStyle; }
    long GetBehaviour() const { return mBehaviour; }
    bool IsToggle() const { return mBehaviour == kVtButtonToggle; }
    // The family is not owned; null draws from the theme.
    void SetFamily(PLBitmapFamily* family) { mFamily = family; }
    PLBitmapFamily* GetFamily() const { return mFamily; }
    void SetAppearance(const VtAppearance* appearance);

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtButton"; }

    // Acts as if the button had been tapped (keys on dialogs use it).
    void Press();

protected:
    // What a completed tap does; the popup buttons open their menu instead.
    virtual void Activate();
    void DrawFace(PLDrawContext& context);
    void DrawLabel(PLDrawContext& context);
    void DrawIcon(PLDrawContext& context);

private:
    VtButtonStyle mStyle;
    PLBitmapFamily* mFamily;
    long mBehaviour;
    VtAppearance mAppearance;
    bool mHasAppearance = false;
    bool mArmed = false;  // the pen went down on the button and has not come up yet
};
