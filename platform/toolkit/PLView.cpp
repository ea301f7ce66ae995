// Views: a theme view paints the current theme's background before anything else.
#include "PLView.h"

#include "PLTheme.h"

void PLThemeView::Draw(PLDrawContext& context) {
    PLThemeManager::GetCurrentTheme()->DrawViewBackground(context, *this);
}
