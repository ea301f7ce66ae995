// The pane tree: ownership of sub-panes, geometry between pane, parent and screen, repaint
// requests and the default (do-nothing) behaviour of the overridable operations.
#include "PLPane.h"

#include <algorithm>
#include <cassert>
#include <cstdint>

#include "PLAppContext.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLScreen.h"

namespace {

// How many SuppressDrawing calls are still open. One counter for the whole process, because the
// screen is one and a suppression hides every change on it until the outermost caller is done.
int gSuppressionDepth = 0;

PLScreen& Screen() {
    return PLAppContext::GetInstance()->GetScreen();
}
PLEventLoop& Loop() {
    return PLAppContext::GetInstance()->GetEventLoop();
}

}  // namespace

PLPane::PLPane(uint32_t id, PLPoint location, PLSize size)
    : mID(id), mLocation(location), mSize{std::max(0, size.v), std::max(0, size.h)} {
    assert(size.v >= 0 && size.h >= 0 && "a pane cannot have a negative size");
}

PLPane::~PLPane() {
    // Children go first, while this pane is still whole: their destructors may look at parents.
    while (!mSubPanes.empty()) {
        PLPane* child = mSubPanes.back();
        mSubPanes.pop_back();
        child->mParent = nullptr;
        delete child;
    }
    if (mParent != nullptr) {
        // Deleted while attached: leave the parent consistent and repaint where this pane was.
        Invalidate();
        auto& siblings = mParent->mSubPanes;
        siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
        mParent = nullptr;
    }
    PLAppContext* context = PLAppContext::GetInstance();
    context->GetEventLoop().ForgetPane(this);
    if (context->GetScreen().GetRoot() == this) {
        context->GetScreen().SetRoot(nullptr);
    }
}

// --- geometry

void PLPane::SetLocation(PLPoint location, bool redraw) {
    if (location == mLocation) {
        return;
    }
    if (redraw) {
        Invalidate();
    }
    mLocation = location;
    if (redraw) {
        Invalidate();
    }
}

void PLPane::SetSize(PLSize size, bool redraw) {
    assert(size.v >= 0 && size.h >= 0 && "a pane cannot have a negative size");
    size = {std::max(0, size.v), std::max(0, size.h)};
    if (size == mSize) {
        return;
    }
    if (redraw) {
        Invalidate();
    }
    mSize = size;
    if (redraw) {
        Invalidate();
    }
}

PLPoint PLPane::LocalToScreen(PLPoint local) const {
    PLPoint origin = mLocation;
    for (const PLPane* ancestor = mParent; ancestor != nullptr; ancestor = ancestor->mParent) {
        origin = origin + ancestor->mLocation - ancestor->mScrollOffset;
    }
    return origin + local;
}

PLPoint PLPane::ScreenToLocal(PLPoint screen) const {
    return screen - LocalToScreen(kNullPoint);
}

PLRect PLPane::GetScreenRect() const {
    return PLRect::FromPointSize(LocalToScreen(kNullPoint), mSize);
}

PLRect PLPane::GetVisibleScreenRect() const {
    if (!mShown) {
        return {};
    }
    PLRect visible = GetScreenRect();
    for (const PLPane* ancestor = mParent; ancestor != nullptr; ancestor = ancestor->mParent) {
        if (!ancestor->mShown) {
            return {};
        }
        visible = visible.Intersect(ancestor->GetScreenRect());
    }
    return visible;
}

// --- tree

void PLPane::AddSubPane(PLPane* pane, bool redraw) {
    // Past the end: InsertSubPane clamps after a move has taken the pane out of this list.
    InsertSubPane(pane, SIZE_MAX, redraw);
}

void PLPane::InsertSubPane(PLPane* pane, size_t index, bool redraw) {
    assert(pane != nullptr && "cannot add a null pane");
    assert(pane != this && !IsDescendantOf(pane) && "a pane cannot contain its own ancestor");
    if (pane == nullptr || pane == this || IsDescendantOf(pane)) {
        return;
    }
    if (pane->mParent != nullptr) {
        // Moving: detach first so that the index counts the remaining sub-panes.
        pane->mParent->Detach(pane, redraw);
    }
    index = std::min(index, mSubPanes.size());
    mSubPanes.insert(mSubPanes.begin() + static_cast<std::ptrdiff_t>(index), pane);
    pane->mParent = this;
    if (mChildrenBmpBackground && mHasBmpBackground) {
        pane->SetHasBmpBackground(true, true);
    }
    pane->AttachedToParent();
    if (redraw) {
        pane->Invalidate();
    }
}

bool PLPane::RemoveSubPane(PLPane* pane) {
    return Detach(pane, true);
}

bool PLPane::Detach(PLPane* pane, bool invalidate) {
    auto found = std::find(mSubPanes.begin(), mSubPanes.end(), pane);
    if (pane == nullptr || found == mSubPanes.end()) {
        return false;
    }
    // What the pane covered must be repainted by whatever lies beneath it.
    if (invalidate) {
        pane->Invalidate();
    }
    // Keys never stay with a pane that has left the screen: the pane it leaves takes them back
    // (a sub-screen that closes itself with its own back button tells nobody else).
    PLEventLoop& loop = Loop();
    PLPane* target = loop.GetTarget();
    if (target == pane || (target != nullptr && target->IsDescendantOf(pane))) {
        loop.SetTarget(this);
    }
    mSubPanes.erase(found);
    pane->mParent = nullptr;
    pane->AttachedToParent();
    return true;
}

PLPane* PLPane::FindPane(uint32_t id) {
    if (mID == id) {
        return this;
    }
    for (PLPane* child : mSubPanes) {
        if (PLPane* found = child->FindPane(id)) {
            return found;
        }
    }
    return nullptr;
}

bool PLPane::IsDescendantOf(const PLPane* ancestor) const {
    if (ancestor == nullptr) {
        return false;
    }
    for (const PLPane* p = mParent; p != nullptr; p = p->mParent) {
        if (p == ancestor) {
            return true;
        }
    }
    return false;
}

void PLPane::Close(bool destroy, bool redraw) {
    if (mParent != nullptr) {
        mParent->Detach(this, redraw);
    }
    if (destroy) {
        // Not now: the caller may be this pane's own Listen or mouse handler.
        Loop().DeleteLater(this);
    }
}

// --- state

void PLPane::Show(bool redraw) {
    if (mShown) {
        return;
    }
    mShown = true;
    if (redraw) {
        Invalidate();
    }
}

void PLPane::Hide(bool redraw) {
    if (!mShown) {
        return;
    }
    if (redraw) {
        Invalidate();
    }
    mShown = false;
}

bool PLPane::IsVisible() const {
    const PLPane* top = this;
    for (const PLPane* p = this; p != nullptr; p = p->mParent) {
        if (!p->mShown) {
            return false;
        }
        top = p;
    }
    return top == Screen().GetRoot();
}

void PLPane::SetEnabled(bool enabled, bool redraw) {
    if (enabled == mEnabled) {
        return;
    }
    mEnabled = enabled;
    if (redraw) {
        Invalidate();
    }
}

bool PLPane::IsActive() const {
    for (const PLPane* p = this; p != nullptr; p = p->mParent) {
        if (!p->mEnabled) {
            return false;
        }
    }
    return true;
}

void PLPane::SetOnState(long state, bool redraw) {
    mOnState = state;
    if (redraw) {
        Invalidate();
    }
}

void PLPane::SetValue(long value, bool redraw) {
    mValue = value;
    if (redraw) {
        Invalidate();
    }
}

void PLPane::SetString(const PLBasicString<char>& text, bool redraw) {
    mText = text;
    if (redraw) {
        Invalidate();
    }
}

void PLPane::SetTextColor(const PLRGBColor& color, bool redraw) {
    mTextColor = color;
    if (redraw) {
        Invalidate();
    }
}

void PLPane::SetFont(PLFont* font, bool redraw) {
    mFont = font;
    if (redraw) {
        Invalidate();
    }
}

void PLPane::SetScrollOffset(PLPoint offset, bool redraw) {
    if (offset == mScrollOffset) {
        return;
    }
    mScrollOffset = offset;
    if (redraw) {
        Invalidate();
    }
}

void PLPane::SetHasBmpBackground(bool hasBackground, bool forChildren) {
    mHasBmpBackground = hasBackground;
    mChildrenBmpBackground = forChildren;
}

// --- drawing

void PLPane::Invalidate() {
    if (IsVisible()) {
        Screen().Invalidate(GetVisibleScreenRect());
    }
}

void PLPane::Redraw() {
    Invalidate();
}

void PLPane::HandleDraw(const PLRect* region, void*, void*, void*) {
    if (!IsVisible()) {
        return;
    }
    PLRect area = GetVisibleScreenRect();
    if (region != nullptr) {
        area = area.Intersect(*region);
    }
    if (area.IsEmpty()) {
        return;
    }
    PLScreen& screen = Screen();
    screen.Invalidate(area);
    // While suppressed the mark stays until the last RemoveDrawingSuppression.
    screen.Update();
}

void PLPane::SuppressDrawing() {
    ++gSuppressionDepth;
}

void PLPane::RemoveDrawingSuppression() {
    assert(gSuppressionDepth > 0 && "RemoveDrawingSuppression without SuppressDrawing");
    if (gSuppressionDepth == 0) {
        return;
    }
    --gSuppressionDepth;
    if (gSuppressionDepth == 0) {
        Screen().Update();
    }
}

bool PLPane::IsDrawingSuppressed() {
    return gSuppressionDepth > 0;
}

// --- pen tracking

void PLPane::StartTracking() {
    Loop().SetTrackingPane(this);
}

void PLPane::StopTracking() {
    if (Loop().GetTrackingPane() == this) {
        Loop().SetTrackingPane(nullptr);
    }
}

bool PLPane::IsTracking() const {
    return Loop().GetTrackingPane() == this;
}

// --- overridable operations

void PLPane::Listen(PLMessage*) {}

bool PLPane::DoKeyCommand(char, short, PLKeyModifiers) {
    return false;
}

void PLPane::Draw(PLDrawContext&) {}

void PLPane::MouseDown(PLPoint, PLMouseButton) {
    // Tell whoever listens (a parent that forwards, a view) that this pane was pressed; they may
    // ignore it, but it lets a view move its highlight before the pen is released.
    PLMessage pressed(kPLMsgMouseDown, mID, kPLWildcard, kEmptyString, kEmptyString);
    BroadcastMessage(&pressed);
}

void PLPane::MouseUp(PLPoint, PLMouseButton) {}

void PLPane::MouseMove(PLPoint, PLMouseButton) {}

PLListener* PLPane::GetForwardTarget() {
    return ForwardsToParent() ? mParent : nullptr;
}
