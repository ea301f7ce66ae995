// The content pane of a scroll container: the pane that holds the scrolled panes. Its Listen takes
// "rscm" scroll requests (PLScrollerMessage: the offset, vertical first) and scrolls there, kept
// within the content.
#pragma once

#include "PLView.h"

class VtScrollContainer;

class VtScrollPane : public PLView {
public:
    VtScrollPane(uint32_t id, PLPoint location, PLSize size, VtScrollContainer& container);

    VtScrollContainer& GetContainer() const { return mContainer; }
    // Page and line steps for keys and the bar's arrows; `flags` 1 hands them to the bar too.
    void SetScrollSteps(long pageStep, long lineStep, long flags);
    long GetPageStep() const { return mPageStep; }
    long GetLineStep() const { return mLineStep; }
    // The lowest bottom edge of the sub-panes: the content height.
    long ContentHeight() const;

    void Listen(PLMessage* message) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    const char* GetClassName() const override { return "VtScrollPane"; }

private:
    VtScrollContainer& mContainer;
    long mPageStep = 0;  // 0: the visible height
    long mLineStep = 30;
};
