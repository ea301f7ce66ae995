// The screen: collects the rectangles to repaint and paints the pane tree into the framebuffer.
#include "PLScreen.h"

#include "PLDrawContext.h"
#include "PLPane.h"
#include "PLTheme.h"
#include "PLTypes.h"

namespace {

constexpr PLRect kScreenBounds{0, 0, kPLScreenHeight, kPLScreenWidth};

}  // namespace

PLScreen::PLScreen() : mFramebuffer(kPLScreenWidth, kPLScreenHeight) {
    // An opaque black glass until the first paint, so a screenshot is never see-through.
    PLDrawContext(mFramebuffer).FillRect(kScreenBounds, PLRGBColor(0, 0, 0));
}

void PLScreen::Invalidate(const PLRect& screenRect) {
    mDirty = mDirty.Union(screenRect.Intersect(kScreenBounds));
}

void PLScreen::InvalidateAll() {
    mDirty = kScreenBounds;
}

bool PLScreen::Update() {
    if (mDirty.IsEmpty() || PLPane::IsDrawingSuppressed()) {
        return false;
    }
    const PLRect region = mDirty;
    // Cleared first: a Draw that asks for a repaint gets it at the next update, not lost.
    mDirty = {};
    Paint(region);
    if (mPresenter) {
        mPresenter(region);
    }
    return true;
}

void PLScreen::PaintAll() {
    mDirty = {};
    Paint(kScreenBounds);
    if (mPresenter) {
        mPresenter(kScreenBounds);
    }
}

void PLScreen::Paint(const PLRect& region) {
    if (mRoot == nullptr) {
        return;
    }
    PaintPane(*mRoot, mRoot->GetLocation(), kScreenBounds, region);
}

void PLScreen::PaintPane(PLPane& pane, PLPoint origin, const PLRect& parentVisible,
                         const PLRect& region) {
    if (!pane.IsShown()) {
        return;
    }
    const PLRect visible = PLRect::FromPointSize(origin, pane.GetSize()).Intersect(parentVisible);
    const PLRect clip = visible.Intersect(region);
    if (clip.IsEmpty()) {
        return;
    }
    PLDrawContext context(mFramebuffer, origin, clip);
    context.SetTextColor(pane.GetTextColor());
    context.SetFont(pane.GetFont());
    if (pane.HasBmpBackground()) {
        PLThemeManager::GetCurrentTheme()->DrawBmpBackground(context, pane);
    }
    pane.Draw(context);
    const PLPoint childOrigin = origin - pane.GetScrollOffset();
    // By index: a Draw must not change the tree, but if one does this stays in bounds.
    const auto& children = pane.GetSubPanes();
    for (size_t i = 0; i < children.size(); ++i) {
        PLPane& child = *children[i];
        PaintPane(child, childOrigin + child.GetLocation(), visible, region);
    }
}

PLPane* PLScreen::PaneAt(PLPoint screenPoint) const {
    if (mRoot == nullptr || !kScreenBounds.Contains(screenPoint)) {
        return nullptr;
    }
    return PaneAtIn(*mRoot, mRoot->GetLocation(), screenPoint);
}

PLPane* PLScreen::PaneAtIn(PLPane& pane, PLPoint origin, PLPoint screenPoint) const {
    const PLPoint local = screenPoint - origin;
    // Outside its bounds nothing of the pane or its sub-panes is visible, so nothing can be hit.
    if (!pane.IsShown() || !pane.GetBounds().Contains(local)) {
        return nullptr;
    }
    const PLPoint childOrigin = origin - pane.GetScrollOffset();
    const auto& children = pane.GetSubPanes();
    for (auto it = children.rbegin(); it != children.rend(); ++it) {
        if (PLPane* hit = PaneAtIn(**it, childOrigin + (*it)->GetLocation(), screenPoint)) {
            return hit;
        }
    }
    return pane.HitTest(local) ? &pane : nullptr;
}
