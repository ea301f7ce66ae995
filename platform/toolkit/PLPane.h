// The base of everything on the screen: a rectangle in its parent with sub-panes in z-order.
//
// Coordinates: a pane's location is relative to its parent's content (the parent's top-left minus
// the parent's scroll offset); Draw and the mouse operations use pane-local coordinates. A parent
// owns the sub-panes that are added to it and deletes them with itself; RemoveSubPane hands
// ownership back to the caller.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "PLBasicString.h"
#include "PLComponent.h"
#include "PLPoint.h"
#include "PLRGBColor.h"
#include "PLRect.h"
#include "PLTypes.h"

class PLDrawContext;
class PLFont;

class PLPane : public PLComponent {
public:
    PLPane(uint32_t id, PLPoint location, PLSize size);
    ~PLPane() override;

    // --- identity and geometry
    uint32_t GetID() const { return mID; }
    void SetID(uint32_t id) { mID = id; }
    PLPoint GetLocation() const { return mLocation; }
    void SetLocation(PLPoint location, bool redraw = true);
    PLSize GetSize() const { return mSize; }
    void SetSize(PLSize size, bool redraw = true);
    // (0, 0, height, width): the pane in its own coordinates.
    PLRect GetBounds() const { return {0, 0, mSize.v, mSize.h}; }
    // The pane in its parent's content coordinates.
    PLRect GetFrame() const { return PLRect::FromPointSize(mLocation, mSize); }
    // The pane on the screen (before clipping by its ancestors).
    PLRect GetScreenRect() const;
    // The visible part of the pane on the screen, clipped by every ancestor; empty when hidden.
    PLRect GetVisibleScreenRect() const;
    PLPoint LocalToScreen(PLPoint local) const;
    PLPoint ScreenToLocal(PLPoint screen) const;

    // --- tree
    PLPane* GetParent() const { return mParent; }
    // Adds `pane` on top of the others; the parent owns it from now on. A pane that has a parent
    // is moved. `redraw` repaints it.
    void AddSubPane(PLPane* pane, bool redraw = true);
    // Inserts at a z-order index (0 = bottom).
    void InsertSubPane(PLPane* pane, size_t index, bool redraw = true);
    // Detaches `pane`; the caller owns it again. Returns false when it is not a sub-pane.
    bool RemoveSubPane(PLPane* pane);
    const std::vector<PLPane*>& GetSubPanes() const { return mSubPanes; }
    // This pane or the first descendant (depth first, in z-order) with the id; null when none.
    PLPane* FindPane(uint32_t id);
    // Whether the pane is attached (directly or not) to `ancestor`.
    bool IsDescendantOf(const PLPane* ancestor) const;
    // Removes the pane from its parent; `destroy` deletes it once the current event has been
    // handled (so a pane may close itself from its own Listen), `redraw` repaints where it was.
    void Close(bool destroy, bool redraw);

    // --- state
    bool IsShown() const { return mShown; }
    void Show(bool redraw = true);
    void Hide(bool redraw = true);
    // Shown itself and every ancestor shown, up to a root that the screen displays.
    bool IsVisible() const;
    bool IsEnabled() const { return mEnabled; }
    virtual void SetEnabled(bool enabled, bool redraw = true);
    // Enabled itself and every ancestor enabled.
    bool IsActive() const;
    long GetOnState() const { return mOnState; }
    virtual void SetOnState(long state, bool redraw = true);
    long GetValue() const { return mValue; }
    virtual void SetValue(long value, bool redraw = true);
    const PLBasicString<char>& GetString() const { return mText; }
    virtual void SetString(const PLBasicString<char>& text, bool redraw = true);
    PLRGBColor GetTextColor() const { return mTextColor; }
    virtual void SetTextColor(const PLRGBColor& color, bool redraw = true);
    PLFont* GetFont() const { return mFont; }
    void SetFont(PLFont* font, bool redraw = true);
    PLPoint GetScrollOffset() const { return mScrollOffset; }
    void SetScrollOffset(PLPoint offset, bool redraw = true);
    // Paints the theme's bitmap background behind this pane (and, with `forChildren`, tells
    // sub-panes made later to do the same).
    void SetHasBmpBackground(bool hasBackground, bool forChildren);
    bool HasBmpBackground() const { return mHasBmpBackground; }

    // --- drawing
    // Marks the pane for repainting; the screen is repainted when the current event is done.
    void Redraw();
    // Paints the pane (or the part inside `region`, in screen coordinates) at once, unless drawing
    // is suppressed. The four arguments mirror the platform's; null means "the whole pane".
    void HandleDraw(const PLRect* region, void* reserved1, void* reserved2, void* reserved3);
    // Nesting suppression of all screen updates: nothing is painted until the last removal, which
    // repaints whatever was marked meanwhile.
    static void SuppressDrawing();
    static void RemoveDrawingSuppression();
    static bool IsDrawingSuppressed();

    // --- pen tracking: after StartTracking, moves and the pen-up go to this pane wherever the pen
    // is.
    void StartTracking();
    void StopTracking();
    bool IsTracking() const;

    // --- overridable operations
    void Listen(PLMessage* message) override;
    // Returns true when the key was handled.
    virtual bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers);
    virtual void Draw(PLDrawContext& context);
    virtual void MouseDown(PLPoint where, PLMouseButton button);
    virtual void MouseUp(PLPoint where, PLMouseButton button);
    virtual void MouseMove(PLPoint where, PLMouseButton button);
    // The class name shown in pane dumps.
    virtual const char* GetClassName() const { return "PLPane"; }
    // Extra state for pane dumps (checked rows of a list, for example): a JSON object's members
    // without braces, or empty.
    virtual std::string DumpExtra() const { return {}; }

    // Whether pen events hit this pane at a local point (default: inside the bounds).
    virtual bool HitTest(PLPoint local) const { return GetBounds().Contains(local); }

protected:
    // Called when the pane was added to or removed from a parent.
    virtual void AttachedToParent() {}
    // Broadcasts also reach the parent when SetComponentListener asked for forwarding.
    PLListener* GetForwardTarget() override;

private:
    void Invalidate();
    // Takes `pane` out of the sub-panes; `invalidate` repaints where it was.
    bool Detach(PLPane* pane, bool invalidate);

    uint32_t mID;
    PLPoint mLocation;
    PLSize mSize;
    PLPane* mParent = nullptr;
    std::vector<PLPane*> mSubPanes;
    bool mShown = true;
    bool mEnabled = true;
    bool mHasBmpBackground = false;
    bool mChildrenBmpBackground = false;
    long mOnState = 0;
    long mValue = 0;
    PLBasicString<char> mText;
    PLRGBColor mTextColor{0, 0, 0};
    PLFont* mFont = nullptr;
    PLPoint mScrollOffset;
};
