// The popup of a menu: a box of entries shown on top of the root view, run modally in a nested
// event loop until an entry is chosen or the user taps outside. Keys: up and down move the
// highlight, ok chooses it, left and right close the popup without a choice.
#pragma once

#include <cstddef>
#include <vector>

#include "PLView.h"

class PLMenu;
class PLFont;

class VtMenuPopup : public PLView {
public:
    // Placement of the box against the anchor rectangle (screen coordinates).
    enum class Placement { Above, Below };

    VtMenuPopup(PLMenu& menu, const PLRect& anchor, Placement placement, bool markSelected);

    // Shows the popup for `menu` next to `anchor` and waits. Returns the chosen 1-based entry
    // index, or 0 when nothing was chosen (also for a menu without entries, which opens nothing).
    static size_t Run(PLMenu& menu, const PLRect& anchor, Placement placement, bool markSelected);

    // The box in popup coordinates (the popup itself covers the whole screen).
    const PLRect& GetBox() const { return mBox; }
    // 1-based index of the entry under a popup-local point, 0 when none.
    size_t EntryAt(PLPoint local) const;

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    const char* GetClassName() const override { return "VtMenuPopup"; }

    static constexpr int kRowHeight = 30;

private:
    void Layout(const PLRect& anchor, Placement placement);
    void DrawEntry(PLDrawContext& context, size_t index, const PLRect& row);
    void Finish(size_t chosen);
    void MoveHighlight(int delta);
    void ScrollToShow(size_t index);
    bool IsChoosable(size_t index) const;

    PLMenu& mMenu;
    PLFont* mFont;
    PLRect mBox;
    size_t mVisible = 1;
    size_t mFirst = 1;      // first entry shown
    size_t mHighlight = 0;  // 1-based, 0 none
    size_t mPressed = 0;    // entry under the pen since the pen went down
    bool mMarkSelected;
    bool mDone = false;
    size_t mChosen = 0;
    int mDragStart = -1;  // pen y at the press, for drag scrolling
    size_t mDragFirst = 1;
    bool mDragging = false;
};
