// Scroll containers: content pane and bar laid out for the current size, scrolling, and keeping
// a field in view.
#include "VtScrollContainer.h"

#include <algorithm>
#include <cstdint>

#include "PLDrawContext.h"
#include "PLMessage.h"
#include "VtScrollBar.h"
#include "VtScrollPane.h"
#include "VtTheme.h"

VtScrollContainer::VtScrollContainer(uint32_t id, PLPoint location, PLSize size, int barWidth,
                                     bool alwaysShowBar, const PLRect& margins, bool followFocus)
    : PLView(id, location, size),
      mContent(nullptr),
      mBar(nullptr),
      mBarWidth(std::max(0, barWidth)),
      mAlwaysShowBar(alwaysShowBar),
      mMargins(std::max(0, margins.top), std::max(0, margins.left), std::max(0, margins.bottom),
               std::max(0, margins.right)),
      mAutoScroll(followFocus) {
    mContent = new VtScrollPane(0, PLPoint(0, 0), size, *this);
    mBar = new VtScrollBar(0, PLPoint(0, 0), PLSize(size.v, mBarWidth));
    PLView::AddSubPane(mContent, false);
    PLView::AddSubPane(mBar, false);
    mBar->SetOnScroll([this](long position) { ScrollTo(position, true); });
    Layout();
}

void VtScrollContainer::AddSubPane(PLPane* pane, bool redraw) {
    InsertSubPane(pane, SIZE_MAX, redraw);
}

void VtScrollContainer::InsertSubPane(PLPane* pane, size_t index, bool redraw) {
    // The container's own parts stay where they are.
    if (pane != mContent && pane != mBar) {
        mContent->InsertSubPane(pane, index, redraw);
    }
}

bool VtScrollContainer::RemoveSubPane(PLPane* pane) {
    return pane != nullptr && pane->GetParent() == mContent && mContent->RemoveSubPane(pane);
}

void VtScrollContainer::SetSize(PLSize size, bool redraw) {
    PLView::SetSize(size, redraw);
    Layout();
}

long VtScrollContainer::GetVisibleHeight() const {
    return std::max(0, GetSize().v - mMargins.top - mMargins.bottom);
}

long VtScrollContainer::GetScrollRange() const {
    if (mFixedRange >= 0) {
        return mFixedRange;
    }
    return std::max(0L, mContent->ContentHeight() - GetVisibleHeight());
}

long VtScrollContainer::GetScrollPosition() const {
    return mContent->GetScrollOffset().v;
}

bool VtScrollContainer::BarShown() const {
    return mBarWidth > 0 && (mAlwaysShowBar || mContent->ContentHeight() > GetVisibleHeight());
}

void VtScrollContainer::Layout() {
    const PLSize size = GetSize();
    const int height = int(GetVisibleHeight());
    const int width = std::max(0, size.h - mMargins.left - mMargins.right);
    const int barWidth = BarShown() ? std::min(mBarWidth, width) : 0;
    const PLPoint contentAt(mMargins.top, mMargins.left);
    if (mContent->GetLocation() != contentAt ||
        mContent->GetSize() != PLSize(height, width - barWidth)) {
        mContent->SetLocation(contentAt, false);
        mContent->SetSize(PLSize(height, width - barWidth), false);
    }
    mBar->SetLocation(PLPoint(mMargins.top, mMargins.left + width - barWidth), false);
    mBar->SetSize(PLSize(height, barWidth), false);
    if (barWidth == 0) {
        mBar->Hide(false);
    } else {
        mBar->Show(false);
    }
    const long range = GetScrollRange();
    mBar->SetPage(height);
    mBar->SetRange(range);
    // A container that grew (the input method went away) must not stay scrolled past its end.
    if (GetScrollPosition() > range) {
        mContent->SetScrollOffset(PLPoint(int(range), 0), false);
    }
    mBar->SetPosition(GetScrollPosition(), false);
}

void VtScrollContainer::ScrollTo(long offset, bool report, bool redraw) {
    Layout();
    const long clamped = std::clamp(offset, 0L, GetScrollRange());
    if (clamped != GetScrollPosition()) {
        mContent->SetScrollOffset(PLPoint(int(clamped), 0), redraw);
    }
    mBar->SetPosition(clamped, redraw);
    if (report) {
        PLScrollerMessage scrolled(GetID(), PLPoint(int(clamped), 0), 0);
        BroadcastMessage(&scrolled);
    }
}

void VtScrollContainer::EnsureVisible(const PLPane& pane) {
    if (!pane.IsDescendantOf(mContent)) {
        return;
    }
    // The pane's top in content coordinates: its locations up to the content pane.
    long top = 0;
    for (const PLPane* p = &pane; p != nullptr && p != mContent; p = p->GetParent()) {
        top += p->GetLocation().v;
    }
    Layout();
    const long bottom = top + pane.GetSize().v;
    const long offset = GetScrollPosition();
    const long visible = GetVisibleHeight();
    if (top < offset) {
        ScrollTo(top, true);
    } else if (bottom > offset + visible) {
        ScrollTo(std::min(top, bottom - visible), true);
    }
}

void VtScrollContainer::Listen(PLMessage* message) {
    if (message != nullptr && message->GetMessageID() == kPLMsgScroll) {
        if (const auto* scroll = dynamic_cast<const PLScrollerMessage*>(message)) {
            ScrollTo(scroll->GetOffset().v, false);
            return;
        }
    }
    PLView::Listen(message);
}

void VtScrollContainer::Draw(PLDrawContext& context) {
    Layout();
    if (mMargins.top + mMargins.left + mMargins.bottom + mMargins.right > 0) {
        context.FillRect(GetBounds(), {206, 210, 217});
    }
}
