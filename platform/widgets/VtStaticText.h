// A text label. It paints nothing behind its text, so it shows its parent's background (or the
// theme's bitmap background when asked for one).
#pragma once

#include "PLPane.h"

class VtStaticText : public PLPane {
public:
    VtStaticText(uint32_t id, PLPoint location, PLSize size, const PLBasicString<char>& text,
                 long justification, bool multiLine);

    long GetJustification() const { return mJustification; }
    void SetJustification(long justification) { mJustification = justification; }
    bool IsMultiLine() const { return mMultiLine; }

    void Draw(PLDrawContext& context) override;
    // Labels let taps through to whatever lies below.
    bool HitTest(PLPoint) const override { return false; }
    const char* GetClassName() const override { return "VtStaticText"; }

private:
    long mJustification;
    bool mMultiLine;
};
