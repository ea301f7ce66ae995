// A menu of the widget library: a toolkit menu that also knows how many rows its popup shows at
// once and which font it is drawn with. Entries are PLMenuItems (or VtComboMenuItems with a colour
// swatch); disabled entries are shown greyed and cannot be chosen.
#pragma once

#include "PLMenu.h"

class PLFont;

class VtMenu : public PLMenu {
public:
    VtMenu(const PLBasicString<char>& title, uint32_t id, long visibleRows = 6)
        : PLMenu(title, id), mVisibleRows(visibleRows < 1 ? 6 : visibleRows) {}

    long GetVisibleRows() const { return mVisibleRows; }
    void SetVisibleRows(long rows) { mVisibleRows = rows < 1 ? 1 : rows; }
    // Null draws with the theme's font.
    void SetFont(PLFont* font) { mFont = font; }
    PLFont* GetFont() const { return mFont; }

private:
    long mVisibleRows;
    PLFont* mFont = nullptr;
};
