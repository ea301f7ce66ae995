// Content panes of scroll containers: scroll requests, keys and the content's height.
#include "VtScrollPane.h"

#include <algorithm>

#include "PLMessage.h"
#include "VtKeyStep.h"
#include "VtScrollBar.h"
#include "VtScrollContainer.h"

VtScrollPane::VtScrollPane(uint32_t id, PLPoint location, PLSize size, VtScrollContainer& container)
    : PLView(id, location, size), mContainer(container) {}

void VtScrollPane::SetScrollSteps(long pageStep, long lineStep, long flags) {
    mPageStep = std::max(0L, pageStep);
    mLineStep = std::max(1L, lineStep);
    if ((flags & 1) != 0) {
        mContainer.GetScrollBar()->SetStep(mLineStep, 1);
    }
}

long VtScrollPane::ContentHeight() const {
    long height = 0;
    for (const PLPane* pane : GetSubPanes()) {
        if (pane->IsShown()) {
            height = std::max<long>(height, pane->GetFrame().bottom);
        }
    }
    return height;
}

void VtScrollPane::Listen(PLMessage* message) {
    if (message != nullptr && message->GetMessageID() == kPLMsgScroll) {
        if (const auto* scroll = dynamic_cast<const PLScrollerMessage*>(message)) {
            mContainer.ScrollTo(scroll->GetOffset().v, false);
            return;
        }
    }
    PLView::Listen(message);
}

bool VtScrollPane::DoKeyCommand(char key, short, PLKeyModifiers) {
    const long page = mPageStep > 0 ? mPageStep : mContainer.GetVisibleHeight();
    long delta = 0;
    if (!VtKeyStep(static_cast<uint8_t>(key), mLineStep, page, delta)) {
        return false;
    }
    mContainer.ScrollTo(mContainer.GetScrollPosition() + delta, true);
    return true;
}
