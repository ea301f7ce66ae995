// One line of the detail view: its caption on the left, its value (wrapped over as many lines as
// it needs) on the right, an optional colour swatch before the value and a rule below.
#pragma once

#include "PLView.h"
#include "event/VtCalendarDetailText.h"

class VtStaticText;

class VtCalendarDetailRowPane : public PLView {
public:
    // The row at `top` of its parent, `width` wide, high enough for its whole value.
    VtCalendarDetailRowPane(const VtCalendarDetailRow& row, int top, int width);

    VtStaticText* GetValuePane() const { return mValue; }

    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtCalendarDetailRowPane"; }

    // Pixels a value needs in a column `width` wide: one line, or every wrapped line.
    // The text shown for a row's value in a column `width` wide (see dateAndTime).
    static PLBasicString<char> ShownValue(const VtCalendarDetailRow& row, int width);
    static int ValueHeight(const PLBasicString<char>& value, bool multiLine, int width);

private:
    VtStaticText* mValue;  // sub-pane
    bool mSwatch;
    PLRGBColor mColour;
};
