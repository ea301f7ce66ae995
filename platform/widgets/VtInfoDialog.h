// A notice or question: an icon, a title, a message and one or two buttons.
#pragma once

#include "VtBaseDialog.h"

class PLBitmap;

class VtInfoDialog : public VtBaseDialog {
public:
    // `extent`: height and width of the box; a height of 0 fits the box to its texts.
    VtInfoDialog(uint32_t id, PLSize extent, const PLBitmap* icon, const PLBasicString<char>& title,
                 const PLBasicString<char>& message);

    const PLBasicString<char>& GetMessage() const { return mMessage; }
    // Fits a box of height 0 to the texts (called once the buttons are added).
    void FitHeight();

    const char* GetClassName() const override { return "VtInfoDialog"; }

protected:
    void DrawContent(PLDrawContext& context, const PLRect& area) override;

private:
    int TextLeft(const PLRect& area) const;

    const PLBitmap* mIcon;  // not owned: resources belong to their manager
    PLBasicString<char> mMessage;
    int mRequestedHeight;
};
