// The look of the platform's panes: colours and the bitmap background. The widget library installs
// the phone's theme; the toolkit falls back to a plain one.
#pragma once

#include "PLRGBColor.h"

class PLDrawContext;
class PLPane;

class PLTheme {
public:
    virtual ~PLTheme() = default;
    // Paints the background of a pane that asked for a bitmap background.
    virtual void DrawBmpBackground(PLDrawContext& context, const PLPane& pane) const;
    // Paints the background of a theme view.
    virtual void DrawViewBackground(PLDrawContext& context, const PLPane& pane) const;
    virtual PLRGBColor GetTextColor() const { return {0, 0, 0}; }
    virtual PLRGBColor GetBackgroundColor() const { return {255, 255, 255}; }
};

class PLThemeManager {
public:
    // The installed theme, or the toolkit's plain theme. Never null.
    static PLTheme* GetCurrentTheme();
    // Installs a theme (owned by the manager from now on); null restores the plain theme.
    static void SetCurrentTheme(PLTheme* theme);
};
