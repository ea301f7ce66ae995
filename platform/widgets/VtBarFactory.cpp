// Factories of top bars, scroll containers and date headers.
#include "VtBarFactory.h"

VtTopBarView* MakeVtTextTopBar(uint32_t id, PLPoint location, long width,
                               const PLBasicString<char>& title,
                               const PLBasicString<char>& secondText, long justification,
                               long style) {
    static_cast<void>(style);  // one look for now: the theme's band
    auto* bar = new VtTopBarView(id, location, width, title, secondText, false);
    bar->SetJustification(justification < 0 || justification > 2 ? 0 : justification);
    return bar;
}

VtTopBarView* MakeVtCheckTopBar(uint32_t id, PLPoint location, long width,
                                const PLBasicString<char>& title,
                                const PLBasicString<char>& checkLabel, long checkStatus,
                                long justification, long style) {
    static_cast<void>(style);
    auto* bar = new VtTopBarView(id, location, width, title, checkLabel, true);
    bar->SetCheckStatus(checkStatus, false);
    bar->SetJustification(justification < 0 || justification > 2 ? 0 : justification);
    return bar;
}

VtScrollContainer* MakeVtScrollContainer(uint32_t id, PLPoint location, PLSize size, bool vertical,
                                         bool horizontal, short barWidth, bool alwaysShowBar,
                                         const PLRect& margins, const VtAppearance* appearance,
                                         bool followFocus) {
    // The platform scrolls vertically only; the two flags are kept for callers that pass them.
    static_cast<void>(vertical);
    static_cast<void>(horizontal);
    auto* container =
        new VtScrollContainer(id, location, size, barWidth, alwaysShowBar, margins, followFocus);
    return VtApplyAppearance(container, appearance);
}

VtCalendarYearSelectControl* MakeCalendarYearSelectControl(uint32_t id, long type, PLDate* date,
                                                           const VtAppearance* appearance,
                                                           bool wrapAtLimits) {
    return VtApplyAppearance(new VtCalendarYearSelectControl(id, type, date, wrapAtLimits),
                             appearance);
}
