// The phone's screen: a 240x320 framebuffer and the root pane it shows. It repaints the parts that
// were marked since the last update, painting the pane tree back to front with clipping.
#pragma once

#include <functional>

#include "PLBitmap.h"
#include "PLRect.h"

class PLPane;

class PLScreen {
public:
    PLScreen();

    PLBitmap& GetFramebuffer() { return mFramebuffer; }
    const PLBitmap& GetFramebuffer() const { return mFramebuffer; }
    void SetRoot(PLPane* root) { mRoot = root; }
    PLPane* GetRoot() const { return mRoot; }

    // Marks a screen rectangle for repainting.
    void Invalidate(const PLRect& screenRect);
    void InvalidateAll();
    bool HasDirtyRegion() const { return !mDirty.IsEmpty(); }
    // Repaints the marked region now (nothing while drawing is suppressed). Returns true when
    // anything was painted; the presenter (the simulator's window) is then told.
    bool Update();
    // Paints the whole tree now, whatever was marked.
    void PaintAll();
    // Called after every update with the rectangle that changed.
    void SetPresenter(std::function<void(const PLRect&)> presenter) {
        mPresenter = std::move(presenter);
    }

    // The pane under a screen point: the topmost shown pane that hits the point, deepest first.
    PLPane* PaneAt(PLPoint screenPoint) const;

private:
    void Paint(const PLRect& region);
    // Paints `pane` and its sub-panes inside `region`; `origin` is the pane's top-left on the
    // screen and `parentVisible` the part of the screen its parent shows.
    void PaintPane(PLPane& pane, PLPoint origin, const PLRect& parentVisible, const PLRect& region);
    PLPane* PaneAtIn(PLPane& pane, PLPoint origin, PLPoint screenPoint) const;

    PLBitmap mFramebuffer;
    PLPane* mRoot = nullptr;
    PLRect mDirty;
    std::function<void(const PLRect&)> mPresenter;
};
