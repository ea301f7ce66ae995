// Check boxes: the theme's box as their mark.
#include "VtCheckbox.h"

#include "VtTheme.h"

void VtCheckbox::DrawMark(const VtTheme& theme, PLDrawContext& context, const PLRect& mark) const {
    theme.DrawCheckBox(context, mark, IsChecked(), IsPressed(), IsActive());
}
