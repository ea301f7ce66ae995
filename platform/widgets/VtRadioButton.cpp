// Radio buttons: the theme's circle as their mark.
#include "VtRadioButton.h"

#include "VtTheme.h"

void VtRadioButton::DrawMark(const VtTheme& theme, PLDrawContext& context,
                             const PLRect& mark) const {
    theme.DrawRadio(context, mark, IsOn(), IsPressed(), IsActive());
}
